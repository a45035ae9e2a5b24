#include "apps/input/dump_reader.h"

#include <algorithm>
#include <bit>

#include "apps/failure.h"

namespace vistrel::app {
namespace {

class DumpReader : public Reader {
 public:
  DumpReader(const Source& source, const InputOptions& o)
      : source_(source), skip_(o.skip), bigEndian_(o.bigEndian) {
    Description& d = description_;
    d.format = "dump";
    d.width = o.size->width;
    d.height = o.size->height;
    d.bits = *o.bits;
    d.bytesPerSample = d.bits > 8 ? 2 : 1;
    const uint64_t left = source.size() - std::min(skip_, source.size());
    rowBytes_ = size_t{d.width} * d.bytesPerSample;
    checkSize(d, source, 8 * d.bytesPerSample, left);
    setStride(o.stride, left);
    countFrames(left);
  }

  void read(uint64_t n, void* to) override {
    const uint64_t at = skip_ + n * stride_ * description_.height;
    for (uint32_t y = 0; y < description_.height; ++y)
      source_.read(at + y * stride_, static_cast<uint8_t*>(to) + y * rowBytes_, rowBytes_);
    if (description_.bytesPerSample == 2 && bigEndian_ != (std::endian::native == std::endian::big))
      swapWords(to, rowBytes_ / 2 * description_.height);
  }

 private:
  void setStride(size_t stride, uint64_t left) {
    const Description& d = description_;
    stride_ = stride ? stride : rowBytes_;
    if (stride_ < rowBytes_)
      fail(kRejected, "stride {}: a row of {} samples has {} bytes", stride_, d.width, rowBytes_);
    if ((d.height - 1) > (left - rowBytes_) / stride_)
      failTooShort(d, source_, 8 * d.bytesPerSample);
  }

  // The last row of the last frame may lack its padding.
  void countFrames(uint64_t left) {
    const uint64_t padding = stride_ - rowBytes_, frameBytes = stride_ * description_.height;
    description_.frames = (left + padding) / frameBytes;
    const uint64_t used = description_.frames * frameBytes;
    description_.trailing = left > used ? left - used : 0;
  }

  const Source& source_;
  uint64_t skip_, stride_ = 0;
  size_t rowBytes_ = 0;
  bool bigEndian_;
};

}  // namespace

std::unique_ptr<Reader> openDump(const Source& source, const InputOptions& options) {
  return std::make_unique<DumpReader>(source, options);
}

}  // namespace vistrel::app
