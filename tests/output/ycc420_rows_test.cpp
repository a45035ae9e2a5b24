// Rows with shared chroma, handed over in parts of any size and in bands.
#include "output/ycc420_rows.h"

#include "tests/levels.h"
#include "tests/output/pixel_parts.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Ycc420RowsSuite);

TEST_P(Ycc420RowsSuite, AgreeHoweverTheyAreSplit) {
  for (const bool inPairs : {true, false})
    for (const size_t width : kRowWidths)
      expectSplitsToAgree(width, 3, 2, [&](Image& image, bool bypasses, Arena& arena) {
        const Ycc420Planes planes{image.plane(0, bypasses),
                                  {image.plane(1, bypasses), image.plane(2, bypasses)},
                                  inPairs};
        return Ycc420Rows(planes, width, kHeight, arena);
      });
}

}  // namespace
}  // namespace vistrel::core::test
