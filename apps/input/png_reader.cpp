#include "apps/input/readers.h"

#include "apps/error.h"
#include "apps/pictures/png_input.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

class PngReader : public Reader {
 public:
  explicit PngReader(const Source& source) : source_(source) {
    const PngInput png(source);
    checkType(png);
    Description& d = description_;
    d.format = "PNG";
    d.width = png.width();
    d.height = png.height();
    d.bytesPerSample = png.bits() / 8;
    d.bits = png.grayBits();
    d.bitsKnown = d.bits < 16;
    uint32_t phase = 0;
    if (vistrel_parse_phase(png.text("Phase").c_str(), &phase, nullptr) == VISTREL_OK &&
        phase <= VISTREL_MONO)
      d.phase = phase;
    checkSize(d, source, png.bits(), source.size(), kDeflateRatio);
  }

  void read(uint64_t, void* to) override {
    PngInput png(source_);
    png.readRows(static_cast<uint8_t*>(to),
                 size_t{description_.width} * description_.bytesPerSample);
  }

 private:
  static void checkType(const PngInput& png) {
    if (png.colourType() != PNG_COLOR_TYPE_GRAY || png.bits() < 8)
      throwError(kRejected, "a PNG of {} channel{} of {} bits{}: gray of 8 or 16 bits is expected",
                 png.channels(), png.channels() > 1 ? "s" : "", png.bits(),
                 png.colourType() == PNG_COLOR_TYPE_PALETTE ? " with a palette" : "");
  }

  const Source& source_;
};

bool recognisesPng(const Source&, const std::string& head) {
  return head.substr(0, 8) == "\x89PNG\r\n\x1a\n";
}

std::unique_ptr<Reader> openPng(const Source& source, const InputOptions&) {
  return std::make_unique<PngReader>(source);
}

}  // namespace

const ReaderType kPng{"PNG", recognisesPng, openPng};

}  // namespace vistrel::app
