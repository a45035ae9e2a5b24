// A record of the pictures that were made and of their provenance.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace vistrel::app {

// Everything that a picture depends on.
struct Provenance {
  std::string input;
  std::optional<uint64_t> frame;  // if the input has several
  uint64_t bytes = 0;             // of the input
  int64_t modified = 0;           // of the input, nanoseconds since 1970
  std::string options;            // given for the input and the conversion

  bool operator==(const Provenance&) const = default;
};

struct Entry {
  Provenance provenance;
  uint64_t bytes = 0;  // of the picture's file
  uint32_t crc = 0;    // CRC-32 of its pixels, as the library delivers them
};

// A file with one JSON object per line. A complete line is appended as soon as its picture exists.
// The last line about a picture counts; an incomplete last line is ignored.
class Manifest {
 public:
  // Reads the file if it exists. Throws ProgramError if it is not a manifest, if it cannot be
  // written or, unless `readOnly`, if another run has it open.
  Manifest(const std::filesystem::path& path, bool readOnly);
  ~Manifest();
  Manifest(const Manifest&) = delete;
  Manifest& operator=(const Manifest&) = delete;

  // Whether the picture has exactly this provenance, and its file still has the recorded size.
  bool holds(const std::filesystem::path& picture, const Provenance& provenance) const;

  // Thread-safe.
  void add(const std::filesystem::path& picture, const Entry& entry);

  // Rewrites the file: one line per picture, sorted by the pictures' names.
  void finish();

 private:
  void load();
  void openToAppend();
  void checkAppendable() const;
  [[noreturn]] void throwWriteError() const;

  std::filesystem::path path_;
  std::map<std::string, Entry> entries_;
  uint64_t good_ = 0;  // bytes of complete lines
  int descriptor_ = -1;
  bool changed_ = false;
  mutable std::mutex mutex_;
};

}  // namespace vistrel::app
