// Frames that arrive row by row: the same bytes as from the whole frame.
#include "tests/host/random_case.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

const uint8_t* rowOf(const vistrel_frame& frame, uint32_t y) {
  const size_t stride = frame.stride ? frame.stride : rowBytesOf(frame);
  return static_cast<const uint8_t*>(frame.samples) + y * stride;
}

// From memory that ends with the last row's last sample, and is gone afterwards.
int32_t push(vistrel_stream* stream, const vistrel_frame& frame, uint32_t y, uint32_t rows,
             uint32_t* finalRows, vistrel_error* error = nullptr) {
  const std::vector<uint8_t> portion(rowOf(frame, y),
                                     rowOf(frame, y + rows - 1) + rowBytesOf(frame));
  return vistrel_stream_push(stream, portion.data(), portion.size(), rows, finalRows, error);
}

// Pushes the frame in portions and checks after each what is final.
void pushAll(vistrel_stream* stream, const RandomCase& c, uint32_t portion, Canvas& canvas) {
  uint32_t finalRows = 0, before = 0;
  for (uint32_t y = 0; y < c.frame.height; y += portion, before = finalRows) {
    const uint32_t rows = std::min(portion, c.frame.height - y);
    ASSERT_EQ(push(stream, c.frame, y, rows, &finalRows), VISTREL_OK) << c.text();
    ASSERT_GE(finalRows, before);
    const uint32_t reach = c.conversion.algorithm == VISTREL_DIRECTIONAL ? 9 : 5;
    const uint32_t hidden = c.conversion.region.y + reach, pushed = y + rows;
    const uint32_t ready = pushed > hidden ? (pushed - hidden) / c.conversion.binning : 0;
    const uint32_t height = c.layout.height, together = c.rowsTogether();
    ASSERT_GE(finalRows, ready < height ? ready / together * together : height) << c.text();
    ASSERT_TRUE(canvas.holds(0, finalRows, false)) << c.text() << ", row " << y;
  }
  ASSERT_EQ(finalRows, c.layout.height);
}

TEST(PushedRows, MakeTheSameImage) {
  const OwnStream stream;
  for (uint32_t seed = 0; seed < 3 * kCases; ++seed) {
    const RandomCase c(seed);
    if (!c.isPushable()) continue;
    for (const uint32_t portion : {1u, 7u, c.frame.height}) {
      Canvas canvas(c);
      const auto image = canvas.image();
      vistrel_frame frame = c.frame;
      frame.samples = nullptr;
      ASSERT_EQ(vistrel_stream_begin(stream, &frame, &c.conversion, &image, nullptr), VISTREL_OK);
      pushAll(stream, c, portion, canvas);
      ASSERT_TRUE(canvas.holds()) << c.text();
      if (HasFatalFailure()) return;
    }
  }
}

struct PushedFrame : ::testing::Test {
  static constexpr uint32_t kWidth = 30, kHeight = 40;
  OwnStream stream;
  std::vector<uint16_t> samples =
      samplesOf<uint16_t>(kWidth, kHeight, [](uint32_t x, uint32_t y) { return x * 31 + y * 17; });
  vistrel_frame frame = frameOf(samples, kWidth, kHeight, 12, VISTREL_GRBG);
  vistrel_conversion conversion = defaultConversion(frame);
  std::vector<uint8_t> pixels = std::vector<uint8_t>(kWidth * kHeight * 3, 77);
  vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  vistrel_error error{};

  int32_t begin() { return vistrel_stream_begin(stream, &frame, &conversion, &image, &error); }
  int32_t pushRows(uint32_t y, uint32_t rows, uint32_t* finalRows = nullptr) {
    return push(stream, frame, y, rows, finalRows, &error);
  }
  void expectComplete() const {
    const Bytes expected = convert(frame, conversion).pixels;
    EXPECT_TRUE(std::equal(pixels.begin(), pixels.end(), expected.begin(), expected.end()));
  }
};

TEST_F(PushedFrame, StopsAtTheFirstExcessSample) {
  const auto whole = convert(frame, conversion);
  samples[17 * kWidth + 3] = 4097;
  ASSERT_EQ(begin(), VISTREL_OK);
  uint32_t finalRows = 0;
  EXPECT_EQ(pushRows(0, 10, &finalRows), VISTREL_OK);
  EXPECT_EQ(finalRows, 8u);
  EXPECT_EQ(pushRows(10, 20, &finalRows), VISTREL_EXCESS_SAMPLE);
  expectError(error, {VISTREL_EXCESS_SAMPLE, "frame.samples", "4097 at column 3, row 17",
                      "samples of 12 bits are at most 4095"});
  EXPECT_EQ(finalRows, 15u);
  EXPECT_TRUE(std::equal(pixels.begin(), pixels.begin() + 15 * kWidth * 3, whole.pixels.begin()));
  EXPECT_EQ(pushRows(18, 1), VISTREL_BAD_STREAM);
  expectError(error, {VISTREL_BAD_STREAM, "stream", "",
                      "no conversion of pushed rows is in progress on it"});
}

TEST_F(PushedFrame, KeepsItsStream) {
  ASSERT_EQ(begin(), VISTREL_OK);
  const Rejection begun{VISTREL_BUSY_STREAM, "stream", "",
                        "a conversion of pushed rows is in progress on it"};
  begin();
  expectError(error, begun);
  vistrel_stream_convert(stream, &frame, &conversion, &image, &error);
  expectError(error, begun);
  vistrel_convert_rows(stream, &frame, &conversion, &image, 0, 1, &error);
  expectError(error, begun);
  vistrel_stream_trim(stream, &error);
  expectError(error, begun);
  EXPECT_EQ(pushRows(0, kHeight), VISTREL_OK);
  expectComplete();
  EXPECT_EQ(vistrel_stream_convert(stream, &frame, &conversion, &image, &error), VISTREL_OK);
}

TEST_F(PushedFrame, IsAborted) {
  const Rejection none{VISTREL_BAD_STREAM, "stream", "",
                       "no conversion of pushed rows is in progress on it"};
  vistrel_stream_abort(stream, &error);
  expectError(error, none);
  ASSERT_EQ(begin(), VISTREL_OK);
  EXPECT_EQ(pushRows(0, 9), VISTREL_OK);
  EXPECT_EQ(vistrel_stream_abort(stream, &error), VISTREL_OK);
  pushRows(9, 1);
  expectError(error, none);
  ASSERT_EQ(begin(), VISTREL_OK);
  EXPECT_EQ(pushRows(0, kHeight), VISTREL_OK);
  expectComplete();
}

// All descriptions, and the table.
TEST_F(PushedFrame, NeedsNothingOfItsBeginningButThePixels) {
  std::vector<uint16_t> table(1024, 99);
  setTable(conversion, table);
  const vistrel_frame before = frame;
  ASSERT_EQ(begin(), VISTREL_OK);
  std::fill(table.begin(), table.end(), uint16_t{5});
  std::memset(&conversion, 0xFF, sizeof conversion);
  std::memset(&image, 0xFF, sizeof image);
  std::memset(&frame, 0xFF, sizeof frame);
  EXPECT_EQ(push(stream, before, 0, kHeight, nullptr), VISTREL_OK);
  EXPECT_EQ(std::count(pixels.begin(), pixels.end(), 99), ptrdiff_t(pixels.size()));
}

TEST_F(PushedFrame, EndsWithItsStream) {
  vistrel_stream* other = nullptr;
  ASSERT_EQ(vistrel_stream_acquire(VISTREL_WAIT, &other, nullptr), VISTREL_OK);
  ASSERT_EQ(vistrel_stream_begin(other, &frame, &conversion, &image, nullptr), VISTREL_OK);
  ASSERT_EQ(push(other, frame, 0, 9, nullptr), VISTREL_OK);
  EXPECT_EQ(vistrel_stream_release(other, nullptr), VISTREL_OK);
  // The stream that was released last is acquired first.
  ASSERT_EQ(vistrel_stream_acquire(VISTREL_WAIT, &other, nullptr), VISTREL_OK);
  EXPECT_EQ(vistrel_stream_convert(other, &frame, &conversion, &image, nullptr), VISTREL_OK);
  EXPECT_EQ(vistrel_stream_release(other, nullptr), VISTREL_OK);
  expectComplete();
}

TEST_F(PushedFrame, RejectsBadPortionsAndGoesOn) {
  ASSERT_EQ(begin(), VISTREL_OK);
  EXPECT_EQ(pushRows(0, 30), VISTREL_OK);
  const auto pushAt = [&](const void* from, size_t size, uint32_t rows) {
    vistrel_stream_push(stream, from, size, rows, nullptr, &error);
    return error;
  };
  const size_t row = kWidth * 2;
  const void* const from = samples.data() + 30 * kWidth;
  expectError(pushAt(nullptr, row, 1), nullPointer("samples"));
  expectError(pushAt(from, row, 0), {VISTREL_BAD_ROWS, "rows", "0", "1 or more are allowed"});
  expectError(pushAt(from, 11 * row, 11),
              {VISTREL_BAD_ROWS, "rows", "11", "the frame has 10 rows left"});
  expectError(pushAt(from, 2 * row - 1, 2),
              {VISTREL_SHORT_BUFFER, "size", "119", "2 rows of stride 60 take 120 bytes"});
  expectError(pushAt(pixels.data() + 100, row, 1),
              {VISTREL_OVERLAP, "samples", "", "they overlap the image's pixels"});
  EXPECT_EQ(pushRows(30, 10), VISTREL_OK);
  expectComplete();
}

// Of the rows that pushed rows make final: how many rows of the frame the latest of them comes
// after the last row that its pixels cover.
uint32_t longestDelay(PushedConversion& pushed, const std::vector<uint16_t>& samples,
                      uint32_t width, uint32_t binning) {
  uint32_t longest = 0, row = 0;
  for (uint32_t y = 0; pushed; ++y) {
    const uint32_t final = pushed.push({&samples[size_t{y} * width], width}, 1);
    for (; row < final; ++row) longest = std::max(longest, y - (binning * (row + 1) - 1));
  }
  return longest;
}

struct Reach {
  uint32_t algorithm, rows;
};
// Of the stages of an algorithm, as the documents add them up.
constexpr Reach kReaches[] = {{VISTREL_BILINEAR, 2}, {VISTREL_EDGE, 3},       {VISTREL_NEAR, 2},
                              {VISTREL_LAROCHE, 4},  {VISTREL_HAMILTON, 4},   {VISTREL_VNG, 3},
                              {VISTREL_COK, 3},      {VISTREL_KIMMEL, 5},     {VISTREL_GROUPING, 4},
                              {VISTREL_AHD, 5},      {VISTREL_DIRECTIONAL, 9}};

// The upper row of two that share chroma waits for the lower one.
TEST_F(PushedFrame, BecomesFinalAfterTheReachOfItsAlgorithm) {
  Stream own = Stream::acquire();
  frame.bits = 10, conversion.excess = VISTREL_MASK;
  for (const Reach& reach : kReaches)
    for (const uint32_t format : {VISTREL_BGR24, VISTREL_NV12, VISTREL_I420})
      for (uint32_t binning = 1; binning <= 4; ++binning) {
        conversion.algorithm = reach.algorithm;
        conversion.format = format, conversion.binning = binning;
        PushedConversion pushed = own.begin(frame, conversion, pixels);
        const uint32_t more = format == VISTREL_BGR24 ? 0 : binning;
        EXPECT_EQ(longestDelay(pushed, samples, kWidth, binning), reach.rows + more)
            << "algorithm " << reach.algorithm << ", format " << format << ", binning " << binning;
      }
}

TEST_F(PushedFrame, RejectsWhatNeedsTheWholeFrame) {
  conversion.threads = 2;
  const Rejection oneThread{VISTREL_BAD_THREADS, "conversion.threads", "2",
                            "0 and 1 are allowed: the thread that pushes rows converts them"};
  begin();
  expectError(error, oneThread);
  conversion.run = [](void*, uint32_t, auto, void*) -> int32_t { return 0; };
  begin();
  expectError(error, oneThread);
  conversion = defaultConversion(frame);
  conversion.white_balance = VISTREL_BALANCE_GRAY_WORLD;
  begin();
  expectError(error, {VISTREL_BAD_BALANCE, "conversion.white_balance", "2 (gray-world)",
                      "its gains need the whole frame at once"});
  conversion = defaultConversion(frame);
  conversion.format = VISTREL_GRAY8, conversion.gray = VISTREL_RAW_GRAY, conversion.binning = 2;
  begin();
  expectError(error, {VISTREL_BAD_GRAY, "conversion.gray", "1 (raw)",
                      "binned raw gray needs the whole frame at once"});
  EXPECT_EQ(vistrel_stream_abort(stream, nullptr), VISTREL_BAD_STREAM);
}

}  // namespace
}  // namespace vistrel
