#include "apps/input/gzip_stream.h"

#include <new>

#include "apps/error.h"

namespace vistrel::app {
namespace {

constexpr size_t kCompressedPart = 1 << 16;
constexpr int kGzipWrapper = 16;  // added to the window's bits: a gzip file, not a zlib stream

}  // namespace

bool beginsGzip(const std::string& head) { return head.starts_with("\x1F\x8B\x08"); }

GzipStream::GzipStream(const Source& source) : source_(source), part_(kCompressedPart) {
  if (inflateInit2(&zlib_, MAX_WBITS + kGzipWrapper) != Z_OK) throw std::bad_alloc();
}

GzipStream::~GzipStream() { inflateEnd(&zlib_); }

size_t GzipStream::read(uint8_t* to, size_t count) {
  size_t done = 0;
  while (done < count && !isAtEnd_) {
    refill();
    const auto room = static_cast<uInt>(std::min(count - done, kCompressedPart));
    zlib_.next_out = to + done;
    zlib_.avail_out = room;
    const int status = inflate(&zlib_, Z_NO_FLUSH);
    done += room - zlib_.avail_out;
    if (status == Z_STREAM_END)
      beginNextMember();
    else
      check(status);
  }
  return done;
}

void GzipStream::refill() {
  if (zlib_.avail_in > 0) return;
  const size_t n = source_.readSome(at_, part_.data(), part_.size());
  if (n == 0) throwError(kRejected, "gzip: the file ends early");
  at_ += n;
  zlib_.next_in = part_.data();
  zlib_.avail_in = static_cast<uInt>(n);
}

void GzipStream::check(int status) const {
  if (status == Z_MEM_ERROR) throw std::bad_alloc();
  if (status != Z_OK)
    throwError(kRejected, "gzip: the file is damaged: {}", zlib_.msg ? zlib_.msg : "its end");
}

// A gzip file may consist of several members; what follows the last one counts for nothing.
void GzipStream::beginNextMember() {
  const uint64_t next = at_ - zlib_.avail_in;
  char head[3] = {};
  source_.readSome(next, head, sizeof head);
  isAtEnd_ = !beginsGzip({head, sizeof head});
  if (isAtEnd_) trailing_ = source_.size() - next;
  at_ = next;
  zlib_.avail_in = 0;
  inflateReset(&zlib_);
}

}  // namespace vistrel::app
