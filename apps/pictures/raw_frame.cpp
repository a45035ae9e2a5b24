#include "apps/pictures/raw_frame.h"

#include <algorithm>
#include <cstring>

namespace vistrel::app {
namespace {

using Bytes = std::vector<uint8_t>;

void putByte(uint32_t byte, Bytes& to) { to.push_back(static_cast<uint8_t>(byte)); }

// Appends the lowest `bits` of each sample as one stream of bits, least significant bit first.
void putStream(const uint16_t* samples, size_t count, uint32_t bits, Bytes& to) {
  uint32_t kept = 0, held = 0;
  for (size_t i = 0; i < count; ++i) {
    held |= (samples[i] & ((1u << bits) - 1)) << kept;
    for (kept += bits; kept >= 8; kept -= 8, held >>= 8) putByte(held, to);
  }
  if (kept) putByte(held, to);
}

void putBigEndian(uint16_t sample, Bytes& to) {
  putByte(uint32_t{sample} >> 8, to);
  putByte(sample, to);
}

// One sample or two.
void putGige(const uint16_t* samples, size_t count, uint32_t bits, Bytes& to) {
  const uint32_t low = bits - 8, mask = (1u << low) - 1;
  const bool pair = count > 1;
  putByte(uint32_t{samples[0]} >> low, to);
  putByte((samples[0] & mask) | (pair ? (samples[1] & mask) << 4 : 0), to);
  if (pair) putByte(uint32_t{samples[1]} >> low, to);
}

void putMipi(const uint16_t* samples, size_t count, uint32_t bits, Bytes& to) {
  for (size_t k = 0; k < count; ++k) putByte(uint32_t{samples[k]} >> (bits - 8), to);
  putStream(samples, count, bits - 8, to);
}

// Appends a group, or the part of one that ends a row.
void putGroup(const PixelFormat& format, const uint16_t* samples, size_t count, Bytes& to) {
  switch (format.packing) {
    case VISTREL_PACKING_BYTES: return putStream(samples, count, 8, to);
    case VISTREL_PACKING_LITTLE: return putStream(samples, count, 16, to);
    case VISTREL_PACKING_BIG: return putBigEndian(samples[0], to);
    case VISTREL_PACKING_PFNC: return putStream(samples, count, format.bits, to);
    case VISTREL_PACKING_GIGE: return putGige(samples, count, format.bits, to);
    case VISTREL_PACKING_MIPI: return putMipi(samples, count, format.bits, to);
  }
}

}  // namespace

Bytes packRow(const PixelFormat& format, const uint16_t* samples, size_t count) {
  const size_t group = groupOf(format.packing, format.bits).pixels;
  Bytes row;
  for (size_t at = 0; at < count; at += group)
    putGroup(format, samples + at, std::min(group, count - at), row);
  return row;
}

void writeHeaderless(const PixelFormat& format, const std::vector<uint16_t>& samples,
                     uint32_t width, AtomicFile& file) {
  for (size_t at = 0; at < samples.size(); at += width) {
    const Bytes row = packRow(format, samples.data() + at, width);
    file.write(row.data(), row.size());
  }
}

Image monoImage(const std::vector<uint16_t>& samples, uint32_t width, uint32_t bits) {
  const auto height = static_cast<uint32_t>(samples.size() / width);
  const uint32_t bytes = bits > 8 ? 2 : 1;
  Image image;
  image.layout = {width, height, 1, bits, size_t{width} * bytes, samples.size() * bytes, 0, 0, {}};
  for (const uint16_t sample : samples) {
    uint8_t native[2];
    std::memcpy(native, &sample, 2);
    const auto low = static_cast<uint8_t>(sample);
    image.pixels.insert(image.pixels.end(), bytes == 2 ? native : &low,
                        bytes == 2 ? native + 2 : &low + 1);
  }
  return image;
}

}  // namespace vistrel::app
