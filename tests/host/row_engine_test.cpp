// Some rows of an image: the same bytes as in the whole image.
#include "tests/host/random_case.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

TEST(RowsOfAnImage, AreThoseOfTheWholeImage) {
  const OwnStream stream;
  for (uint32_t seed = 0; seed < 4 * kCases; ++seed) {
    const RandomCase c(seed);
    if (!c.canBeSplit()) continue;
    Choice choice(seed);
    const uint32_t height = c.layout.height, together = c.rowsTogether();
    const uint32_t first = choice.below(height) / together * together;
    const uint32_t end = first + 1 + choice.below(height - first);
    const uint32_t rows = std::min((end + together - 1) / together * together, height) - first;
    Canvas canvas(c);
    const auto image = canvas.image();
    ASSERT_EQ(vistrel_convert_rows(stream, &c.frame, &c.conversion, &image, first, rows, nullptr),
              VISTREL_OK);
    ASSERT_TRUE(canvas.holds(first, first + rows)) << c.text() << ": rows " << first << "+" << rows;
  }
}

TEST(RowsOfAnImage, AreRejected) {
  const OwnStream stream;
  const std::vector<uint16_t> samples(20 * 20, 9);
  vistrel_frame frame = frameOf(samples, 20, 20, 10, VISTREL_RGGB);
  vistrel_conversion c = defaultConversion(frame);
  std::vector<uint8_t> pixels(20 * 20 * 3);
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  vistrel_error error{};
  const auto make = [&](uint32_t first, uint32_t rows) {
    vistrel_convert_rows(stream, &frame, &c, &image, first, rows, &error);
    return error;
  };
  expectError(make(0, 0), {VISTREL_BAD_ROWS, "rows", "0", "1 or more are allowed"});
  expectError(make(19, 2), {VISTREL_BAD_ROWS, "rows", "2", "the image has 1 row from row 19 on"});
  expectError(make(0xFFFFFFFF, 2),
              {VISTREL_BAD_ROWS, "first", "4294967295", "the image has 20 rows"});
  c.format = VISTREL_GRAY8, c.gray = VISTREL_RAW_GRAY, c.binning = 2;
  expectError(make(0, 2), {VISTREL_BAD_GRAY, "conversion.gray", "1 (raw)",
                           "binned raw gray mixes all rows; they can't be made separately"});
  c = defaultConversion(frame);
  for (const auto& [format, name] :
       {std::pair<uint32_t, std::string>{VISTREL_NV12, "NV12"}, {VISTREL_I420, "I420"}}) {
    c.format = format;
    const std::string reason = "rows of " + name + " are made in pairs, as they share chroma";
    expectError(make(1, 3), {VISTREL_BAD_ROWS, "first", "1", reason});
    expectError(make(2, 3), {VISTREL_BAD_ROWS, "rows", "3", reason});
    expectError(make(2, 4), kAccepted);
  }
}

}  // namespace
}  // namespace vistrel
