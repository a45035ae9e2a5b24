// The choice between the two images of a row, with kernels that the test sets up.
#include "cfa/ahd/choice.h"

#include <string>

#include "tests/arena.h"
#include "tests/frames.h"

namespace vistrel::core::test {
namespace {

using ::testing::ElementsAre;

constexpr int kFirst = -5;  // the strip's first column
constexpr size_t kColumns = 9;

// What the kernels store and what they were called with.
template <class T>
struct Calls {
  inline static T score;                   // of the row that is scored
  inline static std::vector<int8_t> sums;  // by column
  inline static LumaChromaWindow<T> alongRow, alongColumn;
  inline static std::vector<T> summed;  // from each of six half rows

  template <int parity>
  static void scoreHalf(const LumaChromaWindow<T>& h, const LumaChromaWindow<T>& v, size_t n,
                        T* scores) {
    EXPECT_EQ(n, (kColumns + 1) / 2);
    alongRow = h, alongColumn = v;
    std::fill_n(scores, n, static_cast<T>(score + parity));
  }
  static void sum(const T* const (&scores)[3][2], size_t n, int8_t* even, int8_t* odd, T*, T*) {
    EXPECT_EQ(n, (kColumns + 1) / 2);
    summed.clear();
    for (const auto& row : scores)
      for (const T* half : row) summed.push_back(half[n - 1]);
    for (size_t x = 0; x < sums.size(); ++x) (x % 2 ? odd : even)[x / 2] = sums[x];
  }
};

template <class T>
struct Fixture {
  AhdKernels<T> kernels{};
  Memory memory;
  std::vector<T> samples = std::vector<T>(20 * 20);
  PlainRows<T> rows{samples.data(), 20, 20};
  AhdReconstruction<T> images;
  AhdChoice<T> choice;

  Fixture()
      : images(CfaRows<T>{rows, {20, 20}, core::Mosaic::ofGrid(0)}, kFirst, kColumns, 0, kernels,
               memory),
        choice(images, kFirst, kColumns, kernels, memory) {
    kernels.scores[0] = Calls<T>::template scoreHalf<0>;
    kernels.scores[1] = Calls<T>::template scoreHalf<1>;
    kernels.sums = Calls<T>::sum;
  }
  void score(int y, T score) {
    Calls<T>::score = score;
    choice.score(y);
  }
  // A letter a column: H along the row, V along the column.
  std::string chosen() const {
    std::string letters;
    for (size_t x = 0; x < kColumns; ++x) {
      const T mask = choice.half(x % 2)[x / 2];
      letters += mask == 0 ? 'H' : mask == static_cast<T>(~T{0}) ? 'V' : '?';
    }
    return letters;
  }
};

template <class T>
class Choice : public ::testing::Test {};
using Depths = ::testing::Types<uint8_t, uint16_t>;
TYPED_TEST_SUITE(Choice, Depths);

TYPED_TEST(Choice, ScoresBothImagesOfARow) {
  using Called = Calls<TypeParam>;
  Fixture<TypeParam> f;
  f.score(7, 1);
  for (int i = 0; i < 3; ++i)
    for (int p = 0; p < 2; ++p) {
      EXPECT_EQ(Called::alongRow.row[i][p].y, f.images.lumaChroma(kAlongRow, 7).row[i][p].y);
      EXPECT_EQ(Called::alongColumn.row[i][p].y, f.images.lumaChroma(kAlongColumn, 7).row[i][p].y);
      EXPECT_NE(Called::alongRow.row[i][p].y, Called::alongColumn.row[i][p].y);
    }
}

TYPED_TEST(Choice, SumsTheScoresOfThreeRows) {
  Fixture<TypeParam> f;
  for (int y = -4; y < 12; ++y) {  // rows of a ring, from above the frame on
    f.score(y, static_cast<TypeParam>(100 + 10 * y));
    if (y < -2) continue;
    f.choice.sum(y - 1);
    const int last = 100 + 10 * y;
    EXPECT_THAT(Calls<TypeParam>::summed,
                ElementsAre(last - 20, last - 19, last - 10, last - 9, last, last + 1));
  }
}

TYPED_TEST(Choice, FollowsTheLastSumThatIsNotZero) {
  Fixture<TypeParam> f;
  Calls<TypeParam>::sums = {0, -1, 0, 0, 2, 0, -3, 0, 1};
  f.choice.sum(0);
  f.choice.run();
  EXPECT_EQ(f.chosen(), "HVVVHHVVH");
}

TYPED_TEST(Choice, TakesTheRowForATieWhereItBeginsAnew) {
  for (int x = 0; x < int{kColumns}; ++x) {
    Fixture<TypeParam> f;
    Calls<TypeParam>::sums = {-1, 0, 0, 0, 0, -1, 0, 0, 0};
    f.choice.sum(0);
    f.choice.restartAt(kFirst + x);
    f.choice.run();
    std::string expected(kColumns, 'V');
    if (x != 0 && x != 5)
      for (size_t i = size_t(x); i < (x < 5 ? 5 : kColumns); ++i) expected[i] = 'H';
    EXPECT_EQ(f.chosen(), expected) << x;
  }
}

}  // namespace
}  // namespace vistrel::core::test
