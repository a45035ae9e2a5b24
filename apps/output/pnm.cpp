#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include "apps/output/picture.h"

namespace vistrel::app {
namespace {

// Red, green, blue; words with the high byte first.
template <class Sample>
void putRow(const uint8_t* from, const vistrel_layout& l, std::vector<uint8_t>& row) {
  row.clear();
  for (uint32_t x = 0; x < l.width; ++x) {
    for (uint32_t c = l.channels; c-- > 0;) {
      Sample sample;
      std::memcpy(&sample, from + (size_t{x} * l.channels + c) * sizeof sample, sizeof sample);
      if (sizeof sample == 2) row.push_back(static_cast<uint8_t>(sample >> 8));
      row.push_back(static_cast<uint8_t>(sample));
    }
  }
}

}  // namespace

void writePnm(const Image& image, AtomicFile& file) {
  const vistrel_layout& l = image.layout;
  const int type = l.channels == 3 ? 6 : 5;
  std::fprintf(file.stream(), "P%d\n%u %u\n%u\n", type, l.width, l.height, (1u << l.bits) - 1);
  std::vector<uint8_t> row;
  for (uint32_t y = 0; y < l.height; ++y) {
    const uint8_t* from = image.pixels.data() + y * l.row_bytes;
    l.bits > 8 ? putRow<uint16_t>(from, l, row) : putRow<uint8_t>(from, l, row);
    if (std::fwrite(row.data(), 1, row.size(), file.stream()) != row.size())
      file.failToWrite(std::strerror(errno));
  }
}

}  // namespace vistrel::app
