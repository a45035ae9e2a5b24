// The tables: phases and their algebra, by the letters of the filters; formats; algorithms.
#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <sstream>
#include <string>
#include <type_traits>
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
  EXPECT_EQ(vistrel_parse_phase("bgr", &phase, nullptr), VISTREL_OK);
  EXPECT_EQ(phase, VISTREL_BGR);
}

TEST(ParsePhase, RejectsAllElse) {
  uint32_t phase = 99;
  vistrel_error error{};
  for (const char* name : {"", "rg", "rggbx", "rgbg", "bg", "mon", "rgg\xE2", "@GGB"})
    EXPECT_EQ(vistrel_parse_phase(name, &phase, &error), VISTREL_BAD_PHASE) << name;
  EXPECT_EQ(phase, 99u);
  vistrel_parse_phase("rgbg", &phase, &error);
  expectError(error, {VISTREL_BAD_PHASE, "name", "rgbg",
                      "grbg (0), bggr (1), rggb (2), gbrg (3), mono (4), bgr (256) are allowed"});
  EXPECT_EQ(vistrel_parse_phase(nullptr, &phase, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("name"));
  EXPECT_EQ(vistrel_parse_phase("rggb", nullptr, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("phase"));
}

// Every name in lower and in upper case, and back to its code.
template <class Parse>
void expectParsed(Parse parse, std::string name, uint32_t code) {
  for (const auto change : {::tolower, ::toupper}) {
    std::transform(name.begin(), name.end(), name.begin(), change);
    uint32_t parsed = 9999;
    EXPECT_EQ(parse(name.c_str(), &parsed, nullptr), VISTREL_OK) << name;
    EXPECT_EQ(parsed, code) << name;
  }
}

TEST(Names, AreParsedInAnyCase) {
  for (size_t i = 0; const vistrel_format* f = vistrel_format_at(i); ++i)
    expectParsed(vistrel_parse_format, f->name, f->code);
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    expectParsed(vistrel_parse_algorithm, a->name, a->code);
  for (uint32_t p = 0; const char* name = vistrel_packing_name(p); ++p)
    expectParsed(vistrel_parse_packing, name, p);
  EXPECT_STREQ(vistrel_packing_name(VISTREL_PACKING_MIPI), "MIPI");
  EXPECT_EQ(vistrel_packing_name(VISTREL_PACKING_MIPI + 1), nullptr);
}

template <class Parse>
void expectUnknown(Parse parse, const std::string& parameter, const Rejection& expected) {
  uint32_t code = 99;
  vistrel_error error{};
  EXPECT_EQ(parse(expected.value.c_str(), &code, &error), expected.status);
  expectError(error, expected);
  EXPECT_EQ(parse(nullptr, &code, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("name"));
  EXPECT_EQ(code, 99u);
  EXPECT_EQ(parse("x", nullptr, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer(parameter));
}

TEST(Names, ThatAreUnknownAreRejected) {
  expectUnknown(
      vistrel_parse_format, "format",
      {VISTREL_BAD_FORMAT, "name", "BGR2",
       "MONO8 (0), MONO16 (1), BGR24 (2), ARGB32 (3), ARGB32_4 (4), BGR48 (7), GRAY8 "
       "(5), GRAY16 (6), RGB24 (256), BGRA32 (257), RGBA32 (258), RGB48 (259), RGB24_PLANAR "
       "(260), RGB48_PLANAR (261), NV12 (262), I420 (263), I444 (264) are allowed"});
  expectUnknown(vistrel_parse_algorithm, "algorithm",
                {VISTREL_BAD_ALGORITHM, "name", "nearest",
                 "bilinear (0), edge (1), near (2), laroche (3), hamilton (4), vng (5), cok (6), "
                 "kimmel (7), grouping (8), ahd (256), directional (257) are allowed"});
  expectUnknown(vistrel_parse_packing, "packing",
                {VISTREL_BAD_PACKING, "name", "",
                 "BYTES (0), LITTLE (1), BIG (2), PFNC (3), GIGE (4), MIPI (5) are allowed"});
  vistrel_error error{};
  uint32_t format = 0;
  vistrel_parse_format("B\n\x1B[7m", &format, &error);
  EXPECT_STREQ(error.value, "B??[7m");
}

TEST(StatusName, IsThatOfTheHeader) {
  std::ifstream header(VISTREL_STATUS);
  std::string line;
  int32_t statuses = 0;
  while (std::getline(header, line) && line.rfind("};", 0)) {
    std::istringstream words(line);
    std::string name, equals;
    int32_t code = 0;
    if (!(words >> name >> equals >> code) || equals != "=") continue;
    ASSERT_NE(vistrel_status_name(code), nullptr) << name;
    EXPECT_EQ(vistrel_status_name(code), name);
    ++statuses;
  }
  EXPECT_GT(statuses, 30);
  EXPECT_EQ(vistrel_status_name(statuses), nullptr);
  EXPECT_EQ(vistrel_status_name(-1), nullptr);
  EXPECT_EQ(vistrel_status_name(INT32_MIN), nullptr);
}

// A field of a later version would be read from bytes that nobody sets.
template <class T>
constexpr bool kHasNoHole = std::has_unique_object_representations_v<T>;
static_assert(kHasNoHole<vistrel_error> && kHasNoHole<vistrel_frame> && kHasNoHole<vistrel_region>);
static_assert(kHasNoHole<vistrel_conversion> && kHasNoHole<vistrel_layout>);
static_assert(kHasNoHole<vistrel_image> && kHasNoHole<vistrel_packed>);
static_assert(kHasNoHole<vistrel_packed_layout> && kHasNoHole<vistrel_format>);
static_assert(kHasNoHole<vistrel_algorithm>);
static_assert(kHasNoHole<vistrel_filter_settings> && kHasNoHole<vistrel_picture>);

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
                                "NV12 262 3x1", "I420 263 3x1", "I444 264 3x1"));
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
  EXPECT_STREQ(vistrel_phase_name(VISTREL_BGR), "bgr");
  for (const uint32_t phase : {5u, 255u, 257u}) EXPECT_EQ(vistrel_phase_name(phase), nullptr);
}

}  // namespace
}  // namespace vistrel
