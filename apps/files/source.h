// Where a frame's bytes come from: a file, or standard input.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace vistrel::app {

// Throws Failure (input/output) for what is no file that can be read.
void checkIsFile(const std::filesystem::path& path);

// Bytes of a known number, read at any place. All members throw Failure (input/output).
class Source {
 public:
  // "-" is standard input; where that is no file, all of it goes to a nameless temporary one.
  explicit Source(const std::filesystem::path& path);

  const std::filesystem::path& path() const { return path_; }
  uint64_t size() const { return size_; }

  // Throws where fewer bytes than `count` are there.
  void read(uint64_t at, void* to, size_t count) const;

  // As many of `count` bytes as can be read; for callbacks of libraries in C.
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
