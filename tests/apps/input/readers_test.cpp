// Frames of every kind: their samples, and what they say about themselves.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/apps/input/fits_file.h"
#include "tests/apps/input/tiff_file.h"
#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

const std::vector<uint8_t> kGrbg{1, 0, 2, 1}, kBggr{2, 1, 1, 0}, kRggb{0, 1, 1, 2},
    kGbrg{1, 2, 0, 1};

struct Readers : ::testing::Test {
  Scratch scratch;

  nlohmann::json info(const std::string& arguments) const {
    const Finished result = scratch.vistrel("info --json " + arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    return result.status ? nlohmann::json() : nlohmann::json::parse(result.out);
  }
  // Converting a mono frame yields the frame itself.
  void expectSamples(const std::string& file, uint32_t width, uint32_t height, uint32_t bits,
                     const Sample& sample) const {
    const std::string options = bits > 8 ? " --depth 16" : "";
    const Finished result =
        scratch.vistrel("convert " + file + " --phase mono -o out.pgm" + options);
    EXPECT_EQ(result.status, 0) << file << ": " << result.err;
    EXPECT_EQ(scratch.read("out.pgm"), pgm(width, height, (1u << bits) - 1, sample)) << file;
  }
};

// Different in every bit of every sample.
Sample noise(uint32_t bits) {
  return [bits](uint32_t x, uint32_t y) {
    const uint32_t v = (x * 2654435761u ^ y * 40503u * 65537u) + x * y * 97;
    return (v ^ v >> 13) & ((1u << bits) - 1);
  };
}

TEST_F(Readers, TiffOfAllDepths) {
  for (uint32_t bits = 8; bits <= 16; ++bits)
    for (const char* const mode : {"wl", "wb"}) {
      TiffSpec spec;
      spec.bits = bits;
      spec.mode = mode;
      writeTiff(scratch / "in.tif", spec, noise(bits));
      expectSamples("in.tif", 7, 5, bits, noise(bits));
    }
}

TEST_F(Readers, TiffOfTilesAndCompressed) {
  for (const uint32_t tile : {0u, 16u})
    for (const uint32_t compression : {1u, 5u, 8u, 32773u})
      for (const uint32_t bits : {8u, 12u, 16u}) {
        TiffSpec spec;
        spec.width = 37;
        spec.height = 21;
        spec.bits = bits;
        spec.tile = tile;
        spec.compression = compression;
        writeTiff(scratch / "in.tif", spec, noise(bits));
        expectSamples("in.tif", 37, 21, bits, noise(bits));
      }
}

TEST_F(Readers, TiffSpecifiesItsPhase) {
  const std::pair<std::vector<uint8_t>, const char*> phases[] = {
      {kGrbg, "grbg"}, {kBggr, "bggr"}, {kRggb, "rggb"}, {kGbrg, "gbrg"}};
  for (const auto& [cfa, name] : phases) {
    TiffSpec spec;
    spec.cfa = cfa;
    writeTiff(scratch / "in.tif", spec, noise(12));
    EXPECT_EQ(info("in.tif")["phase"], name);
    EXPECT_EQ(info("in.tif")["format"], "TIFF");
    EXPECT_EQ(info("in.tif")["bits"], 12);
  }
  const Finished converted = scratch.vistrel("convert in.tif -o out.png");
  EXPECT_EQ(converted.status, 0) << converted.err;
}

TEST_F(Readers, DngWithAThumbnail) {
  TiffSpec spec;
  spec.cfa = kRggb;
  spec.bits = 16;
  spec.isDng = spec.inSubdirectory = true;
  spec.white = 16383;
  spec.black = 600;
  writeTiff(scratch / "in.dng", spec, noise(14));
  expectSamples("in.dng", 7, 5, 14, noise(14));
  const auto description = info("in.dng");
  EXPECT_EQ(description["format"], "DNG");
  EXPECT_EQ(description["phase"], "rggb");
  EXPECT_EQ(description["bits"], 14);
  EXPECT_EQ(description["black_level"], nlohmann::json({600, 600, 600, 600}));
  EXPECT_EQ(description["white_level"], 16383);
}

// 15520 takes 14 bits, 4094 takes 12.
TEST_F(Readers, WhiteLevelDeterminesTheBits) {
  const auto bitsOf = [this](uint32_t stored, uint32_t white, uint32_t used) {
    TiffSpec spec;
    spec.bits = stored;
    spec.isDng = true;
    spec.white = white;
    writeTiff(scratch / "in.dng", spec, noise(used));
    expectSamples("in.dng", 7, 5, used, noise(used));
    return info("in.dng")["bits"];
  };
  EXPECT_EQ(bitsOf(16, 15520, 14), 14);
  EXPECT_EQ(bitsOf(14, 4094, 12), 12);
  EXPECT_EQ(bitsOf(16, 65535, 16), 16);
  EXPECT_EQ(bitsOf(16, 70000, 16), 16);
  EXPECT_EQ(bitsOf(16, 100, 16), 16);
  EXPECT_EQ(bitsOf(8, 200, 8), 8);
}

TEST_F(Readers, OrientationIsReportedButNotApplied) {
  TiffSpec spec;
  for (const bool below : {false, true}) {
    spec.inSubdirectory = spec.isDng = below;
    spec.orientation = 6;
    writeTiff(scratch / "in.tif", spec, noise(12));
    EXPECT_EQ(info("in.tif")["orientation"], 6) << below;
    expectSamples("in.tif", 7, 5, 12, noise(12));
  }
  EXPECT_NE(scratch.vistrel("info in.tif")
                .out.find("\norientation      6 (convert keeps the sensor's orientation)\n"),
            std::string::npos);
  spec.orientation = 0;
  writeTiff(scratch / "in.tif", spec, noise(12));
  EXPECT_TRUE(info("in.tif")["orientation"].is_null());
}

// Pattern and frame begin at the area's corner.
TEST_F(Readers, DngWithAnActiveArea) {
  for (const uint32_t tile : {0u, 16u}) {
    TiffSpec spec;
    spec.width = 40;
    spec.height = 30;
    spec.tile = tile;
    spec.cfa = kBggr;
    spec.isDng = true;
    spec.activeArea = {3, 1, 28, 34};
    writeTiff(scratch / "in.dng", spec, noise(12));
    EXPECT_EQ(info("in.dng")["phase"], "bggr");
    expectSamples("in.dng", 33, 25, 12,
                  [](uint32_t x, uint32_t y) { return noise(12)(x + 1, y + 3); });
  }
}

TEST_F(Readers, TiffOfPages) {
  TiffSpec spec;
  spec.pages = 3;
  spec.bits = 8;
  writeTiff(scratch / "in.tif", spec, [](uint32_t, uint32_t y) { return y; });
  EXPECT_EQ(info("in.tif")["frames"], 3);
  EXPECT_EQ(info("in.tif --frame 2")["min"], 10);
  EXPECT_EQ(info("in.tif --frame 2")["max"], 14);
}

std::string bigEndian(const std::vector<int>& values) {
  std::string bytes;
  for (const int v : values) bytes += {static_cast<char>(v >> 8), static_cast<char>(v)};
  return bytes;
}

TEST_F(Readers, FitsOfUnsignedSamples) {
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

TEST_F(Readers, FitsOfBytesAndOfScaledSamples) {
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

TEST_F(Readers, FitsPhaseAndOrderOfRows) {
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

// If the file's phase is invalid, an option overrides it.
TEST_F(Readers, OptionOverridesInvalidPhase) {
  const auto expect = [this](const std::string& file, const std::string& fault) {
    const Finished none = scratch.vistrel("convert " + file + " -o out.png");
    EXPECT_EQ(none.status, 3);
    EXPECT_EQ(none.err, "vistrel: " + file + ": " + fault + "; --phase overrides it\n");
    const Finished overridden = scratch.vistrel("convert " + file + " --phase rggb -o out.png");
    EXPECT_EQ(overridden.status, 0);
    EXPECT_EQ(overridden.err, "vistrel: " + file + ": " + fault + "; using rggb\n");
    const Finished info = scratch.vistrel("info --json " + file);
    EXPECT_EQ(info.err, "vistrel: " + file + ": " + fault + "\n");
    EXPECT_TRUE(nlohmann::json::parse(info.out)["phase"].is_null());
  };
  const auto fitsOf = [this](std::vector<std::string> more) {
    auto header = cards(8, {"2", "2"});
    header.insert(header.end(), more.begin(), more.end());
    scratch.write("in.fits", fits(header, "abcd"));
  };
  fitsOf({card("BAYERPAT", "'TRUE    '")});
  expect("in.fits", "FITS: BAYERPAT \"TRUE\": RGGB, BGGR, GRBG and GBRG are known");
  fitsOf({card("BAYERPAT", "'RGGB    '"), card("XBAYROFF", "0.5")});
  expect("in.fits", "FITS: XBAYROFF 0.5, YBAYROFF 0: whole numbers are expected");
  TiffSpec spec;
  const auto expectTiff = [&](const std::vector<uint8_t>& cfa, const std::string& fault) {
    spec.cfa = cfa;
    writeTiff(scratch / "in.tif", spec, noise(12));
    expect("in.tif", fault);
  };
  expectTiff({0, 1, 2, 1}, "TIFF: CFAPattern 0 1 2 1: not one of the four Bayer phases");
  expectTiff({0, 1, 1, 2, 0, 1},
             "TIFF: a mosaic of 2x2 filters, 6 of them named: 2x2 are expected");
}

TEST_F(Readers, FitsCubeAndExtension) {
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

// LibRaw goes by content, so a DNG may stand in for a camera raw file.
TEST_F(Readers, CameraRawByThePlugin) {
  if (!std::filesystem::exists(VISTREL_PLUGIN)) GTEST_SKIP() << "built without LibRaw";
  TiffSpec spec;
  spec.width = 64;
  spec.height = 48;
  spec.bits = 16;
  spec.cfa = kGbrg;
  spec.isDng = true;
  spec.white = 16383;
  writeTiff(scratch / "in.nef", spec, noise(14));
  const auto description = info("in.nef");
  EXPECT_EQ(description["format"], "camera raw");
  EXPECT_EQ(description["phase"], "gbrg");
  EXPECT_EQ(description["bits"], 14);
  expectSamples("in.nef", 64, 48, 14, noise(14));
}

TEST_F(Readers, CameraRawWithoutThePlugin) {
  scratch.write("in.cr2", "II*\0");
  std::filesystem::copy_file(VISTREL_PROGRAM, scratch / "vistrel");
  const Finished result = scratch.run({(scratch / "vistrel").string(), "info", "in.cr2"});
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.err.find("vistrel: in.cr2: reading a camera raw file needs the plug-in "
                            "vistrel-libraw.so, which is neither in "),
            0u)
      << result.err;
}

}  // namespace
}  // namespace vistrel
