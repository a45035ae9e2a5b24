// The finishing stage and the orientation, one pixel after the other.
#include <algorithm>
#include <array>

#include "tests/reference/host.h"

namespace reference {

namespace {

using Pixel = std::array<int64_t, 3>;  // red, green, blue; or three times the same

int64_t in16Bits(uint32_t v, uint32_t bits) { return v << (16 - bits) | v >> (2 * bits - 16); }

uint32_t blackOf(const vistrel_conversion& c, size_t x, size_t y) { return c.black[2 * y + x]; }

// What a clipped sample of each colour becomes.
Pixel clipsOf(const vistrel_frame& frame, const vistrel_conversion& c, uint32_t bits) {
  const auto gains = hostGains(frame, c);
  const uint32_t white = c.white ? c.white : (1u << frame.bits) - 1;
  Pixel clips{65535, 65535, 65535};
  for (size_t y = 0; y < 2; ++y)
    for (size_t x = 0; x < 2; ++x) {
      const char colour = hostColour(frame.phase, static_cast<int64_t>(x), static_cast<int64_t>(y));
      int64_t& clip = clips[colour == 'R' ? 0 : colour == 'G' ? 1 : 2];
      const uint32_t w = hostScaled(frame, c, gains, white - blackOf(c, x, y), x, y);
      clip = std::min(clip, in16Bits(w, bits));
    }
  return clips;
}

// In 1/256.
int64_t clippingOf(int64_t v, int64_t clip) {
  const int64_t h = clip >> 4;
  return h ? std::min(std::max<int64_t>(v - (clip - h), 0), h) * 256 / h : 0;
}

int64_t faded(int64_t v, int64_t to, int64_t t) { return v + (((to - v) * t + 128) >> 8); }

void estimateHighlights(Pixel& pixel, const Pixel& clips) {
  const int64_t most = *std::max_element(pixel.begin(), pixel.end());
  int64_t least = most;
  for (size_t i = 0; i < 3; ++i)
    least = std::min(least, faded(pixel[i], most, clippingOf(pixel[i], clips[i])));
  const int64_t middle = (least + most + 1) >> 1;
  for (size_t i = 0; i < 3; ++i)
    pixel[i] = faded(pixel[i], std::max(pixel[i], middle), clippingOf(pixel[i], clips[i]));
}

void applyMatrix(Pixel& pixel, const int32_t (&matrix)[9]) {
  const Pixel from = pixel;
  for (size_t row = 0; row < 3; ++row) {
    int64_t sum = 2048;
    for (size_t i = 0; i < 3; ++i) sum += matrix[3 * row + i] * from[i];
    pixel[row] = std::clamp<int64_t>(sum >> 12, 0, 65535);
  }
}

int64_t transferred(int64_t i, const vistrel_finish& finish) {
  if (!finish.transfer) return i;
  const int64_t p = i * (finish.transfer_points - 1), k = p / 65535, f = p - 65535 * k;
  const int64_t next = f ? finish.transfer[k + 1] : 0;
  return (finish.transfer[k] * (65535 - f) + next * f + 32767) / 65535;
}

}  // namespace

HostPixels hostFinished(const HostPixels& pixels, uint32_t bits, const vistrel_frame& frame,
                        const vistrel_conversion& c) {
  const vistrel_finish& finish = *c.finish;
  const bool isColour = pixels.channels == 3;
  const auto gains = hostGains(frame, c);
  const uint64_t most =
      isColour ? *std::max_element(gains.begin(), gains.end()) : uint64_t{VISTREL_GAIN_ONE};
  const auto a = static_cast<int64_t>(
      std::min<uint64_t>((finish.exposure * most + 2048) >> 12, uint64_t{1} << 28));
  const Pixel clips = isColour ? clipsOf(frame, c, bits) : Pixel{};
  const bool hasMatrix =
      std::any_of(std::begin(finish.matrix), std::end(finish.matrix), [](int32_t m) { return m; });
  HostPixels result{pixels.width, pixels.height, pixels.channels, {}};
  for (size_t n = 0; n < pixels.samples.size(); n += pixels.channels) {
    Pixel pixel;
    for (size_t i = 0; i < 3; ++i)
      pixel[i] = in16Bits(pixels.samples[n + (isColour ? 2 - i : 0)], bits);
    if (isColour && finish.highlights == VISTREL_HIGHLIGHTS_NEUTRAL)
      estimateHighlights(pixel, clips);
    if (isColour && hasMatrix) applyMatrix(pixel, finish.matrix);
    for (size_t i = 0; i < pixels.channels; ++i) {
      const int64_t light =
          std::min<int64_t>((pixel[isColour ? 2 - i : 0] * a + 2048) >> 12, 65535);
      const int64_t y = transferred(light, finish);
      result.samples.push_back(
          static_cast<uint16_t>(hostSampleBytes(c.format) == 2 ? y : (y + 128) / 257));
    }
  }
  return result;
}

HostPixels hostTurned(const HostPixels& from, uint32_t orientation) {
  if (orientation <= VISTREL_UPRIGHT) return from;
  const bool swaps = orientation >= VISTREL_TRANSPOSED;
  HostPixels to{
      swaps ? from.height : from.width, swaps ? from.width : from.height, from.channels, {}};
  for (size_t y = 0; y < to.height; ++y)
    for (size_t x = 0; x < to.width; ++x) {
      const size_t right = from.width - 1, bottom = from.height - 1;
      size_t column = x, row = y;
      switch (orientation) {
        case VISTREL_MIRRORED: column = right - x; break;
        case VISTREL_TURNED_180: column = right - x, row = bottom - y; break;
        case VISTREL_FLIPPED: row = bottom - y; break;
        case VISTREL_TRANSPOSED: column = y, row = x; break;
        case VISTREL_TURNED_90: column = y, row = bottom - x; break;
        case VISTREL_TRANSVERSE: column = right - y, row = bottom - x; break;
        case VISTREL_TURNED_270: column = right - y, row = x; break;
      }
      for (size_t i = 0; i < from.channels; ++i)
        to.samples.push_back(static_cast<uint16_t>(from.at(column, row, i)));
    }
  return to;
}

}  // namespace reference
