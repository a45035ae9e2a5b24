// The phases' names and their algebra, by the letters of the filters.
#include <gtest/gtest.h>

#include <string>

#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

char filterAt(uint32_t phase, uint32_t x, uint32_t y) {
  return vistrel_phase_name(phase)[2 * (y % 2) + x % 2];
}

// The name of the block whose filter at (x, y) the function tells.
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

TEST(ParsePhase, RefusesAllElse) {
  uint32_t phase = 99;
  vistrel_error error{};
  for (const char* name : {"", "rg", "rggbx", "rgbg", "bg", "mon", "rgg\xE2", "@GGB"})
    EXPECT_EQ(vistrel_parse_phase(name, &phase, &error), VISTREL_BAD_PHASE) << name;
  EXPECT_EQ(phase, 99u);
  vistrel_parse_phase("rgbg", &phase, &error);
  EXPECT_STREQ(error.text,
               "phase rgbg: allowed are grbg (0), bggr (1), rggb (2), gbrg (3), mono (4)");
  EXPECT_EQ(vistrel_parse_phase(nullptr, &phase, &error), VISTREL_NULL_POINTER);
  EXPECT_STREQ(error.text, "name is null");
  EXPECT_EQ(vistrel_parse_phase("rggb", nullptr, &error), VISTREL_NULL_POINTER);
  EXPECT_STREQ(error.text, "phase is null");
}

}  // namespace
}  // namespace vistrel
