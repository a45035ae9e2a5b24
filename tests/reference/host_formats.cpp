#include <algorithm>
#include <cstring>

#include "tests/reference/host.h"

namespace reference {

namespace {

constexpr size_t kBlue = 0, kGreen = 1, kRed = 2;

uint32_t luma(const HostPixels& p, size_t x, size_t y) {
  if (p.channels == 1) return p.at(x, y, 0);
  return (114 * p.at(x, y, kBlue) + 587 * p.at(x, y, kGreen) + 299 * p.at(x, y, kRed) + 500) / 1000;
}

// The samples of a pixel in the first plane, in their order.
std::vector<uint32_t> packedPixel(const HostPixels& p, uint32_t format, size_t x, size_t y) {
  const auto s = [&](size_t channel) { return p.at(x, y, channel); };
  switch (format) {
    case VISTREL_MONO8:
    case VISTREL_MONO16: return {s(0)};
    case VISTREL_GRAY8:
    case VISTREL_GRAY16: return {luma(p, x, y)};
    case VISTREL_ARGB32:
    case VISTREL_ARGB32_4: return {255, s(kRed), s(kGreen), s(kBlue)};
    case VISTREL_BGRA32: return {s(kBlue), s(kGreen), s(kRed), 255};
    case VISTREL_RGBA32: return {s(kRed), s(kGreen), s(kBlue), 255};
    case VISTREL_RGB24:
    case VISTREL_RGB48: return {s(kRed), s(kGreen), s(kBlue)};
    default: return {s(kBlue), s(kGreen), s(kRed)};
  }
}

void put(uint8_t* row, size_t index, size_t sampleBytes, uint32_t value) {
  const auto sample = static_cast<uint16_t>(value);
  if (sampleBytes == 1)
    row[index] = static_cast<uint8_t>(value);
  else
    std::memcpy(row + 2 * index, &sample, 2);
}

void storePacked(const HostPixels& p, uint32_t format, uint8_t* image, ptrdiff_t stride) {
  for (size_t y = 0; y < p.height; ++y) {
    size_t index = 0;
    for (size_t x = 0; x < p.width; ++x)
      for (const uint32_t sample : packedPixel(p, format, x, y))
        put(image + static_cast<ptrdiff_t>(y) * stride, index++, hostSampleBytes(format), sample);
  }
}

void storePlanar(const HostPixels& p, size_t sampleBytes, const std::vector<HostPlane>& planes,
                 uint8_t* image) {
  constexpr size_t kChannels[] = {kRed, kGreen, kBlue};
  for (size_t plane = 0; plane < 3; ++plane)
    for (size_t y = 0; y < p.height; ++y)
      for (size_t x = 0; x < p.width; ++x)
        put(image + planes[plane].offset + y * planes[plane].stride, x, sampleBytes,
            p.at(x, y, kChannels[plane]));
}

uint8_t limitedLuma(const HostPixels& p, size_t x, size_t y) {
  const uint32_t sum =
      15 * p.at(x, y, kBlue) + 148 * p.at(x, y, kGreen) + 44 * p.at(x, y, kRed) + 3966;
  return static_cast<uint8_t>(17 * sum >> 12);
}

int product(int v, int w) { return (v * w + 16384) >> 15; }

struct Chroma {
  uint8_t cb, cr;
};

// Of side x side pixels, four times as many of which count as one block.
Chroma chromaOf(const HostPixels& p, size_t column, size_t row, size_t side) {
  int sums[3] = {};
  for (size_t i = 0; i < 4; ++i)
    for (size_t channel = 0; channel < 3; ++channel)
      sums[channel] +=
          32 * static_cast<int>(p.at(std::min<size_t>(side * column + i % side, p.width - 1),
                                     std::min<size_t>(side * row + i / 2 % side, p.height - 1),
                                     channel));
  const int b = sums[kBlue] - sums[kGreen], r = sums[kRed] - sums[kGreen];
  return {static_cast<uint8_t>((16448 + product(b, 14392) + product(r, -3298)) >> 7),
          static_cast<uint8_t>((16448 + product(r, 14392) + product(b, -1320)) >> 7)};
}

void storeLumaAndChroma(const HostPixels& p, uint32_t format, const std::vector<HostPlane>& planes,
                        uint8_t* image) {
  const bool inPairs = format == VISTREL_NV12;
  const size_t side = format == VISTREL_I444 ? 1 : 2;
  for (size_t y = 0; y < p.height; ++y)
    for (size_t x = 0; x < planes[0].rowBytes; ++x)
      image[y * planes[0].stride + x] = limitedLuma(p, std::min<size_t>(x, p.width - 1), y);
  for (size_t y = 0; y < (p.height + side - 1) / side; ++y)
    for (size_t x = 0; x < (p.width + side - 1) / side; ++x) {
      const Chroma chroma = chromaOf(p, x, y, side);
      uint8_t* const first = image + planes[1].offset + y * planes[1].stride;
      uint8_t* const cb = inPairs ? first + 2 * x : first + x;
      uint8_t* const cr = inPairs ? cb + 1 : image + planes[2].offset + y * planes[2].stride + x;
      *cb = chroma.cb;
      *cr = chroma.cr;
    }
}

}  // namespace

size_t hostSampleBytes(uint32_t format) {
  switch (format) {
    case VISTREL_MONO16:
    case VISTREL_GRAY16:
    case VISTREL_BGR48:
    case VISTREL_RGB48:
    case VISTREL_RGB48_PLANAR: return 2;
    default: return 1;
  }
}

size_t hostChannels(uint32_t format) {
  switch (format) {
    case VISTREL_BGR24:
    case VISTREL_BGR48:
    case VISTREL_RGB24:
    case VISTREL_RGB48: return 3;
    case VISTREL_ARGB32:
    case VISTREL_ARGB32_4:
    case VISTREL_BGRA32:
    case VISTREL_RGBA32: return 4;
    default: return 1;
  }
}

size_t hostImageRowBytes(uint32_t format, size_t width) {
  const size_t pixels = format == VISTREL_NV12 ? width + width % 2 : width;
  return pixels * hostChannels(format) * hostSampleBytes(format);
}

std::vector<HostPlane> hostPlanes(uint32_t format, size_t width, size_t height, size_t stride) {
  const HostPlane first{0, stride, hostImageRowBytes(format, width), height};
  const size_t columns = (width + 1) / 2, rows = (height + 1) / 2, half = (stride + 1) / 2;
  const size_t second = stride * height;
  switch (format) {
    case VISTREL_RGB24_PLANAR:
    case VISTREL_RGB48_PLANAR:
    case VISTREL_I444:
      return {first,
              {second, stride, first.rowBytes, height},
              {2 * second, stride, first.rowBytes, height}};
    case VISTREL_NV12: return {first, {second, stride, 2 * columns, rows}};
    case VISTREL_I420:
      return {first, {second, half, columns, rows}, {second + half * rows, half, columns, rows}};
    default: return {first};
  }
}

void hostStore(const HostPixels& pixels, uint32_t format, uint8_t* image, ptrdiff_t stride) {
  const auto planes = hostPlanes(format, pixels.width, pixels.height, static_cast<size_t>(stride));
  switch (format) {
    case VISTREL_RGB24_PLANAR:
    case VISTREL_RGB48_PLANAR: return storePlanar(pixels, hostSampleBytes(format), planes, image);
    case VISTREL_NV12:
    case VISTREL_I420:
    case VISTREL_I444: return storeLumaAndChroma(pixels, format, planes, image);
    default: return storePacked(pixels, format, image, stride);
  }
}

}  // namespace reference
