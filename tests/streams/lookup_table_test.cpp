// User look-up tables: what is copied, what is kept, and the table that all unknown ids share.
#include <gmock/gmock.h>

#include <numeric>

#include "streams/registry.h"
#include "tests/streams/allocations.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

using Samples16 = std::vector<uint16_t>;

const uint16_t* const kSharedAtStart = g_pwUserLUT[kStreams];

class LookupTable : public ::testing::Test {
 protected:
  LookupTable() {
    ImgLoadDriver();
    ImgInitialize(5, 4, 4);
  }
  ~LookupTable() override { ImgUnloadDriver(); }
  static Samples16 stored(unsigned slot = 0) {
    return {g_pwUserLUT[slot], g_pwUserLUT[slot] + 4096};
  }
};

// first, first + 1 ...
Samples16 rising(size_t entries, uint16_t first) {
  Samples16 samples16(entries);
  std::iota(samples16.begin(), samples16.end(), first);
  return samples16;
}

TEST_F(LookupTable, FiveThousandEntriesCopy8192Bytes) {
  const Samples16 table = rising(5000, 1);
  Allocations seen;
  EXPECT_EQ(ImgLoadLookupTable(5, table.data(), 5000), 1u);
  EXPECT_EQ(stored(), Samples16(table.begin(), table.begin() + 4096));
  EXPECT_THAT(seen.sizes, ElementsAre(8192));
}

TEST_F(LookupTable, EntryCountsAreNotFormedInBytes) {
  const Samples16 table = rising(4096, 1);
  for (uint32_t nEntries : {0x80000000u, 0x80000001u, 0xFFFFFFFFu}) {
    EXPECT_EQ(ImgLoadLookupTable(5, table.data(), nEntries), 1u);
    EXPECT_EQ(stored(), table);
  }
}

TEST_F(LookupTable, NoEntriesLeaveAFirstTableZeroed) {
  Allocations seen;  // new blocks hold 0xCD
  EXPECT_EQ(ImgLoadLookupTable(5, Samples16(1, 9).data(), 0), 1u);
  EXPECT_THAT(stored(), Each(0));
}

TEST_F(LookupTable, AShortFirstTableHasAZeroedTail) {
  Allocations seen;
  EXPECT_EQ(ImgLoadLookupTable(5, Samples16(3, 9).data(), 3), 1u);
  Samples16 expected(4096);
  expected[0] = expected[1] = expected[2] = 9;
  EXPECT_EQ(stored(), expected);
}

TEST_F(LookupTable, AShorterTableLeavesTheTailOfALongerOne) {
  Samples16 table = rising(4096, 1);
  EXPECT_EQ(ImgLoadLookupTable(5, table.data(), 4096), 1u);
  uint16_t* const block = g_pwUserLUT[0];
  EXPECT_EQ(ImgLoadLookupTable(5, Samples16(100, 0xABCD).data(), 100), 1u);
  std::fill_n(table.begin(), 100, uint16_t{0xABCD});
  EXPECT_EQ(stored(), table);
  EXPECT_EQ(ImgLoadLookupTable(5, Samples16(1, 9).data(), 0), 1u);
  EXPECT_EQ(stored(), table);
  EXPECT_EQ(g_pwUserLUT[0], block);
}

TEST_F(LookupTable, StoresItsEntriesUnchanged) {
  EXPECT_EQ(ImgLoadLookupTable(5, Samples16(4096, 0xFEDC).data(), 4096), 1u);
  EXPECT_THAT(stored(), Each(0xFEDC));
}

TEST_F(LookupTable, SurvivesARepeatedInitialize) {
  EXPECT_EQ(ImgLoadLookupTable(5, Samples16(4096, 9).data(), 4096), 1u);
  const uint16_t* const block = g_pwUserLUT[0];
  EXPECT_EQ(ImgInitialize(5, 40, 40), 1u);
  EXPECT_EQ(g_pwUserLUT[0], block);
  EXPECT_THAT(stored(), Each(9));
}

TEST_F(LookupTable, IsNullAfterUnloadUntilLoadedAgain) {
  EXPECT_EQ(ImgLoadLookupTable(5, Samples16(4096, 9).data(), 4096), 1u);
  ImgUnloadDriver();
  EXPECT_EQ(ImgInitialize(5, 4, 4), 1u);
  EXPECT_EQ(g_pwUserLUT[0], nullptr);
  EXPECT_EQ(ImgLoadLookupTable(5, Samples16(1, 8).data(), 1), 1u);
  EXPECT_EQ(stored()[0], 8);
  EXPECT_EQ(stored()[1], 0);
}

TEST_F(LookupTable, AFailedAllocationGivesZero) {
  Allocations seen;
  seen.fail = true;
  EXPECT_EQ(ImgLoadLookupTable(5, Samples16(8, 9).data(), 8), 0u);
  EXPECT_EQ(g_pwUserLUT[0], nullptr);
}

TEST_F(LookupTable, TheIdOfFreeSlotsGivesATableToTheFirstFreeOne) {
  EXPECT_EQ(ImgLoadLookupTable(0xFFFFFFFF, Samples16(8, 9).data(), 8), 1u);
  EXPECT_EQ(stored(1)[7], 9);
  EXPECT_EQ(g_anIDs[1], 0xFFFFFFFFu);
}

TEST(AtStart, TheSharedTableIsNull) { EXPECT_EQ(kSharedAtStart, nullptr); }

using SharedTable = LookupTable;

TEST_F(SharedTable, AnUnknownIdSucceedsAndRegistersNothing) {
  EXPECT_EQ(ImgLoadLookupTable(99, Samples16(4, 9).data(), 4), 1u);
  EXPECT_EQ(ID2Index(99), 128u);
  EXPECT_EQ(stored(128)[3], 9);
}

TEST_F(SharedTable, AllUnknownIdsShareOneTable) {
  EXPECT_EQ(ImgLoadLookupTable(99, Samples16(4096, 1).data(), 4096), 1u);
  const uint16_t* const block = g_pwUserLUT[128];
  EXPECT_EQ(ImgLoadLookupTable(98, Samples16(2, 7).data(), 2), 1u);
  EXPECT_EQ(g_pwUserLUT[128], block);
  EXPECT_EQ(stored(128)[1], 7);
  EXPECT_EQ(stored(128)[2], 1);
}

TEST_F(SharedTable, OutlivesLoadAndUnload) {
  EXPECT_EQ(ImgLoadLookupTable(99, Samples16(4096, 0x77).data(), 4096), 1u);
  const uint16_t* const block = g_pwUserLUT[128];
  Allocations seen;
  ImgUnloadDriver();
  ImgLoadDriver();
  EXPECT_EQ(g_pwUserLUT[128], block);
  EXPECT_THAT(seen.freed, ::testing::Not(::testing::Contains(block)));
  EXPECT_THAT(stored(128), Each(0x77));
}

TEST_F(SharedTable, ConversionsUnderAnUnknownIdReadIt) {
  EXPECT_EQ(ImgLoadLookupTable(99, Samples16(4096, 0x42).data(), 4096), 1u);
  const Samples16 frame(60, 512);
  std::vector<uint8_t> mono(60), gray(20);
  EXPECT_EQ(ImgConvert16(98, IMG_FMT_MONO8, 0, 0, 0, 8, 10, 60, 1, 0, 0, 60, 1, frame.data(),
                         mono.data(), 10, 0),
            1u);
  EXPECT_THAT(mono, Each(0x42));
  EXPECT_EQ(ImgConvert16(97, IMG_FMT_GRAY8, 0, 0, 0, 8, 10, 20, 1, 0, 0, 20, 1, frame.data(),
                         gray.data(), 10, 1),
            1u);
  EXPECT_THAT(gray, Each(0x42));
}

}  // namespace
}  // namespace vistrel::core::test
