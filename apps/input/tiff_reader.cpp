#include "apps/input/readers.h"

#include <algorithm>

#include "apps/error.h"
#include "apps/input/tiff_blocks.h"
#include "apps/input/tiff_image.h"
#include "apps/input/tiff_metadata.h"

namespace vistrel::app {
namespace {

// An upper limit for the compressions read here: deflate 1032, LZW 2730.
constexpr uint64_t kMaxRatio = 4096;

bool isKnown(uint32_t compression) {
  constexpr uint32_t known[] = {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE,
                                COMPRESSION_DEFLATE, COMPRESSION_PACKBITS};
  return std::ranges::find(known, compression) != std::end(known);
}

// Call while the first directory is current.
bool isDng(const TiffInput& tiff) {
  return tiff.get<const uint8_t*>(TIFFTAG_DNGVERSION, nullptr) != nullptr;
}

void checkImage(const TiffImage& image) {
  if (image.samplesPerPixel != 1)
    throwError(kRejected, "TIFF: {} samples a pixel: 1 is expected of a mosaic",
               image.samplesPerPixel);
  if (image.bits < 8 || image.bits > 16)
    throwError(kRejected, "TIFF: {} bits a sample: 8 to 16 are allowed", image.bits);
  if (image.sampleFormat != SAMPLEFORMAT_UINT && image.sampleFormat != SAMPLEFORMAT_VOID)
    throwError(kRejected, "TIFF: sample format {}: unsigned whole numbers, 1, are expected",
               image.sampleFormat);
  if (!isKnown(image.compression))
    throwError(kRejected,
               "TIFF: compression {}: none (1), LZW (5), deflate (8) and PackBits (32773) are read",
               image.compression);
}

class TiffReader : public Reader {
 public:
  explicit TiffReader(const Source& source)
      : source_(source), tiff_(source), isDng_(isDng(tiff_)), images_(findTiffFrames(tiff_)) {
    const TiffImage& first = images_[0];
    checkImage(first);
    std::erase_if(images_, [first](const TiffImage& i) {
      return i.width != first.width || i.height != first.height || i.bits != first.bits ||
             i.x != first.x || i.y != first.y || i.columns != first.columns ||
             i.rows != first.rows || i.compression != first.compression || i.phase != first.phase ||
             i.table != first.table;
    });
    describe(first);
    checkLength(first);
  }

  void read(uint64_t n, void* to) override {
    if (!TIFFSetSubDirectory(tiff_.handle(), images_[n].offset))
      tiff_.throwReadError("a directory is lost");
    readTiffBlocks(tiff_, source_, images_[0], static_cast<uint8_t*>(to));
  }

 private:
  void describe(const TiffImage& first) {
    Description& d = description_;
    d.format = isDng_ ? "DNG" : "TIFF";
    d.width = first.width;
    d.height = first.height;
    d.bytesPerSample = bytesPerSample(first);
    d.bits = significantBits(first);
    d.bitsKnown = d.bits < 16 || first.white || !first.table.empty();
    d.phase = first.phase;
    d.phaseFault = first.phaseFault;
    d.frames = images_.size();
    d.camera = readTiffMetadata(source_, first.offset, d.warnings);
    dropInvalid(d.camera, d.width, d.height, d.warnings);
  }

  // Checks the stored image and, since tiles may exceed the image, one tile.
  void checkLength(const TiffImage& first) {
    TIFFSetSubDirectory(tiff_.handle(), first.offset);
    const uint64_t ratio = first.compression == COMPRESSION_NONE ? 1 : kMaxRatio;
    Description stored = description_;
    stored.width = first.columns;
    stored.height = first.rows;
    checkSize(stored, source_, first.bits, source_.size(), ratio);
    if (!TIFFIsTiled(tiff_.handle())) return;
    stored.width = tiff_.get<uint32_t>(TIFFTAG_TILEWIDTH, 0);
    stored.height = tiff_.get<uint32_t>(TIFFTAG_TILELENGTH, 0);
    checkSize(stored, source_, first.bits, source_.size(), ratio);
  }

  const Source& source_;
  TiffInput tiff_;
  bool isDng_;
  std::vector<TiffImage> images_;
};

bool recognisesTiff(const Source&, const std::string& head) {
  const std::string magic = head.substr(0, 4);
  using namespace std::string_literals;
  return magic == "II*\0"s || magic == "MM\0*"s || magic == "II+\0"s || magic == "MM\0+"s;
}

// The frame's directory in a DNG whose compression libtiff doesn't support.
std::optional<uint64_t> compressedFrame(const Source& source) {
  TiffInput tiff(source);
  if (!isDng(tiff)) return {};
  const TiffImage frame = findTiffFrames(tiff)[0];
  if (isKnown(frame.compression)) return {};
  return frame.offset;
}

std::unique_ptr<Reader> openTiff(const Source& source, const InputOptions&) {
  if (const auto offset = compressedFrame(source)) return openCompressedDng(source, *offset);
  return std::make_unique<TiffReader>(source);
}

}  // namespace

const ReaderType kTiff{"TIFF (DNG)", recognisesTiff, openTiff};

}  // namespace vistrel::app
