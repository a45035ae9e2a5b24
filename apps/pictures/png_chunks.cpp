#include "apps/pictures/png_chunks.h"

#include <algorithm>
#include <new>

namespace vistrel::app {

void put32(std::string& to, uint32_t number) {
  for (int shift = 24; shift >= 0; shift -= 8) to += static_cast<char>(number >> shift);
}

void writeChunk(const char (&type)[5], const void* bytes, size_t count, AtomicFile& file) {
  std::string head;
  put32(head, static_cast<uint32_t>(count));
  head.append(type, 4);
  const uLong ofType = crc32_z(0, reinterpret_cast<const Bytef*>(type), 4);
  std::string tail;
  put32(tail, static_cast<uint32_t>(crc32_z(ofType, static_cast<const Bytef*>(bytes), count)));
  file.write(head.data(), head.size());
  file.write(bytes, count);
  file.write(tail.data(), tail.size());
}

PixelChunks::PixelChunks(int level, int strategy, AtomicFile& file) : file_(file), chunk_(1 << 16) {
  constexpr int kWindowBits = 15, kMemory = 9;  // the largest of both
  if (deflateInit2(&stream_, level, Z_DEFLATED, kWindowBits, kMemory, strategy) != Z_OK)
    throw std::bad_alloc();
  stream_.next_out = chunk_.data();
  stream_.avail_out = static_cast<uInt>(chunk_.size());
}

PixelChunks::~PixelChunks() { deflateEnd(&stream_); }

void PixelChunks::add(const uint8_t* bytes, size_t count) {
  constexpr size_t kPiece = 1 << 30;  // zlib counts in 32 bits
  for (size_t at = 0; at < count; at += kPiece) {
    stream_.next_in = const_cast<Bytef*>(bytes + at);  // which zlib doesn't change
    stream_.avail_in = static_cast<uInt>(std::min(kPiece, count - at));
    compress(Z_NO_FLUSH);
  }
}

void PixelChunks::finish() {
  compress(Z_FINISH);
  writePart();
}

void PixelChunks::compress(int flush) {
  for (;;) {
    deflate(&stream_, flush);
    if (stream_.avail_out > 0) return;
    writePart();
  }
}

void PixelChunks::writePart() {
  writeChunk("IDAT", chunk_.data(), chunk_.size() - stream_.avail_out, file_);
  stream_.next_out = chunk_.data();
  stream_.avail_out = static_cast<uInt>(chunk_.size());
}

}  // namespace vistrel::app
