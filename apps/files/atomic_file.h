// A file that appears under its name whole or not at all.
#pragma once

#include <cstdio>
#include <filesystem>
#include <optional>

#include "apps/files/temporary_file.h"

namespace vistrel::app {

// Writes beside the name and takes the name's place at commit(); destroyed before that, it
// leaves no trace. "-", also after a type as in "png:-", is standard output, which gets all at
// commit(). Any number of threads may have one. All members throw Failure (input/output).
class AtomicFile {
 public:
  explicit AtomicFile(const std::filesystem::path& path);
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  std::FILE* stream() const { return stream_; }
  void write(const void* bytes, size_t count);
  void commit();

  // Throws the Failure that names the file and the reason.
  [[noreturn]] void failToWrite(const char* reason) const;

 private:
  void copyToStandardOutput();

  std::filesystem::path name_;            // as it was given
  std::filesystem::path target_;          // where a link leads
  std::optional<Unfinished> unfinished_;  // none of standard output
  std::FILE* stream_ = nullptr;
};

// Throws what an AtomicFile of that name would where it can't be begun; makes no file.
void checkWritable(const std::filesystem::path& path);

bool isStandardOutput(const std::filesystem::path& path);

// From here on an interrupt or a request to end removes unfinished files and ends the program
// with 128 plus the signal's number. A file size limit becomes an ordinary error.
void installSignalHandlers();

}  // namespace vistrel::app
