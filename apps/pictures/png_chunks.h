// The chunks of a PNG.
#pragma once

#include <zlib.h>

#include <cstdint>
#include <string>
#include <vector>

#include "apps/files/atomic_file.h"

namespace vistrel::app {

// Appends numbers in the byte order of the format.
void put32(std::string& to, uint32_t number);

// `bytes` is not null. Throws ProgramError (input/output).
void writeChunk(const char (&type)[5], const void* bytes, size_t count, AtomicFile& file);
inline void writeChunk(const char (&type)[5], const std::string& bytes, AtomicFile& file) {
  writeChunk(type, bytes.data(), bytes.size(), file);
}

// Compresses bytes into IDAT chunks. The members throw ProgramError (input/output).
class PixelChunks {
 public:
  // level and strategy are those of zlib.
  PixelChunks(int level, int strategy, AtomicFile& file);
  ~PixelChunks();
  PixelChunks(const PixelChunks&) = delete;
  PixelChunks& operator=(const PixelChunks&) = delete;

  void add(const uint8_t* bytes, size_t count);
  void finish();

 private:
  void compress(int flush);
  void writePart();

  AtomicFile& file_;
  z_stream stream_{};
  std::vector<uint8_t> chunk_;
};

}  // namespace vistrel::app
