// vistrel selftest, as a process.
#include <gtest/gtest.h>

#include <cstdlib>
#include <nlohmann/json.hpp>

#include "tests/apps/program.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

void preloadWrongPixel() {
  setenv("LD_PRELOAD", VISTREL_WRONG_PIXEL, 1);
  // A sanitizer insists on being the first library; the order does not matter here.
  const char* const options = std::getenv("ASAN_OPTIONS");
  const std::string with = std::string(options ? options : "") + ":verify_asan_link_order=0";
  setenv("ASAN_OPTIONS", with.c_str(), 1);
}

size_t levels() {
  size_t count = 0;
  while (vistrel_level_name(count)) ++count;
  return count;
}

TEST(Selftest, ThisMachineIsRight) {
  const Finished result = Scratch().vistrel("selftest");
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out.find("OK: "), 0u) << result.out;
}

// Counted by hand: 12 rows of algorithms (edge twice) with 5 + 4 + 4 + 5 + 6 x 2 + 5 + 5 = 40
// depths, each in four phases and three binnings; mono in 5 depths and four binnings; 16 tones;
// three finishes in five depths by four algorithms and for mono.
TEST(Selftest, Json) {
  const auto json = nlohmann::json::parse(Scratch().vistrel("selftest --json").out);
  EXPECT_EQ(json["ok"], true);
  EXPECT_EQ(json["combinations"], 40 * 7 + 20 + 16 + 75);
  EXPECT_EQ(json["levels"].size(), levels());
  EXPECT_TRUE(json["differences"].empty());
}

TEST(Selftest, AWrongPixelIsDetectedAndNamed) {
  const Finished text = Scratch().vistrel("selftest", preloadWrongPixel);
  EXPECT_EQ(text.status, 1);
  EXPECT_EQ(text.out.find("DIFFERS: vng, 10 bits, gbrg, binning 1, level base: hash "), 0u)
      << text.out << text.err;
  EXPECT_NE(text.out.find("\n1 of "), std::string::npos) << text.out;
  const Finished result = Scratch().vistrel("selftest --json", preloadWrongPixel);
  EXPECT_EQ(result.status, 1);
  const auto json = nlohmann::json::parse(result.out);
  EXPECT_EQ(json["ok"], false);
  ASSERT_EQ(json["differences"].size(), 1u);
  EXPECT_EQ(json["differences"][0]["combination"], "vng, 10 bits, gbrg, binning 1");
  EXPECT_EQ(json["differences"][0]["level"], "base");
}

}  // namespace
}  // namespace vistrel
