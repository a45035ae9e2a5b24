// The tables: phases and their algebra, by the letters of the filters; formats; algorithms.
#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using ::testing::ElementsAre;

char filterAt(uint32_t phase, uint32_t x, uint32_t y) {
  return vistrel_phase_name(phase)[2 * (y % 2) + x % 2];
}

// The name of the block whose filters the function returns.
template <class Filter>
std::string blockOf(Filter filter) {
  return {filter(0, 0), filter(1, 0), filter(0, 1), filter(1, 1)};
}

TEST(PhaseAt, IsTheBlockThereOfEveryCrop) {
  for (uint32_t phase = 0; phase < 4; ++phase)
    for (uint32_t y = 0; y < 6; ++y)
      for (uint32_t x = 0; x < 6; ++x) {
        const auto crop = [=](uint32_t i, uint32_t j) { return filterAt(phase, x + i, y + j); };
        EXPECT_EQ(vistrel_phase_name(vistrel_phase_at(phase, x, y)), blockOf(crop));
      }
}

TEST(PhaseAt, IsTheBlockOfEveryMirroredFrame) {
  for (uint32_t phase = 0; phase < 4; ++phase)
    for (uint32_t size = 2; size < 8; ++size) {
      const auto leftRight = [=](uint32_t i, uint32_t j) {
        return filterAt(phase, size - 1 - i, j);
      };
      const auto upDown = [=](uint32_t i, uint32_t j) { return filterAt(phase, i, size - 1 - j); };
      EXPECT_EQ(vistrel_phase_name(vistrel_phase_at(phase, size - 1, 0)), blockOf(leftRight));
      EXPECT_EQ(vistrel_phase_name(vistrel_phase_at(phase, 0, size - 1)), blockOf(upDown));
    }
}

TEST(PhaseAt, AddsUpAndComesBack) {
  for (uint32_t phase = 0; phase < 4; ++phase)
    for (uint32_t a = 0; a < 16; ++a)
      for (uint32_t b = 0; b < 16; ++b) {
        const uint32_t once = vistrel_phase_at(phase, a % 4, a / 4);
        EXPECT_EQ(vistrel_phase_at(once, b % 4, b / 4),
                  vistrel_phase_at(phase, a % 4 + b % 4, a / 4 + b / 4));
        EXPECT_EQ(vistrel_phase_at(once, a % 4, a / 4), phase);
      }
  EXPECT_EQ(vistrel_phase_at(VISTREL_RGGB, 0xFFFFFFFF, 0), VISTREL_GRBG);
}

TEST(PhaseAt, LeavesOtherValuesAlone) {
  EXPECT_EQ(vistrel_phase_at(VISTREL_MONO, 1, 1), VISTREL_MONO);
  EXPECT_EQ(vistrel_phase_at(77, 1, 1), 77u);
}

TEST(ColourAt, IsTheLetterOfTheName) {
  for (uint32_t phase = 0; phase < 4; ++phase)
    for (uint32_t y = 0; y < 5; ++y)
      for (uint32_t x = 0; x < 5; ++x)
        EXPECT_EQ("rgb"[vistrel_colour_at(phase, x, y)], filterAt(phase, x, y));
  EXPECT_EQ(vistrel_colour_at(VISTREL_RGGB, 0xFFFFFFFF, 0xFFFFFFFF), VISTREL_BLUE);
}

TEST(ColourAt, IsNoneWithoutFilters) {
  for (const uint32_t phase : {uint32_t{VISTREL_MONO}, 5u, 77u, 0xFFFFFFFFu})
    EXPECT_EQ(vistrel_colour_at(phase, 1, 1), VISTREL_NO_COLOUR) << phase;
}

TEST(ParsePhase, TakesEveryName) {
  uint32_t phase = 99;
  for (uint32_t known = 0; const char* name = vistrel_phase_name(known); ++known) {
    EXPECT_EQ(vistrel_parse_phase(name, &phase, nullptr), VISTREL_OK);
    EXPECT_EQ(phase, known);
  }
  EXPECT_EQ(vistrel_parse_phase("RGGB", &phase, nullptr), VISTREL_OK);
  EXPECT_EQ(phase, VISTREL_RGGB);
  EXPECT_EQ(vistrel_parse_phase("Mono", &phase, nullptr), VISTREL_OK);
  EXPECT_EQ(phase, VISTREL_MONO);
}

TEST(ParsePhase, RejectsAllElse) {
  uint32_t phase = 99;
  vistrel_error error{};
  for (const char* name : {"", "rg", "rggbx", "rgbg", "bg", "mon", "rgg\xE2", "@GGB"})
    EXPECT_EQ(vistrel_parse_phase(name, &phase, &error), VISTREL_BAD_PHASE) << name;
  EXPECT_EQ(phase, 99u);
  vistrel_parse_phase("rgbg", &phase, &error);
  expectError(error, {VISTREL_BAD_PHASE, "name", "rgbg",
                      "grbg (0), bggr (1), rggb (2), gbrg (3), mono (4) are allowed"});
  EXPECT_EQ(vistrel_parse_phase(nullptr, &phase, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("name"));
  EXPECT_EQ(vistrel_parse_phase("rggb", nullptr, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("phase"));
}

TEST(FormatTable, IsStable) {
  std::vector<std::string> rows;
  for (size_t i = 0; const vistrel_format* f = vistrel_format_at(i); ++i) {
    std::ostringstream row;
    row << f->name << ' ' << f->code << ' ' << f->channels << 'x' << f->bytes_per_sample;
    rows.push_back(row.str() + (f->mono ? " mono" : ""));
  }
  EXPECT_THAT(rows, ElementsAre("MONO8 0 1x1 mono", "MONO16 1 1x2 mono", "BGR24 2 3x1",
                                "ARGB32 3 4x1", "ARGB32_4 4 4x1", "BGR48 7 3x2", "GRAY8 5 1x1",
                                "GRAY16 6 1x2", "RGB24 256 3x1", "BGRA32 257 4x1", "RGBA32 258 4x1",
                                "RGB48 259 3x2", "RGB24_PLANAR 260 3x1", "RGB48_PLANAR 261 3x2",
                                "NV12 262 3x1", "I420 263 3x1"));
}

TEST(Tables, AreListed) {
  ASSERT_NE(vistrel_algorithm_at(0), nullptr);
  EXPECT_STREQ(vistrel_algorithm_at(0)->name, "bilinear");
  EXPECT_EQ(vistrel_algorithm_at(1000), nullptr);
  EXPECT_STREQ(vistrel_phase_name(VISTREL_GRBG), "grbg");
  EXPECT_STREQ(vistrel_phase_name(VISTREL_BGGR), "bggr");
  EXPECT_STREQ(vistrel_phase_name(VISTREL_RGGB), "rggb");
  EXPECT_STREQ(vistrel_phase_name(VISTREL_GBRG), "gbrg");
  EXPECT_STREQ(vistrel_phase_name(VISTREL_MONO), "mono");
  EXPECT_EQ(vistrel_phase_name(5), nullptr);
}

}  // namespace
}  // namespace vistrel
