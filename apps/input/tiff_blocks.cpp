#include "apps/input/tiff_blocks.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "apps/error.h"
#include "apps/input/deflate_check.h"

namespace vistrel::app {
namespace {

// Samples of 9 to 15 bits are packed without gaps, most significant bit first.
void unpackBits(const uint8_t* from, uint32_t bits, size_t first, size_t count, uint16_t* to) {
  for (size_t i = 0; i < count; ++i) {
    uint32_t sample = 0;
    for (size_t bit = (first + i) * bits, end = bit + bits; bit < end; ++bit)
      sample = sample << 1 | (from[bit / 8] >> (7 - bit % 8) & 1);
    to[i] = static_cast<uint16_t>(sample);
  }
}

class BlockReader {
 public:
  BlockReader(const TiffInput& tiff, const Source& source, const TiffImage& image, uint8_t* to)
      : tiff_(tiff), source_(source), image_(image), to_(to) {}

  void readStrips() {
    TIFF* const t = tiff_.handle();
    const uint32_t rows = std::min(tiff_.get<uint32_t>(TIFFTAG_ROWSPERSTRIP, 0), image_.rows);
    const size_t rowBytes = bytesOf(image_.columns);
    if (rows == 0) tiff_.throwReadError("strips of no rows");
    std::vector<uint8_t> strip(rowBytes * rows);
    for (uint32_t y = 0; y < image_.rows; y += std::min(rows, image_.rows - y)) {
      const uint32_t count = std::min(rows, image_.rows - y);
      const auto bytes = static_cast<tmsize_t>(rowBytes * count);
      const uint32_t n = TIFFComputeStrip(t, y, 0);
      checkBlock(n, bytes);
      if (TIFFReadEncodedStrip(t, n, strip.data(), bytes) != bytes)
        tiff_.throwReadError("a strip is too short");
      place(strip.data(), {0, y, image_.columns, count});
    }
  }

  void readTiles() {
    TIFF* const t = tiff_.handle();
    const auto width = tiff_.get<uint32_t>(TIFFTAG_TILEWIDTH, 0);
    const auto height = tiff_.get<uint32_t>(TIFFTAG_TILELENGTH, 0);
    if (!width || !height) tiff_.throwReadError("tiles of no pixels");
    std::vector<uint8_t> tile(bytesOf(width) * height);
    const auto bytes = static_cast<tmsize_t>(tile.size());
    for (uint64_t y = 0; y < image_.rows; y += height)
      for (uint64_t x = 0; x < image_.columns; x += width) {
        const auto x0 = static_cast<uint32_t>(x), y0 = static_cast<uint32_t>(y);
        const uint32_t n = TIFFComputeTile(t, x0, y0, 0, 0);
        checkBlock(n, bytes);
        if (TIFFReadEncodedTile(t, n, tile.data(), bytes) != bytes)
          tiff_.throwReadError("a tile is too short");
        place(tile.data(), {x0, y0, width, height});
      }
  }

 private:
  struct Area {
    uint32_t x, y, width, height;
  };

  size_t bytesOf(uint32_t samples) const { return (size_t{samples} * image_.bits + 7) / 8; }

  // Checks that the file holds the whole strip or tile, which decodes to `bytes` bytes.
  void checkBlock(uint32_t block, tmsize_t bytes) const {
    TIFF* const t = tiff_.handle();
    const uint64_t at = TIFFGetStrileOffset(t, block), stored = TIFFGetStrileByteCount(t, block);
    const bool plain = image_.compression == COMPRESSION_NONE;
    const uint64_t count = plain ? std::min(stored, static_cast<uint64_t>(bytes)) : stored;
    if (at > source_.size() || count > source_.size() - at)
      throwError(kRejected,
                 "the file is too short: {} bytes of samples are to begin at byte {} of its {}",
                 count, at, source_.size());
    const bool isDeflate = image_.compression == COMPRESSION_ADOBE_DEFLATE ||
                           image_.compression == COMPRESSION_DEFLATE;
    if (isDeflate && !isIntactDeflate(source_, at, count))
      throwError(kRejected, "TIFF: {} {} is damaged: its checksum is wrong, or it ends early",
                 TIFFIsTiled(t) ? "tile" : "strip", block);
  }

  // Copies the part of a block that lies in the frame.
  void place(const uint8_t* block, const Area& a) {
    const uint64_t left = std::max(a.x, image_.x), top = std::max(a.y, image_.y);
    const uint64_t right = std::min(uint64_t{a.x} + a.width, uint64_t{image_.x} + image_.width);
    const uint64_t bottom = std::min(uint64_t{a.y} + a.height, uint64_t{image_.y} + image_.height);
    const size_t sampleBytes = image_.bits > 8 ? 2 : 1;
    for (uint64_t y = top; y < bottom && left < right; ++y)
      unpack(block + (y - a.y) * bytesOf(a.width), left - a.x, right - left,
             to_ + ((y - image_.y) * image_.width + left - image_.x) * sampleBytes);
  }

  void unpack(const uint8_t* row, size_t first, size_t count, uint8_t* to) const {
    const uint32_t bits = image_.bits;
    if (bits % 8 == 0)
      std::memcpy(to, row + first * bits / 8, count * bits / 8);
    else
      unpackBits(row, bits, first, count, reinterpret_cast<uint16_t*>(to));
  }

  const TiffInput& tiff_;
  const Source& source_;
  const TiffImage& image_;
  uint8_t* to_;
};

void readStored(const TiffInput& tiff, const Source& source, const TiffImage& image, uint8_t* to) {
  BlockReader reader(tiff, source, image, to);
  TIFFIsTiled(tiff.handle()) ? reader.readTiles() : reader.readStrips();
}

// Values beyond the table become its last one.
template <class Sample>
void translate(const std::vector<uint16_t>& stored, const TiffImage& image, Sample* to) {
  const size_t count = size_t{image.width} * image.height;
  const auto* const bytes = reinterpret_cast<const uint8_t*>(stored.data());
  for (size_t i = 0; i < count; ++i) {
    const size_t value = image.bits > 8 ? stored[i] : bytes[i];
    to[i] = static_cast<Sample>(image.table[std::min(value, image.table.size() - 1)]);
  }
}

}  // namespace

void readTiffBlocks(const TiffInput& tiff, const Source& source, const TiffImage& image,
                    uint8_t* to) {
  if (image.table.empty()) return readStored(tiff, source, image, to);
  std::vector<uint16_t> stored(size_t{image.width} * image.height);
  readStored(tiff, source, image, reinterpret_cast<uint8_t*>(stored.data()));
  if (bytesPerSample(image) == 2)
    translate(stored, image, reinterpret_cast<uint16_t*>(to));
  else
    translate(stored, image, to);
}

}  // namespace vistrel::app
