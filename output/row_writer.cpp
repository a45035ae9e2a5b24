#include "output/row_writer.h"

#include <algorithm>

namespace vistrel::core {

namespace {

constexpr size_t kTilePixels = 384;  // source pixels of a table tile: a few kilobytes of stack
constexpr size_t kTileSamples = 3 * kTilePixels;

size_t bytesPerPixel(Pack pack, Depth depth) {
  const size_t samples = pack == Pack::bgr ? 3 : pack == Pack::argb ? 4 : 1;
  return samples * (depth == Depth::from16to16 ? 2 : 1);
}

bool keepsSamples(Depth depth, Reduction by) {
  const bool sameDepth = depth != Depth::from16to8;
  return sameDepth && by.shift == 0 && by.ceiling == (depth == Depth::from8to8 ? 0xFF : 0xFFFF);
}

}  // namespace

RowWriter::RowWriter(Pack pack, Depth depth, unsigned binning, size_t stride, size_t width,
                     Reduction reduction)
    : row_(rowKernels().row[static_cast<int>(pack)][static_cast<int>(depth)][binning - 1]),
      binning_(binning), stride_(stride), width_(width), sourcePixel_(pack == Pack::mono ? 1 : 3),
      sourceSample_(depth == Depth::from8to8 ? 1 : 2), pixelBytes_(bytesPerPixel(pack, depth)),
      reduction_(reduction), copies_(binning == 1 && (pack == Pack::mono || pack == Pack::bgr) &&
                                     keepsSamples(depth, reduction)) {}

RowWriter::RowWriter(Pack pack, unsigned binning, size_t stride, size_t width, const uint8_t* table,
                     uint32_t tableShift)
    : RowWriter(pack, Depth::from8to8, binning, stride, width, {0, 255}) {
  map_ = rowKernels().map;
  table_ = table;
  tableShift_ = tableShift & 31;
  sourceSample_ = 2;
  copies_ = false;
}

void RowWriter::part(const void* source, void* destination, size_t n) const {
  if (table_)
    mapped(static_cast<const uint16_t*>(source), static_cast<uint8_t*>(destination), n);
  else
    row_(source, stride_, destination, n, reduction_);
}

void RowWriter::mapped(const uint16_t* source, uint8_t* destination, size_t n) const {
  alignas(64) uint8_t tile[kMaxBinning * kTileSamples];
  const size_t tileWidth = kTilePixels / binning_;
  for (size_t x = 0; x < n; x += tileWidth) {
    const size_t width = std::min(tileWidth, n - x);
    const size_t samples = sourcePixel_ * binning_ * width;
    for (unsigned i = 0; i < binning_; ++i)
      map_(source + i * stride_, tile + i * kTileSamples, samples, table_, tableShift_);
    row_(tile, kTileSamples, destination, width, reduction_);
    source += samples;
    destination += pixelBytes_ * width;
  }
}

void RowWriter::rows(const void* source, void* destination, size_t height) const {
  if (!row_ || width_ == 0) return;
  const char* s = static_cast<const char*>(source);
  const size_t step = binning_ * stride_ * sourceSample_;
  char* d = static_cast<char*>(destination);
  for (size_t y = 0; y < height; ++y) part(s + y * step, d + y * rowBytes(), width_);
}

}  // namespace vistrel::core
