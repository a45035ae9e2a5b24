// A record of the pictures that were made, and of what.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace vistrel::app {

// All that a picture depends on.
struct Origin {
  std::string input;
  std::optional<uint64_t> frame;  // of several
  uint64_t bytes = 0;             // of the input
  int64_t modified = 0;           // the input, nanoseconds since 1970
  std::string options;            // that were given for the input and the conversion

  bool operator==(const Origin&) const = default;
};

struct Entry {
  Origin origin;
  uint64_t bytes = 0;  // of the picture's file
  uint32_t crc = 0;    // CRC-32 of its pixels, as the library gives them
};

// A file with an object on each line. A line is appended, whole, as soon as its picture is there;
// of several lines for a picture the last one counts, and a last line without its end does not.
class Manifest {
 public:
  // Reads what there is. Throws Failure for a file that is no manifest, that cannot be written or,
  // unless `readOnly`, that another run has open.
  Manifest(const std::filesystem::path& path, bool readOnly);
  ~Manifest();
  Manifest(const Manifest&) = delete;
  Manifest& operator=(const Manifest&) = delete;

  // Whether this picture was made of just that, and still has its size.
  bool holds(const std::filesystem::path& picture, const Origin& origin) const;

  // Any thread may call it.
  void add(const std::filesystem::path& picture, const Entry& entry);

  // Puts all lines in the order of the pictures' names, one for each.
  void finish();

 private:
  void load();
  void openToAppend();
  void checkAppendable() const;
  [[noreturn]] void failToWrite() const;

  std::filesystem::path path_;
  std::map<std::string, Entry> entries_;
  uint64_t good_ = 0;  // bytes of whole lines
  int descriptor_ = -1;
  bool changed_ = false;
  mutable std::mutex mutex_;
};

}  // namespace vistrel::app
