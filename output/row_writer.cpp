#include "output/row_writer.h"

#include <algorithm>

namespace vistrel {

namespace {

constexpr size_t kTilePixels = 384;  // source pixels of a table tile: a few kilobytes of stack
constexpr size_t kTileSamples = 3 * kTilePixels;

size_t bytesAPixel(Pack pack, Depth depth) {
  const size_t samples = pack == Pack::bgr ? 3 : pack == Pack::argb ? 4 : 1;
  return samples * (depth == Depth::from16to16 ? 2 : 1);
}

bool keepsAll(Depth depth, Reduction by) {
  const bool sameDepth = depth != Depth::from16to8;
  return sameDepth && by.shift == 0 && by.ceiling == (depth == Depth::from8to8 ? 0xFF : 0xFFFF);
}

}  // namespace

RowWriter::RowWriter(Pack pack, Depth depth, unsigned binning, size_t stride, size_t width,
                     Reduction reduction)
    : m_row(rowTable().row[static_cast<int>(pack)][static_cast<int>(depth)][binning - 1]),
      m_binning(binning), m_stride(stride), m_width(width),
      m_sourcePixel(pack == Pack::mono ? 1 : 3), m_sourceSample(depth == Depth::from8to8 ? 1 : 2),
      m_pixelBytes(bytesAPixel(pack, depth)), m_reduction(reduction),
      m_copies(binning == 1 && (pack == Pack::mono || pack == Pack::bgr) && keepsAll(depth, reduction)) {}

RowWriter::RowWriter(Pack pack, unsigned binning, size_t stride, size_t width,
                     const uint8_t* table, uint32_t tableShift)
    : RowWriter(pack, Depth::from8to8, binning, stride, width, {0, 255}) {
  m_map = rowTable().map;
  m_table = table;
  m_tableShift = tableShift & 31;
  m_sourceSample = 2;
  m_copies = false;
}

void RowWriter::part(const void* source, void* destination, size_t n) const {
  if (m_table)
    mapped(static_cast<const uint16_t*>(source), static_cast<uint8_t*>(destination), n);
  else
    m_row(source, m_stride, destination, n, m_reduction);
}

void RowWriter::mapped(const uint16_t* source, uint8_t* destination, size_t n) const {
  alignas(64) uint8_t tile[kMaxBinning * kTileSamples];
  const size_t tileWidth = kTilePixels / m_binning;
  for (size_t x = 0; x < n; x += tileWidth) {
    const size_t width = std::min(tileWidth, n - x);
    const size_t samples = m_sourcePixel * m_binning * width;
    for (unsigned i = 0; i < m_binning; ++i)
      m_map(source + i * m_stride, tile + i * kTileSamples, samples, m_table, m_tableShift);
    m_row(tile, kTileSamples, destination, width, m_reduction);
    source += samples;
    destination += m_pixelBytes * width;
  }
}

void RowWriter::rows(const void* source, void* destination, size_t height) const {
  if (!m_row || m_width == 0) return;
  const char* s = static_cast<const char*>(source);
  const size_t step = m_binning * m_stride * m_sourceSample;
  char* d = static_cast<char*>(destination);
  for (size_t y = 0; y < height; ++y) part(s + y * step, d + y * rowBytes(), m_width);
}

}  // namespace vistrel
