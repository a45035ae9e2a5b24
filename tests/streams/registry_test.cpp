// The table of streams, and the entries that fill and empty it.
#include "streams/registry.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "tests/streams/allocations.h"
#include "vistrel/processor.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsNull;

struct Tables {
  std::vector<uint16_t*> buffers{g_pwBGRBuff, g_pwBGRBuff + kStreams + 1};
  std::vector<uint32_t> ids{g_anIDs, g_anIDs + kStreams};
  std::vector<uint16_t*> userTables{g_pwUserLUT, g_pwUserLUT + kStreams + 1};
  bool operator==(const Tables&) const = default;
};
const Tables kAtStart;  // before any call

class Registry : public ::testing::Test {
 protected:
  Registry() { ImgLoadDriver(); }
  ~Registry() override { ImgUnloadDriver(); }
  // Ids 1000, 1001 ... in all slots.
  void fillAllSlots() {
    for (unsigned i = 0; i < kStreams; ++i) ASSERT_EQ(ImgInitialize(1000 + i, 4, 4), 1u);
  }
};

TEST(AtStart, NoSlotIsFreeAndIdZeroHoldsSlotZero) {
  EXPECT_THAT(kAtStart.ids, Each(0u));
  EXPECT_THAT(kAtStart.buffers, Each(IsNull()));
  EXPECT_THAT(kAtStart.userTables, Each(IsNull()));
  std::fill(std::begin(g_anIDs), std::end(g_anIDs), 0);  // as before ImgLoadDriver
  EXPECT_EQ(NewIndex(0), 0);
  EXPECT_EQ(NewIndex(1), -1);
  EXPECT_EQ(ImgInitialize(1, 4, 4), 0u);
}

TEST_F(Registry, LoadFreesEverySlotOfItsIds) {
  EXPECT_EQ(ImgInitialize(1, 4, 4), 1u);
  ImgUnloadDriver();
  ImgLoadDriver();
  EXPECT_THAT(g_anIDs, Each(0xFFFFFFFF));
}

TEST_F(Registry, LoadReturnsWhatProcessorDetectionReturns) {
  EXPECT_EQ(ImgLoadDriver(), ippStaticInit());
}

TEST_F(Registry, TheFirstSlotThatHoldsTheIdIsFound) {
  g_anIDs[3] = g_anIDs[9] = 77;
  EXPECT_EQ(ID2Index(77), 3u);
  EXPECT_EQ(ID2Index(78), 128u);
}

TEST_F(Registry, ANewIdTakesTheFirstFreeSlotAndAKnownOneKeepsIts) {
  EXPECT_EQ(NewIndex(500), 0);
  EXPECT_EQ(NewIndex(400), 1);
  EXPECT_EQ(NewIndex(500), 0);
  EXPECT_EQ(NewIndex(0), 2);
  EXPECT_EQ(g_anIDs[0], 500u);
  EXPECT_EQ(g_anIDs[1], 400u);
  EXPECT_EQ(g_anIDs[2], 0u);
  EXPECT_EQ(g_anIDs[3], 0xFFFFFFFFu);
}

TEST_F(Registry, ASearchRegistersNothing) {
  const Tables before;
  EXPECT_EQ(ID2Index(5), 128u);
  EXPECT_EQ(Tables(), before);
}

TEST_F(Registry, InitializingTwiceKeepsTheSlotAndTheSecondSizeReplacesTheFirst) {
  Allocations seen;
  EXPECT_EQ(ImgInitialize(5, 100, 50), 1u);
  uint16_t* const first = g_pwBGRBuff[0];
  EXPECT_EQ(ImgInitialize(5, 200, 60), 1u);
  EXPECT_EQ(ID2Index(5), 0u);
  EXPECT_EQ(g_anIDs[1], 0xFFFFFFFFu);
  EXPECT_THAT(seen.sizes,
              ElementsAre((3 * 100 + 18) * (50 + 6) * 2, (3 * 200 + 18) * (60 + 6) * 2));
  EXPECT_THAT(seen.freed, ElementsAre(first));
}

TEST_F(Registry, TheBufferIsNotReusedForTheSameSizeEither) {
  Allocations seen;
  EXPECT_EQ(ImgInitialize(5, 100, 50), 1u);
  uint16_t* const first = g_pwBGRBuff[0];
  EXPECT_EQ(ImgInitialize(5, 100, 50), 1u);
  EXPECT_EQ(seen.sizes.size(), 2u);
  EXPECT_THAT(seen.freed, ElementsAre(first));
}

TEST_F(Registry, TheBufferSizeIsFormedIn32BitsAndThenDoubled) {
  Allocations seen;
  EXPECT_EQ(ImgInitialize(5, 21840, 65529), 1u);  // 65538 * 65535 is 2^32 + 65534
  EXPECT_EQ(ImgInitialize(5, 0, 0), 1u);
  EXPECT_THAT(seen.sizes, ElementsAre(2 * 65534, 18 * 6 * 2));
}

TEST_F(Registry, TheDoublingDoesNotWrap) {
  Allocations seen;
  seen.fail = true;
  ImgInitialize(5, 21839, 65529);  // 65535 * 65535 samples
  EXPECT_THAT(seen.sizes, ElementsAre(size_t{65535} * 65535 * 2));
}

TEST_F(Registry, AFailedAllocationLeavesTheIdWithoutABuffer) {
  EXPECT_EQ(ImgInitialize(5, 10, 10), 1u);
  Allocations seen;
  seen.fail = true;
  uint16_t* const first = g_pwBGRBuff[0];
  EXPECT_EQ(ImgInitialize(5, 10, 10), 0u);
  EXPECT_EQ(ImgInitialize(6, 10, 10), 0u);
  EXPECT_THAT(seen.freed, ElementsAre(first));
  EXPECT_EQ(g_anIDs[0], 5u);
  EXPECT_EQ(g_anIDs[1], 6u);
  EXPECT_EQ(g_pwBGRBuff[0], nullptr);
  EXPECT_EQ(g_pwBGRBuff[1], nullptr);
  seen.fail = false;
  EXPECT_EQ(ImgInitialize(6, 10, 10), 1u);
  EXPECT_NE(g_pwBGRBuff[1], nullptr);
}

TEST_F(Registry, The129thIdIsRejectedAndChangesNothing) {
  fillAllSlots();
  const Tables before;
  Allocations seen;
  EXPECT_EQ(NewIndex(7), -1);
  EXPECT_EQ(ImgInitialize(7, 4, 4), 0u);
  EXPECT_EQ(Tables(), before);
  EXPECT_THAT(seen.sizes, IsEmpty());
  EXPECT_THAT(seen.freed, IsEmpty());
}

TEST_F(Registry, TheFirst128IdsKeepWorkingWhenTheTableIsFull) {
  fillAllSlots();
  EXPECT_EQ(ImgInitialize(7, 4, 4), 0u);
  const std::vector<uint8_t> frame(16, 100);
  for (unsigned i = 0; i < kStreams; ++i) {
    std::vector<uint8_t> image(48);
    EXPECT_EQ(ImgConvert8(1000 + i, IMG_FMT_BGR24, DM_BILINEAR, i % 4, 0, 4, 4, 0, 0, 4, 4,
                          frame.data(), image.data(), 8, 0),
              1u);
    EXPECT_THAT(image, Each(100));
    EXPECT_EQ(ID2Index(1000 + i), i);
  }
  EXPECT_EQ(ImgInitialize(1127, 8, 8), 1u);  // known ids can still grow
}

TEST_F(Registry, TheIdOfFreeSlotsGetsABufferInASlotThatStaysFree) {
  EXPECT_EQ(ImgInitialize(5, 4, 4), 1u);
  EXPECT_EQ(ImgInitialize(0xFFFFFFFF, 4, 4), 1u);
  EXPECT_NE(g_pwBGRBuff[1], nullptr);
  EXPECT_EQ(g_anIDs[1], 0xFFFFFFFFu);
  uint16_t* const first = g_pwBGRBuff[1];
  Allocations seen;
  EXPECT_EQ(ImgInitialize(6, 4, 4), 1u);
  EXPECT_EQ(ID2Index(6), 1u);
  EXPECT_THAT(seen.freed, ElementsAre(first));
}

TEST_F(Registry, TheIdOfFreeSlotsIsRejectedWhenNoneIsFree) {
  fillAllSlots();
  EXPECT_EQ(ImgInitialize(0xFFFFFFFF, 4, 4), 0u);
}

TEST_F(Registry, UnloadFreesBuffersAndTablesAndKeepsIds) {
  const uint16_t entry = 1;
  for (uint32_t id : {5u, 6u, 7u}) EXPECT_EQ(ImgInitialize(id, 4, 4), 1u);
  EXPECT_EQ(ImgLoadLookupTable(6, &entry, 1), 1u);
  const std::vector<void*> blocks = {g_pwBGRBuff[0], g_pwBGRBuff[1], g_pwUserLUT[1],
                                     g_pwBGRBuff[2]};
  Allocations seen;
  ImgUnloadDriver();
  EXPECT_EQ(seen.freed, blocks);
  for (unsigned slot = 0; slot < kStreams; ++slot) {
    EXPECT_EQ(g_pwBGRBuff[slot], nullptr);
    EXPECT_EQ(g_pwUserLUT[slot], nullptr);
    EXPECT_EQ(g_anIDs[slot], slot < 3 ? 5 + slot : 0xFFFFFFFF);
  }
}

TEST_F(Registry, AnOldIdGetsItsOldSlotAndANewBlockAfterUnload) {
  for (uint32_t id : {5u, 6u, 7u}) EXPECT_EQ(ImgInitialize(id, 4, 4), 1u);
  ImgUnloadDriver();
  Allocations seen;
  EXPECT_EQ(ImgInitialize(7, 4, 4), 1u);
  EXPECT_EQ(ID2Index(7), 2u);
  EXPECT_NE(g_pwBGRBuff[2], nullptr);
  EXPECT_EQ(seen.sizes.size(), 1u);
  EXPECT_EQ(ImgInitialize(8, 4, 4), 1u);
  EXPECT_EQ(ID2Index(8), 3u);  // the slots of 5 and 6 stay theirs
}

TEST_F(Registry, ASecondLoadForgetsEveryBlockWithoutFreeingIt) {
  const uint16_t entry = 1;
  EXPECT_EQ(ImgInitialize(5, 4, 4), 1u);
  EXPECT_EQ(ImgLoadLookupTable(5, &entry, 1), 1u);
  uint16_t *const buffer = g_pwBGRBuff[0], *const table = g_pwUserLUT[0];
  {
    Allocations seen;
    ImgLoadDriver();
    EXPECT_THAT(seen.freed, IsEmpty());
  }
  EXPECT_EQ(g_pwBGRBuff[0], nullptr);
  EXPECT_EQ(g_pwUserLUT[0], nullptr);
  EXPECT_EQ(ID2Index(5), 128u);
  std::free(buffer);
  std::free(table);
}

}  // namespace
}  // namespace vistrel::core::test
