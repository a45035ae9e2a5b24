// The caller's promise not to read a result soon.
#include <gtest/gtest.h>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

uint32_t pattern(uint32_t x, uint32_t y) { return (x * x * 7 + y * 131 + (x ^ y) * 59) % 1024; }

vistrel_conversion bilinearConversion() {
  vistrel_conversion c{};
  c.binning = 1;
  return c;
}

// The promise changes no byte.
TEST(Destination, ChangesNoPixel) {
  const auto samples = samplesOf<uint16_t>(1201, 903, pattern);
  const vistrel_frame frame = frameOf(samples, 1201, 903, 10, VISTREL_GRBG);
  for (size_t i = 0; const vistrel_format* format = vistrel_format_at(i); ++i)
    for (uint32_t binning = 1; binning <= 2 && !format->mono; ++binning) {
      vistrel_conversion c = bilinearConversion();
      c.format = format->code, c.binning = binning;
      const Image soon = convert(frame, c);
      c.destination = VISTREL_READ_LATER;
      EXPECT_TRUE(convert(frame, c).pixels == soon.pixels) << format->name;
    }
}

TEST(Destination, IsSoonOrLater) {
  const vistrel_frame frame = frameOf(Span<const uint8_t>(), 8, 8, VISTREL_GRBG);
  vistrel_conversion c = bilinearConversion();
  c.format = VISTREL_BGR24;
  c.destination = 2;
  expectError(rejectionOf(frame, c), {VISTREL_BAD_DESTINATION, "conversion.destination", "2",
                                      "0 (read soon) and 1 (read later) are allowed"});
}

}  // namespace
}  // namespace vistrel
