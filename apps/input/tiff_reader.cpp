#include "apps/input/readers.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "apps/error.h"
#include "apps/input/tiff_image.h"

namespace vistrel::app {
namespace {

// No compression that is read here makes more bytes of one: deflate 1032, LZW 2730.
constexpr uint64_t kMostRatio = 4096;

bool isKnown(uint32_t compression) {
  constexpr uint32_t known[] = {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE,
                                COMPRESSION_DEFLATE, COMPRESSION_PACKBITS};
  return std::ranges::find(known, compression) != std::end(known);
}

// While the first directory is the current one.
bool isDng(const TiffInput& tiff) {
  return tiff.get<const uint8_t*>(TIFFTAG_DNGVERSION, nullptr) != nullptr;
}

void checkImage(const TiffImage& image) {
  if (image.samplesPerPixel != 1)
    fail(kRejected, "TIFF: {} samples a pixel: 1 is expected of a mosaic", image.samplesPerPixel);
  if (image.bits < 8 || image.bits > 16)
    fail(kRejected, "TIFF: {} bits a sample: 8 to 16 are allowed", image.bits);
  if (image.sampleFormat != SAMPLEFORMAT_UINT && image.sampleFormat != SAMPLEFORMAT_VOID)
    fail(kRejected, "TIFF: sample format {}: unsigned whole numbers, 1, are expected",
         image.sampleFormat);
  if (!image.isLinear)
    fail(kRejected, "TIFF: its samples need a LinearizationTable, which is not supported");
  if (!isKnown(image.compression))
    fail(kRejected,
         "TIFF: compression {}: none (1), LZW (5), deflate (8) and PackBits (32773) are read",
         image.compression);
}

// Samples of 9 to 15 bits lie side by side, the highest bit first.
void unpackBits(const uint8_t* from, uint32_t bits, size_t first, size_t count, uint16_t* to) {
  for (size_t i = 0; i < count; ++i) {
    uint32_t sample = 0;
    for (size_t bit = (first + i) * bits, end = bit + bits; bit < end; ++bit)
      sample = sample << 1 | (from[bit / 8] >> (7 - bit % 8) & 1);
    to[i] = static_cast<uint16_t>(sample);
  }
}

// As many as the level of white takes, which need not be all ones.
uint32_t significantBits(const TiffImage& image) {
  const auto white = std::bit_width(static_cast<uint64_t>(image.white.value_or(0)));
  const auto bits = static_cast<uint32_t>(white);
  return bits >= 8 && bits < image.bits ? bits : image.bits;
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
             i.rows != first.rows || i.compression != first.compression || i.phase != first.phase;
    });
    describe(first);
    checkLength(first);
  }

  void read(uint64_t n, void* to) override {
    TIFF* const t = tiff_.handle();
    if (!TIFFSetSubDirectory(t, images_[n].offset)) tiff_.failToRead("a directory is lost");
    to_ = static_cast<uint8_t*>(to);
    TIFFIsTiled(t) ? readTiles(t) : readStrips(t);
  }

 private:
  void describe(const TiffImage& first) {
    Description& d = description_;
    d.format = isDng_ ? "DNG" : "TIFF";
    d.width = first.width;
    d.height = first.height;
    d.bytesPerSample = first.bits > 8 ? 2 : 1;
    d.bits = significantBits(first);
    d.tellsBits = d.bits < 16 || first.white;
    d.phase = first.phase;
    d.phaseFault = first.phaseFault;
    d.black = first.black;
    d.white = first.white;
    d.orientation = first.orientation;
    d.frames = images_.size();
  }

  // Of all that is stored, and of a tile, which may reach beyond it.
  void checkLength(const TiffImage& first) {
    TIFFSetSubDirectory(tiff_.handle(), first.offset);
    const uint64_t ratio = first.compression == COMPRESSION_NONE ? 1 : kMostRatio;
    Description stored = description_;
    stored.width = first.columns;
    stored.height = first.rows;
    checkSize(stored, source_, first.bits, source_.size(), ratio);
    if (!TIFFIsTiled(tiff_.handle())) return;
    stored.width = tiff_.get<uint32_t>(TIFFTAG_TILEWIDTH, 0);
    stored.height = tiff_.get<uint32_t>(TIFFTAG_TILELENGTH, 0);
    checkSize(stored, source_, first.bits, source_.size(), ratio);
  }

  // A strip or tile that is to give so many bytes.
  void checkBlock(TIFF* t, uint32_t block, tmsize_t bytes) const {
    const uint64_t at = TIFFGetStrileOffset(t, block), stored = TIFFGetStrileByteCount(t, block);
    const bool plain = images_[0].compression == COMPRESSION_NONE;
    const uint64_t count = plain ? std::min(stored, static_cast<uint64_t>(bytes)) : stored;
    if (at > source_.size() || count > source_.size() - at)
      fail(kRejected,
           "the file is too short: {} bytes of samples are to begin at byte {} of its {}", count,
           at, source_.size());
  }

  void readStrips(TIFF* t) {
    const TiffImage& image = images_[0];
    const uint32_t rows = std::min(tiff_.get<uint32_t>(TIFFTAG_ROWSPERSTRIP, 0), image.rows);
    const size_t rowBytes = (size_t{image.columns} * image.bits + 7) / 8;
    if (rows == 0) tiff_.failToRead("strips of no rows");
    std::vector<uint8_t> strip(rowBytes * rows);
    for (uint32_t y = 0; y < image.rows; y += std::min(rows, image.rows - y)) {
      const uint32_t count = std::min(rows, image.rows - y);
      const auto bytes = static_cast<tmsize_t>(rowBytes * count);
      const uint32_t n = TIFFComputeStrip(t, y, 0);
      checkBlock(t, n, bytes);
      if (TIFFReadEncodedStrip(t, n, strip.data(), bytes) != bytes)
        tiff_.failToRead("a strip is too short");
      place(strip.data(), rowBytes, 0, y, image.columns, count);
    }
  }

  void readTiles(TIFF* t) {
    const TiffImage& image = images_[0];
    const auto width = tiff_.get<uint32_t>(TIFFTAG_TILEWIDTH, 0);
    const auto height = tiff_.get<uint32_t>(TIFFTAG_TILELENGTH, 0);
    const size_t rowBytes = (size_t{width} * image.bits + 7) / 8;
    std::vector<uint8_t> tile(rowBytes * height);
    const auto bytes = static_cast<tmsize_t>(tile.size());
    if (!width || !height) tiff_.failToRead("tiles of no pixels");
    for (uint64_t y = 0; y < image.rows; y += height)
      for (uint64_t x = 0; x < image.columns; x += width) {
        const auto x0 = static_cast<uint32_t>(x), y0 = static_cast<uint32_t>(y);
        const uint32_t n = TIFFComputeTile(t, x0, y0, 0, 0);
        checkBlock(t, n, bytes);
        if (TIFFReadEncodedTile(t, n, tile.data(), bytes) != bytes)
          tiff_.failToRead("a tile is too short");
        place(tile.data(), rowBytes, x0, y0, width, height);
      }
  }

  // Copies what of a block at (x0, y0) lies in the frame.
  void place(const uint8_t* block, size_t rowBytes, uint32_t x0, uint32_t y0, uint32_t width,
             uint32_t height) {
    const TiffImage& image = images_[0];
    const uint64_t left = std::max(x0, image.x), top = std::max(y0, image.y);
    const uint64_t right = std::min(uint64_t{x0} + width, uint64_t{image.x} + image.width);
    const uint64_t bottom = std::min(uint64_t{y0} + height, uint64_t{image.y} + image.height);
    for (uint64_t y = top; y < bottom && left < right; ++y)
      unpack(block + (y - y0) * rowBytes, left - x0, right - left,
             to_ + ((y - image.y) * image.width + left - image.x) * description_.bytesPerSample);
  }

  void unpack(const uint8_t* row, size_t first, size_t count, uint8_t* to) const {
    const uint32_t bits = images_[0].bits;
    if (bits % 8 == 0)
      std::memcpy(to, row + first * bits / 8, count * bits / 8);
    else
      unpackBits(row, bits, first, count, reinterpret_cast<uint16_t*>(to));
  }

  const Source& source_;
  TiffInput tiff_;
  bool isDng_;
  std::vector<TiffImage> images_;
  uint8_t* to_ = nullptr;
};

bool recognises(const Source&, const std::string& head) {
  const std::string magic = head.substr(0, 4);
  using namespace std::string_literals;
  return magic == "II*\0"s || magic == "MM\0*"s || magic == "II+\0"s || magic == "MM\0+"s;
}

// A DNG whose mosaic is compressed in a way that libtiff has not.
bool needsPlugin(const Source& source) {
  TiffInput tiff(source);
  return isDng(tiff) && !isKnown(findTiffFrames(tiff)[0].compression);
}

std::unique_ptr<Reader> open(const Source& source) {
  if (needsPlugin(source)) return openCameraRaw(source);
  return std::make_unique<TiffReader>(source);
}

}  // namespace

const ReaderType kTiff{"TIFF (DNG)", recognises, open};

}  // namespace vistrel::app
