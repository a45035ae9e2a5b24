// Which images bypass the caches.
#include <gtest/gtest.h>

#include "host/image_pixels.h"

namespace vistrel::host {
namespace {

// An image of 1600x2700 BGR24 pixels, more than 12 MiB.
bool bypassesCaches(uint32_t destination, bool isPushed) {
  vistrel_frame frame{};
  frame.width = 1600;
  frame.height = 2700;
  frame.bytes_per_sample = 1;
  frame.bits = 8;
  frame.phase = VISTREL_GRBG;
  vistrel_conversion conversion{};
  conversion.format = VISTREL_BGR24;
  conversion.binning = 1;
  conversion.destination = destination;
  const Plan plan = makePlan(&frame, &conversion);
  const EngineCall call{.plan = plan,
                        .frame = frame,
                        .conversion = conversion,
                        .gains = {},
                        .pixels = nullptr,
                        .stride = ptrdiff_t(plan.layout.row_bytes),
                        .isPushed = isPushed};
  core::Arena count;
  return ImagePixels(call, count).firstPlane().bypassesCaches;
}

TEST(Caches, KeepPushedRowsUnlessTheyAreReadLater) {
  EXPECT_TRUE(bypassesCaches(VISTREL_READ_SOON, false));
  EXPECT_FALSE(bypassesCaches(VISTREL_READ_SOON, true));
  EXPECT_TRUE(bypassesCaches(VISTREL_READ_LATER, true));
}

}  // namespace
}  // namespace vistrel::host
