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

// A frame, a conversion that is accepted, and its image by one thread.
struct RandomCase {
  explicit RandomCase(uint32_t seed, uint32_t maxWidth = 90, uint32_t maxHeight = 70) {
    for (Choice choice(seed);;) {
      choose(choice, maxWidth, maxHeight);
      if (!rejectionOf(frame, conversion).status) break;
    }
    expected = convert(frame, conversion);
  }
  RandomCase(const RandomCase&) = delete;
  RandomCase& operator=(const RandomCase&) = delete;

  void choose(Choice& r, uint32_t maxWidth, uint32_t maxHeight) {
    const uint32_t width = 2 + r.below(maxWidth), height = 2 + r.below(maxHeight);
    const uint32_t bits = r.of({8u, 8u, 10u, 12u, 16u});
    const size_t bytes = bits == 8 && r.oneIn(2) ? 1 : 2;
    const size_t stride = width * bytes + (r.oneIn(3) ? r.below(9) : 0);
    samples.assign(stride * height, 0);
    for (auto& byte : samples) byte = static_cast<uint8_t>(r.below(256));
    frame = {};
    frame.samples = samples.data(), frame.size = samples.size(), frame.stride = stride;
    frame.width = width, frame.height = height;
    frame.bytes_per_sample = static_cast<uint32_t>(bytes), frame.bits = bits;
    frame.phase = r.below(5);
    frame.alignment = bytes == 2 ? r.below(2) : 0;
    chooseConversion(r);
  }

  void chooseConversion(Choice& r) {
    conversion = defaultConversion(frame);
    conversion.excess = VISTREL_MASK;
    conversion.algorithm = r.oneIn(10) ? uint32_t{VISTREL_AHD} : r.below(9);
    if (conversion.algorithm == VISTREL_EDGE) conversion.threshold = r.below(256);
    if (frame.phase == VISTREL_MONO)
      conversion.format = r.below(2);
    else
      conversion.format = r.of({2u, 3u, 5u, 6u, 7u, 256u, 257u, 258u, 259u});
    conversion.gray = r.below(2);
    conversion.binning = 1 + (r.oneIn(2) ? r.below(4) : 0);
    conversion.truncate_to = r.oneIn(4) ? 10 : 0;
    conversion.reduction = r.oneIn(3) ? r.below(8) : 0;
    conversion.edges = r.below(2);
    for (uint32_t& black : conversion.black) black = r.oneIn(4) ? r.below(200) : 0;
    if (frame.phase != VISTREL_MONO) conversion.white_balance = r.below(3);
    for (auto& gain : conversion.gains) gain = 1000 + r.below(9000);
    if (r.oneIn(2)) conversion.region = {r.below(6), r.below(6), frame.width / 2, frame.height / 2};
  }

  bool isPushable() const {
    return conversion.white_balance != VISTREL_BALANCE_GRAY_WORLD && canBeSplit();
  }
  bool canBeSplit() const {
    return frame.phase == VISTREL_MONO || conversion.binning == 1 ||
           conversion.gray != VISTREL_RAW_GRAY ||
           (conversion.format != VISTREL_GRAY8 && conversion.format != VISTREL_GRAY16);
  }

  std::string text() const {
    const auto& c = conversion;
    return fmt(frame.width) + "x" + fmt(frame.height) + " bits " + fmt(frame.bits) + " phase " +
           fmt(frame.phase) + ", algorithm " + fmt(c.algorithm) + ", format " + fmt(c.format) +
           ", binning " + fmt(c.binning) + ", edges " + fmt(c.edges) + ", region " +
           fmt(c.region.width);
  }
  static std::string fmt(uint32_t n) { return std::to_string(n); }

  std::vector<uint8_t> samples;
  vistrel_frame frame{};
  vistrel_conversion conversion{};
  Image expected;
};

// Memory for the image of a case, with wide rows between which nothing may change.
struct Canvas {
  explicit Canvas(const RandomCase& c)
      : rowBytes(c.expected.layout.row_bytes), stride(rowBytes + 5),
        pixels(stride * c.expected.layout.height, 77) {}

  vistrel_image image() {
    return {pixels.data(), pixels.size(), static_cast<ptrdiff_t>(stride), {}};
  }

  // Whether these rows are as expected, and what is beside them as before; also all other rows,
  // unless these may already be in work.
  bool holds(const Image& expected, uint32_t first, uint32_t end, bool othersToo = true) const {
    for (uint32_t y = 0; y < expected.layout.height; ++y) {
      const uint8_t* row = pixels.data() + y * stride;
      const bool isMade = first <= y && y < end;
      const auto wanted = expected.pixels.begin() + static_cast<ptrdiff_t>(y * rowBytes);
      if (isMade && !std::equal(row, row + rowBytes, wanted)) return false;
      if (!isUntouched(row + (isMade || !othersToo ? rowBytes : 0), row + stride)) return false;
    }
    return true;
  }
  static bool isUntouched(const uint8_t* from, const uint8_t* end) {
    return std::count(from, end, 77) == end - from;
  }
  bool holds(const Image& expected) const { return holds(expected, 0, expected.layout.height); }

  size_t rowBytes, stride;
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
