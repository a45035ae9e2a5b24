// Transfer curves through the C interface: points, names, and every wrong argument.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

// Five points and one beyond them, which stays.
struct MakeTransfer : ::testing::Test {
  std::vector<uint16_t> points = std::vector<uint16_t>(6, 77);
  vistrel_error error{};

  int32_t make(uint32_t kind, uint32_t parameter) {
    return vistrel_make_transfer(kind, parameter, points.data(), 5, &error);
  }
  void expectRejected(uint32_t kind, uint32_t parameter, const Rejection& expected) {
    EXPECT_EQ(make(kind, parameter), expected.status);
    expectError(error, expected);
    EXPECT_THAT(points, Each(77));
  }
};

// At x = 1/4, 1/2, 3/4. sRGB has 0.537099, 0.735357, 0.880825; the roots are 0.5, 0.707107,
// 0.866025. asinh(x) / asinh(1) is 0.280774, 0.545979, 0.786440.
TEST_F(MakeTransfer, FillsThePointsOfEachKind) {
  EXPECT_EQ(make(VISTREL_TRANSFER_LINEAR, 0), VISTREL_OK);
  EXPECT_THAT(points, ElementsAre(0, 16384, 32768, 49151, 65535, 77));
  EXPECT_EQ(make(VISTREL_TRANSFER_SRGB, 0), VISTREL_OK);
  EXPECT_THAT(points, ElementsAre(0, 35199, 48192, 57725, 65535, 77));
  EXPECT_EQ(make(VISTREL_TRANSFER_GAMMA, 2000), VISTREL_OK);
  EXPECT_THAT(points, ElementsAre(0, 32768, 46340, 56755, 65535, 77));
  EXPECT_EQ(make(VISTREL_TRANSFER_ASINH, 1000), VISTREL_OK);
  EXPECT_THAT(points, ElementsAre(0, 18400, 35781, 51539, 65535, 77));
  expectError(error, kAccepted);
}

TEST_F(MakeTransfer, TakesEveryParameterOfItsKind) {
  for (const uint32_t gamma : {100, 10000}) EXPECT_EQ(make(VISTREL_TRANSFER_GAMMA, gamma), 0);
  for (const uint32_t n : {1, 1000000000}) EXPECT_EQ(make(VISTREL_TRANSFER_ASINH, n), 0);
}

TEST_F(MakeTransfer, RejectsOtherKinds) {
  for (const uint32_t kind : {4u, 0xFFFFFFFFu})
    expectRejected(kind, 0,
                   {VISTREL_BAD_TRANSFER, "kind", std::to_string(kind),
                    "linear (0), srgb (1), gamma (2), asinh (3) are allowed"});
}

TEST_F(MakeTransfer, RejectsOtherParameters) {
  const auto rejection = [](uint32_t parameter, const char* reason) {
    return Rejection{VISTREL_BAD_TRANSFER, "parameter", std::to_string(parameter), reason};
  };
  expectRejected(VISTREL_TRANSFER_LINEAR, 1,
                 rejection(1, "transfer curve linear has none; only 0 is allowed"));
  expectRejected(VISTREL_TRANSFER_SRGB, 2200,
                 rejection(2200, "transfer curve srgb has none; only 0 is allowed"));
  for (const uint32_t gamma : {0u, 99u, 10001u, 0xFFFFFFFFu})
    expectRejected(VISTREL_TRANSFER_GAMMA, gamma,
                   rejection(gamma, "transfer curve gamma allows 100 to 10000 thousandths"));
  for (const uint32_t n : {0u, 1000000001u})
    expectRejected(VISTREL_TRANSFER_ASINH, n,
                   rejection(n, "transfer curve asinh allows 1 to 1000000000 thousandths"));
}

TEST_F(MakeTransfer, RejectsOtherCountsAndNoMemory) {
  for (const size_t count : {size_t{0}, size_t{1}, size_t{65537}, SIZE_MAX}) {
    EXPECT_EQ(vistrel_make_transfer(VISTREL_TRANSFER_SRGB, 0, points.data(), count, &error),
              VISTREL_BAD_COUNT);
    expectError(error,
                {VISTREL_BAD_COUNT, "count", std::to_string(count), "2 to 65536 are allowed"});
  }
  EXPECT_THAT(points, Each(77));
  EXPECT_EQ(vistrel_make_transfer(VISTREL_TRANSFER_SRGB, 0, nullptr, 5, &error),
            VISTREL_NULL_POINTER);
  expectError(error, nullPointer("points"));
}

TEST(TransferName, IsParsedInAnyCase) {
  uint32_t kind = 99;
  EXPECT_EQ(vistrel_parse_transfer("sRGB", &kind, nullptr), VISTREL_OK);
  EXPECT_EQ(kind, uint32_t{VISTREL_TRANSFER_SRGB});
  for (uint32_t known = 0; known < 4; ++known) {
    EXPECT_EQ(vistrel_parse_transfer(vistrel_transfer_name(known), &kind, nullptr), VISTREL_OK);
    EXPECT_EQ(kind, known);
  }
  EXPECT_STREQ(vistrel_transfer_name(VISTREL_TRANSFER_ASINH), "asinh");
  EXPECT_EQ(vistrel_transfer_name(4), nullptr);
}

TEST(TransferName, ThatIsUnknownIsRejected) {
  uint32_t kind = 99;
  vistrel_error error{};
  EXPECT_EQ(vistrel_parse_transfer("log", &kind, &error), VISTREL_BAD_TRANSFER);
  expectError(error, {VISTREL_BAD_TRANSFER, "name", "log",
                      "linear (0), srgb (1), gamma (2), asinh (3) are allowed"});
  EXPECT_EQ(vistrel_parse_transfer(nullptr, &kind, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("name"));
  EXPECT_EQ(kind, 99u);
  EXPECT_EQ(vistrel_parse_transfer("srgb", nullptr, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("kind"));
}

}  // namespace
}  // namespace vistrel
