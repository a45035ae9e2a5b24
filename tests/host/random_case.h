// Random conversions, and what tests of their parts need.
#pragma once

#include <gtest/gtest.h>

#include <random>

#include "tests/host/frames.h"
#include "tests/sanitizer.h"

namespace vistrel {

#if VISTREL_SANITIZED
constexpr uint32_t kCases = 60;
#else
constexpr uint32_t kCases = 600;
#endif

// Ends with its scope.
struct OwnTeam {
  explicit OwnTeam(uint32_t threads) {
    EXPECT_EQ(vistrel_team_create(threads, &team, nullptr), VISTREL_OK);
  }
  ~OwnTeam() { EXPECT_EQ(vistrel_team_destroy(team, nullptr), VISTREL_OK); }
  OwnTeam(const OwnTeam&) = delete;
  OwnTeam& operator=(const OwnTeam&) = delete;
  operator vistrel_team*() const { return team; }

  vistrel_team* team = nullptr;
};

struct OwnStream {
  OwnStream() { EXPECT_EQ(vistrel_stream_acquire(VISTREL_WAIT, &stream, nullptr), VISTREL_OK); }
  ~OwnStream() { EXPECT_EQ(vistrel_stream_release(stream, nullptr), VISTREL_OK); }
  OwnStream(const OwnStream&) = delete;
  OwnStream& operator=(const OwnStream&) = delete;
  operator vistrel_stream*() const { return stream; }

  vistrel_stream* stream = nullptr;
};

class Choice {
 public:
  explicit Choice(uint32_t seed) : random_(seed) {}
  uint32_t below(uint32_t n) { return static_cast<uint32_t>(random_() % n); }
  bool oneIn(uint32_t n) { return below(n) == 0; }
  template <class T>
  T of(std::initializer_list<T> values) {
    return values.begin()[below(static_cast<uint32_t>(values.size()))];
  }

 private:
  std::mt19937 random_;
};

// The bytes of a frame's row, without padding.
inline size_t rowBytesOf(const vistrel_frame& f) {
  if (f.packing) return packedLayoutOf(packedOf({}, f.width, 1, f.packing, f.bits)).row_bytes;
  return size_t{f.width} * (f.phase == VISTREL_BGR ? 3 : 1) * f.bytes_per_sample;
}

// A piece of memory.
struct Range {
  size_t begin, bytes;
};

// Where row y of an image lies, in each of its planes.
inline std::vector<Range> rangesOf(const vistrel_layout& l, uint32_t format, size_t stride,
                                   uint32_t y) {
  const size_t plane = stride * l.height, half = (stride + 1) / 2, halfRows = (l.height + 1) / 2;
  const size_t halfBytes = (l.width + 1) / 2;
  const Range first{y * stride, l.row_bytes};
  switch (format) {
    case VISTREL_RGB24_PLANAR:
    case VISTREL_RGB48_PLANAR:
    case VISTREL_I444:
      return {first, {plane + first.begin, l.row_bytes}, {2 * plane + first.begin, l.row_bytes}};
    case VISTREL_NV12: return {first, {plane + y / 2 * stride, l.row_bytes}};
    case VISTREL_I420:
      return {
          first, {plane + y / 2 * half, halfBytes}, {plane + (halfRows + y / 2) * half, halfBytes}};
    default: return {first};
  }
}

// A frame, a conversion that is accepted, and its image by one thread, with wide rows.
struct RandomCase {
  explicit RandomCase(uint32_t seed, uint32_t maxWidth = 90, uint32_t maxHeight = 70) {
    for (Choice choice(seed);;) {
      choose(choice, maxWidth, maxHeight);
      if (!rejectionOf(frame, conversion).status) break;
    }
    layout = layoutOf(frame, conversion);
    stride = layout.row_bytes + 5;
    expected.assign(rangesOfRow(layout.height - 1).back().begin + stride, kBetween);
    const vistrel_image image = imageIn(expected);
    EXPECT_EQ(vistrel_convert(&frame, &conversion, &image, nullptr), VISTREL_OK);
  }
  RandomCase(const RandomCase&) = delete;
  RandomCase& operator=(const RandomCase&) = delete;

  void choose(Choice& r, uint32_t maxWidth, uint32_t maxHeight) {
    frame = {};
    frame.width = 2 + r.below(maxWidth), frame.height = 2 + r.below(maxHeight);
    frame.bits = r.of({8u, 8u, 10u, 12u, 16u});
    frame.bytes_per_sample = frame.bits == 8 && r.oneIn(2) ? 1 : 2;
    frame.phase = r.oneIn(6) ? uint32_t{VISTREL_BGR} : r.below(5);
    if (frame.bytes_per_sample == 2 && frame.phase != VISTREL_BGR && r.oneIn(4)) choosePacking(r);
    const bool isTight = frame.packing >= VISTREL_PACKING_PFNC;
    if (frame.bytes_per_sample == 2 && !isTight) frame.alignment = r.below(2);
    frame.stride = rowBytesOf(frame) + (r.oneIn(3) ? r.below(9) : 0);
    samples.assign(frame.stride * frame.height, 0);
    for (auto& byte : samples) byte = static_cast<uint8_t>(r.below(256));
    frame.samples = samples.data(), frame.size = samples.size();
    chooseConversion(r);
  }

  void choosePacking(Choice& r) {
    frame.packing = 1 + r.below(5);
    if (frame.packing >= VISTREL_PACKING_PFNC) frame.bits = r.of({10u, 12u});
  }

  void chooseConversion(Choice& r) {
    conversion = defaultConversion(frame);
    conversion.excess = VISTREL_MASK;
    conversion.algorithm =
        r.oneIn(8) ? r.of({uint32_t{VISTREL_AHD}, uint32_t{VISTREL_DIRECTIONAL}}) : r.below(9);
    if (conversion.algorithm == VISTREL_EDGE) conversion.threshold = r.below(256);
    if (frame.phase == VISTREL_MONO)
      conversion.format = r.below(2);
    else
      conversion.format =
          r.of({2u, 3u, 5u, 6u, 7u, 256u, 257u, 258u, 259u, 260u, 261u, 262u, 263u, 264u});
    conversion.gray = r.below(2);
    conversion.binning = 1 + (r.oneIn(2) ? r.below(4) : 0);
    conversion.truncate_to = r.oneIn(4) ? 10 : 0;
    conversion.reduction = r.oneIn(3) ? r.below(8) : 0;
    conversion.edges = r.below(2);
    for (uint32_t& black : conversion.black) black = r.oneIn(4) ? r.below(200) : 0;
    if (frame.phase < VISTREL_MONO) conversion.white_balance = r.below(3);
    for (auto& gain : conversion.gains) gain = 1000 + r.below(9000);
    if (r.oneIn(2)) conversion.region = {r.below(6), r.below(6), frame.width / 2, frame.height / 2};
  }

  bool isPushable() const {
    return conversion.white_balance != VISTREL_BALANCE_GRAY_WORLD && canBeSplit();
  }
  bool canBeSplit() const {
    return frame.phase >= VISTREL_MONO || conversion.binning == 1 ||
           conversion.gray != VISTREL_RAW_GRAY ||
           (conversion.format != VISTREL_GRAY8 && conversion.format != VISTREL_GRAY16);
  }
  // How many rows must be made together.
  uint32_t rowsTogether() const {
    return conversion.format == VISTREL_NV12 || conversion.format == VISTREL_I420 ? 2 : 1;
  }

  std::vector<Range> rangesOfRow(uint32_t y) const {
    return rangesOf(layout, conversion.format, stride, y);
  }
  vistrel_image imageIn(std::vector<uint8_t>& memory) const {
    return {memory.data(), memory.size(), static_cast<ptrdiff_t>(stride), {}};
  }

  std::string text() const {
    const auto& c = conversion;
    return fmt(frame.width) + "x" + fmt(frame.height) + " bits " + fmt(frame.bits) + " phase " +
           fmt(frame.phase) + " packing " + fmt(frame.packing) + ", algorithm " + fmt(c.algorithm) +
           ", format " + fmt(c.format) + ", binning " + fmt(c.binning) + ", edges " + fmt(c.edges) +
           ", region " + fmt(c.region.width);
  }
  static std::string fmt(uint32_t n) { return std::to_string(n); }

  static constexpr uint8_t kBetween = 77;
  std::vector<uint8_t> samples;
  vistrel_frame frame{};
  vistrel_conversion conversion{};
  vistrel_layout layout{};
  size_t stride = 0;
  std::vector<uint8_t> expected;  // kBetween where nothing may change
};

// Memory for the image of a case.
struct Canvas {
  explicit Canvas(const RandomCase& randomCase)
      : c(randomCase), pixels(c.expected.size(), RandomCase::kBetween) {}

  vistrel_image image() { return c.imageIn(pixels); }

  // Whether these rows are as expected, and what is beside them as before; also all other rows,
  // unless these may already be in work.
  bool holds(uint32_t first, uint32_t end, bool othersToo = true) const {
    std::vector<uint8_t> wanted(pixels.size(), RandomCase::kBetween);
    const auto copyRow = [&](uint32_t y, const std::vector<uint8_t>& from) {
      for (const Range& range : c.rangesOfRow(y))
        std::memcpy(&wanted[range.begin], &from[range.begin], range.bytes);
    };
    if (!othersToo)
      for (uint32_t y = end; y < c.layout.height; ++y) copyRow(y, pixels);
    for (uint32_t y = first; y < end; ++y) copyRow(y, c.expected);
    return std::memcmp(pixels.data(), wanted.data(), wanted.size()) == 0;
  }
  bool holds() const { return holds(0, c.layout.height); }

  const RandomCase& c;
  std::vector<uint8_t> pixels;
};

// A frame of several bands, and memory for its image.
struct LargeFrame : ::testing::Test {
  static constexpr uint32_t kWidth = 1000, kHeight = 700;
  std::vector<uint16_t> samples = std::vector<uint16_t>(kWidth * kHeight, 5);
  vistrel_frame frame = frameOf(samples, kWidth, kHeight, 12, VISTREL_GRBG);
  vistrel_conversion conversion = defaultConversion(frame);
  std::vector<uint8_t> pixels = std::vector<uint8_t>(kWidth * kHeight * 3, 77);
  vistrel_image image{pixels.data(), pixels.size(), 0, {}};

  bool isUntouched() const {
    return std::count(pixels.begin(), pixels.end(), 77) == ptrdiff_t(pixels.size());
  }

  vistrel_error rejection() {
    vistrel_error error{};
    vistrel_convert(&frame, &conversion, &image, &error);
    return error;
  }
};

}  // namespace vistrel
