#include "apps/input/headerless_reader.h"

#include <algorithm>

#include "apps/error.h"
#include "apps/input/readers.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {
namespace {

uint32_t packingOf(const InputOptions& o, uint32_t bits) {
  if (o.pixfmt) return o.pixfmt->packing;
  if (bits == 8) return VISTREL_PACKING_BYTES;
  return o.bigEndian ? VISTREL_PACKING_BIG : VISTREL_PACKING_LITTLE;
}

vistrel_packed packedFrom(const InputOptions& o) {
  vistrel_packed packed{};
  packed.stride = o.stride;
  packed.continuous = o.continuous;
  packed.width = o.size->width;
  packed.height = o.size->height;
  if (!o.bits && !o.pixfmt)
    throwError(kUsage, "--bits is missing: a headerless raw file does not specify its depth");
  packed.bits = o.bits.value_or(o.pixfmt ? o.pixfmt->bits : 0);
  packed.packing = packingOf(o, packed.bits);
  if (o.pixfmt && packed.bits != o.pixfmt->bits && !are16Bit(packed.packing))
    throwError(kRejected, "--bits {}: samples of that --pixfmt have {}", packed.bits,
               o.pixfmt->bits);
  if (o.highBits && !are16Bit(packed.packing))
    throwError(kRejected, "--align high: it applies to 16-bit samples only");
  return packed;
}

class HeaderlessFile : public HeaderlessReader {
 public:
  HeaderlessFile(const Source& source, const InputOptions& o)
      : HeaderlessReader(o), source_(source) {
    countFrames();
  }

  void read(uint64_t n, void* to) override {
    bytes_.resize(layout_.bytes);
    source_.read(skip_ + n * distance(), bytes_.data(), bytes_.size());
    unpackTo(to);
  }

 private:
  // The last row of the last frame may lack padding.
  void countFrames() {
    const uint64_t left = source_.size() - std::min(skip_, source_.size());
    const auto capacity = skip_ ? fmt::format("the {} bytes after --skip {}", left, skip_)
                                : fmt::format("its {} bytes", left);
    if (left < layout_.bytes) throwTooShort("file", capacity);
    description_.frames = 1 + (left - layout_.bytes) / distance();
    const uint64_t used = description_.frames * distance();
    description_.trailing = left > used ? left - used : 0;
  }

  const Source& source_;
};

}  // namespace

HeaderlessReader::HeaderlessReader(const InputOptions& o)
    : skip_(o.skip), packed_(packedFrom(o)), layout_(packedLayoutOf(packed_)) {
  Description& d = description_;
  d.format = "headerless raw";
  d.width = packed_.width;
  d.height = packed_.height;
  d.bits = packed_.bits;
  d.bytesPerSample = layout_.bytes_per_sample;
  d.highBits = o.highBits && d.bits < 16;
  if (o.pixfmt) d.phase = o.pixfmt->phase;
  if (o.pixfmt) d.pixfmt = o.pixfmt->pfnc;
}

uint64_t HeaderlessReader::distance() const {
  if (packed_.continuous) return layout_.bytes;
  return (packed_.stride ? packed_.stride : layout_.row_bytes) * packed_.height;
}

void HeaderlessReader::unpackTo(void* samples) const {
  vistrel_packed packed = packed_;
  packed.bytes = bytes_.data();
  packed.size = layout_.bytes;
  unpackInto(packed, {static_cast<uint8_t*>(samples), layout_.unpacked_bytes});
}

void HeaderlessReader::throwTooShort(const char* input, const std::string& capacity) const {
  throwError(kRejected, "the {} is too short: {}x{} samples of {} bits do not fit {}", input,
             packed_.width, packed_.height, are16Bit(packed_.packing) ? 16 : packed_.bits,
             capacity);
}

std::unique_ptr<Reader> openHeaderless(const Source& source, const InputOptions& options) {
  return std::make_unique<HeaderlessFile>(source, options);
}

}  // namespace vistrel::app
