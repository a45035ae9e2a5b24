// Which image each pixel of a row comes from: that of the last sum that is not zero.
#include "cfa/ahd/running_choice.h"

#include "tests/frames.h"

namespace vistrel::core::test {
namespace {

// One letter per column: H along the row, V along the column.
template <class T>
std::string choices(const std::vector<int>& sums) {
  const size_t n = (sums.size() + 1) / 2, capacity = n + 16;
  std::vector<int8_t> even(capacity), odd(capacity);
  for (size_t x = 0; x < sums.size(); ++x)
    (x % 2 ? odd : even)[x / 2] = static_cast<int8_t>(sums[x]);
  std::vector<T> evenChoice(capacity), oddChoice(capacity);
  runningChoice(even.data(), odd.data(), n, evenChoice.data(), oddChoice.data());
  std::string text;
  for (size_t x = 0; x < sums.size(); ++x) {
    const T choice = (x % 2 ? oddChoice : evenChoice)[x / 2];
    text += choice == 0 ? 'H' : choice == static_cast<T>(~0) ? 'V' : '?';
  }
  return text;
}

std::string choicesOfBoth(const std::vector<int>& sums) {
  EXPECT_EQ(choices<uint8_t>(sums), choices<uint16_t>(sums));
  return choices<uint8_t>(sums);
}

TEST(RunningChoice, TiesAtTheBeginningTakeTheRow) {
  EXPECT_EQ(choicesOfBoth(std::vector<int>(70)), std::string(70, 'H'));
}

TEST(RunningChoice, ANegativeSumHoldsUntilAPositiveOne) {
  EXPECT_EQ(choicesOfBoth({0, 0, -1, 0, 0, 0, 0, 1, 0, 0, -36, 36, -1}), "HHVVVVVHHHVHV");
  std::vector<int> sums(80);
  sums[3] = -1;
  EXPECT_EQ(choicesOfBoth(sums), "HHH" + std::string(77, 'V'));
  sums[64] = 36;
  EXPECT_EQ(choicesOfBoth(sums), "HHH" + std::string(61, 'V') + std::string(16, 'H'));
}

TEST(RunningChoice, FollowsEveryRowOfSums) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    std::vector<int> sums;
    for (uint8_t v : noise<uint8_t>(1 + seed, 8, seed)) sums.push_back(v < 6 ? 0 : v - 7);
    std::string expected;
    for (int last = 1; int sum : sums) {
      if (sum != 0) last = sum;
      expected += last < 0 ? 'V' : 'H';
    }
    ASSERT_EQ(choicesOfBoth(sums), expected) << seed;
  }
}

}  // namespace
}  // namespace vistrel::core::test
