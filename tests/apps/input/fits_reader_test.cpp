// FITS: its samples, and what it says about itself.
#include "tests/apps/input/fits_file.h"
#include "tests/apps/input/input_test.h"

namespace vistrel {
namespace {

struct FitsReader : InputTest {};

std::string bigEndian(const std::vector<int>& values) {
  std::string bytes;
  for (const int v : values) bytes += {static_cast<char>(v >> 8), static_cast<char>(v)};
  return bytes;
}

TEST_F(FitsReader, FitsOfUnsignedSamples) {
  auto header = cards(16, {"2", "2"});
  header.push_back(card("BZERO", "32768"));
  scratch.write("in.fits", fits(header, bigEndian({-32768, -32767, 0, 32767})));
  expectSamples("in.fits", 2, 2, 16, [](uint32_t x, uint32_t y) {
    const uint32_t expected[2][2] = {{0, 1}, {32768, 65535}};
    return expected[y][x];
  });
  EXPECT_EQ(info("in.fits")["format"], "FITS");
  EXPECT_TRUE(info("in.fits")["phase"].is_null());
  EXPECT_EQ(info("in.fits")["bits_known"], false);
}

TEST_F(FitsReader, FitsOfBytesAndOfScaledSamples) {
  scratch.write("in.fits", fits(cards(8, {"3", "1"}), "abc"));
  expectSamples("in.fits", 3, 1, 8, [](uint32_t x, uint32_t) { return 'a' + x; });
  auto header = cards(16, {"3", "1"});
  header.push_back(card("BSCALE", "4"));
  header.push_back(card("BZERO", "100"));
  scratch.write("in.fits", fits(header, bigEndian({-25, 0, 1000})));
  expectSamples("in.fits", 3, 1, 16, [](uint32_t x, uint32_t) {
    const uint32_t expected[] = {0, 100, 4100};
    return expected[x];
  });
}

TEST_F(FitsReader, FitsPhaseAndOrderOfRows) {
  const auto phaseOf = [this](const std::vector<std::string>& more, const std::string& height) {
    auto header = cards(8, {"2", height});
    header.insert(header.end(), more.begin(), more.end());
    scratch.write("in.fits", fits(header, "abcdef"));
    return info("in.fits")["phase"];
  };
  const std::string rggb = card("BAYERPAT", "'RGGB    '");
  EXPECT_EQ(phaseOf({rggb}, "2"), "rggb");
  EXPECT_EQ(phaseOf({rggb, card("XBAYROFF", "1")}, "2"), "grbg");
  EXPECT_EQ(phaseOf({rggb, card("YBAYROFF", "1")}, "2"), "gbrg");
  EXPECT_EQ(phaseOf({rggb, card("XBAYROFF", "1"), card("YBAYROFF", "3")}, "2"), "bggr");
  EXPECT_EQ(phaseOf({rggb, card("ROWORDER", "'TOP-DOWN'")}, "2"), "rggb");
  // The last row comes first: with an even number of rows, it is a GB row.
  EXPECT_EQ(phaseOf({rggb, card("ROWORDER", "'BOTTOM-UP'")}, "2"), "gbrg");
  EXPECT_EQ(phaseOf({rggb, card("ROWORDER", "'BOTTOM-UP'")}, "3"), "rggb");
  expectSamples("in.fits", 2, 3, 8, [](uint32_t x, uint32_t y) { return "efcdab"[2 * y + x]; });
}

TEST_F(FitsReader, FitsCubeAndExtension) {
  scratch.write("in.fits", fits(cards(8, {"2", "1", "3"}), "abcdef"));
  EXPECT_EQ(info("in.fits")["frames"], 3);
  EXPECT_EQ(info("in.fits --frame 2")["min"], 'e');
  auto extension = cards(8, {"2", "1"});
  extension[0] = card("XTENSION", "'IMAGE   '");
  extension.push_back(card("PCOUNT", "0"));
  extension.push_back(card("GCOUNT", "1"));
  scratch.write("in.fits", fits(cards(8, {}), "") + fits(extension, "yz"));
  EXPECT_EQ(info("in.fits")["min"], 'y');
}

}  // namespace
}  // namespace vistrel
