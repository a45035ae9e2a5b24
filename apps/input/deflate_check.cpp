#include "apps/input/deflate_check.h"

#include <zlib.h>

#include <algorithm>
#include <new>
#include <vector>

namespace vistrel::app {
namespace {

constexpr int kZlib = 0, kGzip = 16;  // added to the bits of the window

class Inflation {
 public:
  explicit Inflation(int wrapper) : decoded_(1 << 16) {
    if (inflateInit2(&zlib_, MAX_WBITS + wrapper) != Z_OK) throw std::bad_alloc();
  }
  ~Inflation() { inflateEnd(&zlib_); }
  Inflation(const Inflation&) = delete;
  Inflation& operator=(const Inflation&) = delete;

  // Decodes the next bytes of the stream. Returns zlib's status after the last of them.
  int decode(const uint8_t* bytes, size_t count) {
    zlib_.next_in = const_cast<Bytef*>(bytes);
    zlib_.avail_in = static_cast<uInt>(count);
    int status = Z_OK;
    do {
      zlib_.next_out = decoded_.data();
      zlib_.avail_out = static_cast<uInt>(decoded_.size());
      status = inflate(&zlib_, Z_NO_FLUSH);
    } while (status == Z_OK && (zlib_.avail_in > 0 || zlib_.avail_out == 0));
    return status == Z_BUF_ERROR ? Z_OK : status;  // it needs more input
  }

 private:
  z_stream zlib_{};
  std::vector<uint8_t> decoded_;
};

}  // namespace

bool isIntactDeflate(const Source& source, uint64_t at, uint64_t count) {
  Inflation inflation(kZlib);
  std::vector<uint8_t> part(1 << 16);
  for (uint64_t done = 0; done < count;) {
    const size_t n = std::min<uint64_t>(count - done, part.size());
    source.read(at + done, part.data(), n);
    done += n;
    const int status = inflation.decode(part.data(), n);
    if (status != Z_OK) return status == Z_STREAM_END;
  }
  return false;
}

bool isIntactGzip(std::span<const uint8_t> bytes) {
  return Inflation(kGzip).decode(bytes.data(), bytes.size()) == Z_STREAM_END;
}

}  // namespace vistrel::app
