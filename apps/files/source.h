// Input bytes: a file, a pipe or standard input.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace vistrel::app {

// A known number of bytes with random access. All members throw ProgramError (input/output).
class Source {
 public:
  // "-" is standard input. The content of a pipe is copied to an unnamed temporary file, so that it
  // can be opened again.
  explicit Source(const std::filesystem::path& path);

  const std::filesystem::path& path() const { return path_; }
  uint64_t size() const { return size_; }

  // Throws if fewer than `count` bytes are left.
  void read(uint64_t at, void* to, size_t count) const;

  // Reads up to `count` bytes and returns how many; for callbacks from C libraries.
  size_t readSome(uint64_t at, void* to, size_t count) const noexcept;

  std::string head(size_t count) const;
  std::vector<uint8_t> all() const;

 private:
  std::filesystem::path path_;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
  uint64_t size_ = 0;
};

// Swaps the two bytes of each of `count` 16-bit samples.
void swapBytes(void* samples, size_t count);

}  // namespace vistrel::app
