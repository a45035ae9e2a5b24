// A file that appears under its name complete or not at all.
#pragma once

#include <cstdio>
#include <filesystem>
#include <optional>

#include "apps/files/temporary_file.h"

namespace vistrel::app {

// Writes to a temporary file in the same folder, which commit() renames; without commit() it
// leaves no trace. "-", also after a type as in "png:-", is standard output, which receives
// everything at commit(). Any number of threads may each have one. All members throw ProgramError
// (input/output).
class AtomicFile {
 public:
  explicit AtomicFile(const std::filesystem::path& path);
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  std::FILE* stream() const { return stream_; }
  void write(const void* bytes, size_t count);
  void commit();

  // Throws a ProgramError that names the file and the reason.
  [[noreturn]] void throwWriteError(const char* reason) const;

 private:
  void copyToStandardOutput();

  std::filesystem::path name_;              // as given
  std::filesystem::path target_;            // with links resolved
  std::optional<TemporaryFile> temporary_;  // empty for standard output
  std::FILE* stream_ = nullptr;
};

// Throws what the constructor of an AtomicFile of that name would throw after its folder was made,
// but creates nothing.
void checkWritable(const std::filesystem::path& path);

bool isStandardOutput(const std::filesystem::path& path);

}  // namespace vistrel::app
