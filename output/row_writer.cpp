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

}  // namespace

RowWriter::RowWriter(Pack pack, Depth depth, unsigned binning, size_t stride, size_t width,
                     Reduction reduction)
    : m_row(rowTable().row[static_cast<int>(pack)][static_cast<int>(depth)][binning - 1]),
      m_binning(binning), m_stride(stride), m_width(width),
      m_sourcePixel(pack == Pack::mono ? 1 : 3), m_sourceSample(depth == Depth::from8to8 ? 1 : 2),
      m_pixelBytes(bytesAPixel(pack, depth)), m_reduction(reduction) {}

RowWriter::RowWriter(Pack pack, unsigned binning, size_t stride, size_t width,
                     const uint8_t* table, uint32_t tableShift)
    : RowWriter(pack, Depth::from8to8, binning, stride, width, {0, 255}) {
  m_map = rowTable().map;
  m_table = table;
  m_tableShift = tableShift & 31;
  m_sourceSample = 2;
}

void RowWriter::row(const void* source, size_t start, void* destination, size_t y) const {
  if (!m_row) return;
  const size_t first = start + y * m_binning * m_stride;
  const char* s = static_cast<const char*>(source) + first * m_sourceSample;
  char* d = static_cast<char*>(destination) + y * m_width * m_pixelBytes;
  if (m_table)
    mappedRow(reinterpret_cast<const uint16_t*>(s), reinterpret_cast<uint8_t*>(d));
  else
    m_row(s, m_stride, d, m_width, m_reduction);
}

void RowWriter::mappedRow(const uint16_t* source, uint8_t* destination) const {
  alignas(64) uint8_t tile[kMaxBinning * kTileSamples];
  const size_t tileWidth = kTilePixels / m_binning;
  for (size_t x = 0; x < m_width; x += tileWidth) {
    const size_t width = std::min(tileWidth, m_width - x);
    const size_t samples = m_sourcePixel * m_binning * width;
    for (unsigned i = 0; i < m_binning; ++i)
      m_map(source + i * m_stride, tile + i * kTileSamples, samples, m_table, m_tableShift);
    m_row(tile, kTileSamples, destination, width, m_reduction);
    source += samples;
    destination += m_pixelBytes * width;
  }
}

void RowWriter::rows(const void* source, size_t start, void* destination, size_t height) const {
  if (m_width == 0) return;
  for (size_t y = 0; y < height; ++y) row(source, start, destination, y);
}

}  // namespace vistrel
