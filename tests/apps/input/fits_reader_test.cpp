// FITS: its samples, and what it says about itself.
#include <bit>
#include <cmath>

#include "tests/apps/input/fits_file.h"
#include "tests/apps/input/input_test.h"
#include "tests/apps/input/tiled_fits.h"

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

TEST_F(FitsReader, BytesAfterItsEndAreRemarked) {
  const auto expectTrailing = [this](const std::string& file, int bytes) {
    scratch.write("in.fits", file);
    const std::string said = bytes ? "vistrel: in.fits: " + std::to_string(bytes) + " byte" +
                                         (bytes > 1 ? "s" : "") + " after the last frame " +
                                         (bytes > 1 ? "are" : "is") + " ignored\n"
                                   : "";
    EXPECT_EQ(info("in.fits", said)["trailing_bytes"], bytes);
  };
  const std::string frame = fits(cards(8, {"2", "1"}), "ab");
  auto extension = cards(8, {"2", "1"});
  extension[0] = card("XTENSION", "'IMAGE   '");
  extension.push_back(card("PCOUNT", "0"));
  extension.push_back(card("GCOUNT", "1"));
  expectTrailing(frame, 0);
  expectTrailing(frame + fits(extension, "yz"), 0);
  expectTrailing(frame.substr(0, 2882), 0);
  expectTrailing(frame + "x", 1);
  expectTrailing(frame + "rubbish", 7);
  expectTrailing(frame + std::string(10000, 'x'), 10000);
  expectTrailing(frame + fits(extension, "yz") + "rubbish", 7);
  expectTrailing(frame + frame, static_cast<int>(frame.size()));
}

std::string floats(const std::vector<float>& values) {
  std::string bytes;
  for (const float v : values)
    for (int shift = 24; shift >= 0; shift -= 8)
      bytes += static_cast<char>(std::bit_cast<uint32_t>(v) >> shift);
  return bytes;
}

// 0.5 is 32767.5, which is rounded up.
TEST_F(FitsReader, RealNumbersFromZeroToOne) {
  scratch.write("in.fits", fits(cards(-32, {"2", "2"}), floats({0, 0.5f, 1, NAN})));
  const std::string said =
      "vistrel: in.fits: its values 0 to 1 become samples 0 to 65535, by --range 0:1; 1 without a "
      "value become 0\n";
  const auto description = info("in.fits", said);
  EXPECT_EQ(description["bits"], 16);
  EXPECT_EQ(description["bits_known"], true);
  EXPECT_EQ(scratch.vistrel("convert in.fits --phase mono --depth 16 -o out.pgm").err, said);
  EXPECT_EQ(scratch.read("out.pgm"), pgm(2, 2, 65535, [](uint32_t x, uint32_t y) {
              const uint32_t expected[2][2] = {{0, 32768}, {65535, 0}};
              return expected[y][x];
            }));
}

TEST_F(FitsReader, RealNumbersOfASensor) {
  const auto convert = [this](const std::string& options) {
    return scratch.vistrel("convert in.fits --phase mono --depth 16 -o out.pgm" + options).err;
  };
  const auto row = [](const std::vector<uint32_t>& samples) {
    return pgm(3, 1, 65535, [&samples](uint32_t x, uint32_t) { return samples[x]; });
  };
  scratch.write("in.fits", fits(cards(-32, {"3", "1"}), floats({-2, 1000.5f, 40000})));
  EXPECT_EQ(convert(""),
            "vistrel: in.fits: its values 0 to 65535 become samples 0 to 65535, by --range "
            "0:65535; they go from -2 to 40000, which is clipped\n");
  EXPECT_EQ(scratch.read("out.pgm"), row({0, 1001, 40000}));
  EXPECT_EQ(convert(" --range -2:131068"),
            "vistrel: in.fits: its values -2 to 131068 become samples 0 to 65535, by --range "
            "-2:131068\n");
  EXPECT_EQ(scratch.read("out.pgm"), row({0, 501, 20001}));
  auto header = cards(16, {"3", "1"});
  header.push_back(card("BSCALE", "0.25"));
  scratch.write("in.fits", fits(header, bigEndian({0, 4, 4000})));
  convert("");
  EXPECT_EQ(scratch.read("out.pgm"), row({0, 1, 1000}));
}

TEST_F(FitsReader, RangeOfWholeNumbersHasNoEffect) {
  scratch.write("in.fits", fits(cards(8, {"3", "1"}), "abc"));
  info("in.fits --range 0:1",
       "vistrel: in.fits: --range has no effect: its samples are whole numbers\n");
}

TEST_F(FitsReader, FitsOfTiles) {
  for (const int compression : {RICE_1, GZIP_1, GZIP_2}) {
    const std::string name = "in" + std::to_string(compression) + ".fits.fz";
    writeTiledFits(scratch / name, compression, 50, 40, noise(16));
    expectSamples(name, 50, 40, 16, noise(16));
  }
  writeTiledFits(scratch / "p.fits", PLIO_1, 50, 40, [](auto x, auto y) { return x + y; });
  EXPECT_EQ(scratch.vistrel("info p.fits").err,
            "vistrel: p.fits: FITS: PLIO_1 is not read; funpack decodes it\n");
  writeTiledFits(scratch / "h.fits", HCOMPRESS_1, 50, 40, [](auto x, auto y) { return x + y; });
  EXPECT_EQ(scratch.vistrel("info h.fits").err,
            "vistrel: h.fits: FITS: HCOMPRESS_1 is not read; funpack decodes it\n");
}

TEST_F(FitsReader, PhaseInColortyp) {
  const auto read = [this](const std::vector<std::string>& more) {
    auto header = cards(8, {"2", "2"});
    header.insert(header.end(), more.begin(), more.end());
    scratch.write("in.fits", fits(header, "abcd"));
    return scratch.vistrel("info --json in.fits");
  };
  const std::string grbg = card("COLORTYP", "'GRBG    '");
  EXPECT_EQ(nlohmann::json::parse(read({grbg}).out)["phase"], "grbg");
  EXPECT_EQ(nlohmann::json::parse(read({grbg, card("YBAYROFF", "1")}).out)["phase"], "bggr");
  EXPECT_EQ(nlohmann::json::parse(read({grbg, card("BAYERPAT", "'RGGB    '")}).out)["phase"],
            "rggb");
  EXPECT_EQ(read({card("COLORTYP", "'MONO    '")}).err,
            "vistrel: in.fits: FITS: COLORTYP \"MONO\": RGGB, BGGR, GRBG and GBRG are known\n");
}

}  // namespace
}  // namespace vistrel
