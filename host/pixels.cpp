#include "host/pixels.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace vistrel::host {
namespace {

constexpr uint8_t kAlpha = 255;

// Replaces each pixel of three samples T by the array of samples that the function returns.
template <class T, class OfPixel>
void forEachPixel(const unsigned char* bgr, size_t n, unsigned char* pixels, OfPixel ofPixel) {
  for (size_t i = 0; i < n; ++i) {
    std::array<T, 3> p;
    std::memcpy(p.data(), bgr + i * sizeof p, sizeof p);
    const auto result = ofPixel(p);
    std::memcpy(pixels + i * sizeof result, result.data(), sizeof result);
  }
}

template <class T>
std::array<T, 1> luma(const std::array<T, 3>& p) {
  return {static_cast<T>((114u * p[0] + 587u * p[1] + 299u * p[2] + 500) / 1000)};
}

template <class T>
std::array<T, 3> swapped(const std::array<T, 3>& p) {
  return {p[2], p[1], p[0]};
}

}  // namespace

void luma8(const unsigned char* bgr, size_t n, unsigned char* pixels) {
  forEachPixel<uint8_t>(bgr, n, pixels, luma<uint8_t>);
}

void luma16(const unsigned char* bgr, size_t n, unsigned char* pixels) {
  forEachPixel<uint16_t>(bgr, n, pixels, luma<uint16_t>);
}

void swapEnds8(const unsigned char* bgr, size_t n, unsigned char* pixels) {
  forEachPixel<uint8_t>(bgr, n, pixels, swapped<uint8_t>);
}

void swapEnds16(const unsigned char* bgr, size_t n, unsigned char* pixels) {
  forEachPixel<uint16_t>(bgr, n, pixels, swapped<uint16_t>);
}

void addAlpha(const unsigned char* bgr, size_t n, unsigned char* pixels) {
  forEachPixel<uint8_t>(bgr, n, pixels, [](const std::array<uint8_t, 3>& p) {
    return std::array<uint8_t, 4>{p[0], p[1], p[2], kAlpha};
  });
}

void swapEndsAddAlpha(const unsigned char* bgr, size_t n, unsigned char* pixels) {
  forEachPixel<uint8_t>(bgr, n, pixels, [](const std::array<uint8_t, 3>& p) {
    return std::array<uint8_t, 4>{p[2], p[1], p[0], kAlpha};
  });
}

}  // namespace vistrel::host
