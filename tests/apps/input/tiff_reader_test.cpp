// TIFF and DNG: their samples, and what they say about themselves.
#include <tiffio.h>

#include "tests/apps/input/input_test.h"

namespace vistrel {
namespace {

const std::vector<uint8_t> kGrbg{1, 0, 2, 1}, kBggr{2, 1, 1, 0}, kRggb{0, 1, 1, 2},
    kGbrg{1, 2, 0, 1};

struct TiffReader : InputTest {};

TEST_F(TiffReader, TiffOfAllDepths) {
  for (uint32_t bits = 8; bits <= 16; ++bits)
    for (const char* const mode : {"wl", "wb"}) {
      TiffSpec spec;
      spec.bits = bits;
      spec.mode = mode;
      writeTiff(scratch / "in.tif", spec, noise(bits));
      expectSamples("in.tif", 7, 5, bits, noise(bits));
    }
}

TEST_F(TiffReader, TiffOfTilesAndCompressed) {
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

TEST_F(TiffReader, TiffSpecifiesItsPhase) {
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

TEST_F(TiffReader, DngWithAThumbnail) {
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
TEST_F(TiffReader, WhiteLevelDeterminesTheBits) {
  const auto bitsOf = [this](uint32_t stored, uint32_t white, uint32_t used,
                             const std::string& said = "") {
    TiffSpec spec;
    spec.bits = stored;
    spec.isDng = true;
    spec.white = white;
    writeTiff(scratch / "in.dng", spec, noise(used));
    expectSamples("in.dng", 7, 5, used, noise(used));
    return info("in.dng", said)["bits"];
  };
  EXPECT_EQ(bitsOf(16, 15520, 14), 14);
  EXPECT_EQ(bitsOf(14, 4094, 12), 12);
  EXPECT_EQ(bitsOf(16, 65535, 16), 16);
  EXPECT_EQ(bitsOf(16, 70000, 16,
                   "vistrel: in.dng: white level 70000: 1 to 65535 are allowed; not used\n"),
            16);
  EXPECT_EQ(bitsOf(16, 100, 16), 16);
  EXPECT_EQ(bitsOf(8, 200, 8), 8);
}

TEST_F(TiffReader, OrientationIsReportedButNotApplied) {
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
TEST_F(TiffReader, DngWithAnActiveArea) {
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

TEST_F(TiffReader, TiffOfPages) {
  TiffSpec spec;
  spec.pages = 3;
  spec.bits = 8;
  writeTiff(scratch / "in.tif", spec, [](uint32_t, uint32_t y) { return y; });
  EXPECT_EQ(info("in.tif")["frames"], 3);
  EXPECT_EQ(info("in.tif --frame 2")["min"], 10);
  EXPECT_EQ(info("in.tif --frame 2")["max"], 14);
}

// Stored values are places in the table; those beyond it become its last value.
TEST_F(TiffReader, LinearizationTable) {
  TiffSpec spec;
  spec.width = 64;
  spec.height = 48;
  spec.isDng = true;
  spec.cfa = kGrbg;
  for (uint32_t i = 0; i < 200; ++i) spec.linearization.push_back(uint16_t(i * i / 10));
  const auto expected = [](uint32_t x, uint32_t y) {
    const uint32_t stored = std::min(noise(8)(x, y), 199u);
    return stored * stored / 10;
  };
  for (const uint32_t bits : {8u, 12u, 16u})
    for (const uint32_t tile : {0u, 16u}) {
      spec.bits = bits;
      spec.tile = tile;
      writeTiff(scratch / "in.dng", spec, noise(8));
      EXPECT_EQ(info("in.dng")["bits"], 12);  // 199 * 199 / 10 = 3960
      expectSamples("in.dng", 64, 48, 12, expected);
    }
  spec.white = 16000;
  writeTiff(scratch / "in.dng", spec, noise(8));
  EXPECT_EQ(info("in.dng")["bits"], 14);
}

// LibRaw has a reader of its own.
TEST_F(TiffReader, LinearizationTableAsLibRawReadsIt) {
  if (!std::filesystem::exists(VISTREL_PLUGIN)) GTEST_SKIP() << "built without LibRaw";
  TiffSpec spec = smallDng(kGrbg, 3960);
  for (uint32_t i = 0; i < 256; ++i)
    spec.linearization.push_back(uint16_t(i < 200 ? i * i / 10 : 3960));
  writeTiff(scratch / "in.dng", spec, noise(8));
  std::filesystem::copy_file(scratch / "in.dng", scratch / "in.nef");
  for (const std::string name : {"in.dng", "in.nef"}) {
    const Finished result =
        scratch.vistrel("convert " + name + " --phase mono --depth 16 -o " + name + ".pgm");
    ASSERT_EQ(result.status, 0) << result.err;
  }
  EXPECT_EQ(scratch.read("in.nef.pgm"), scratch.read("in.dng.pgm"));
}

TEST_F(TiffReader, TiffInWhichZeroIsWhite) {
  for (const uint32_t bits : {8u, 10u, 16u}) {
    TiffSpec spec;
    spec.bits = bits;
    spec.isInverse = true;
    writeTiff(scratch / "in.tif", spec, noise(bits));
    const uint32_t white = (1u << bits) - 1;
    expectSamples("in.tif", 7, 5, bits,
                  [&](uint32_t x, uint32_t y) { return white - noise(bits)(x, y); });
  }
}

TEST_F(TiffReader, LayoutThatIsNotRectangular) {
  TiffSpec spec;
  spec.cfa = kRggb;
  spec.isDng = true;
  spec.frame.codes = {{TIFFTAG_CFALAYOUT, 1}};
  writeTiff(scratch / "in.dng", spec, noise(12));
  EXPECT_EQ(info("in.dng")["phase"], "rggb");
  spec.frame.codes = {{TIFFTAG_CFALAYOUT, 2}};
  writeTiff(scratch / "in.dng", spec, noise(12));
  const Finished result = scratch.vistrel("convert in.dng -o out.png");
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err,
            "vistrel: in.dng: TIFF: CFALayout 2: a rectangular mosaic, 1, is expected; --phase "
            "overrides it\n");
}

TEST_F(TiffReader, SampleAboveTheBitsOfTheWhiteLevel) {
  TiffSpec spec;
  spec.bits = 16;
  spec.cfa = kRggb;
  spec.isDng = true;
  spec.white = 4095;
  writeTiff(scratch / "in.dng", spec,
            [](uint32_t x, uint32_t y) { return x == 2 && y == 1 ? 4100 : 9; });
  for (const std::string command : {"convert", "develop"}) {
    const Finished result = scratch.vistrel(command + " in.dng -o out.png");
    EXPECT_EQ(result.status, 3);
    EXPECT_NE(
        result.err.find("vistrel: in.dng: sample 4100 at column 2, row 1: samples of 12 bits "
                        "are at most 4095; the file says that 12 bits are significant, --bits "
                        "overrides it\n"),
        std::string::npos)
        << result.err;
    EXPECT_EQ(scratch.vistrel(command + " in.dng --bits 13 -o out.png").status, 0);
  }
}

// One byte changes in each of 60 copies, within the samples.
TEST_F(TiffReader, DamagedDeflateIsNoticed) {
  for (const uint32_t tile : {0u, 16u}) {
    TiffSpec spec;
    spec.width = 64;
    spec.height = 48;
    spec.bits = 16;
    spec.compression = 8;
    spec.rowsPerStrip = 16;
    spec.tile = tile;
    writeTiff(scratch / "in.tif", spec,
              [](uint32_t x, uint32_t y) { return (x * y + x / 3) & 255; });
    const std::string file = scratch.read("in.tif");
    const std::string what = tile ? "tile " : "strip ";
    uint32_t noticed = 0, all = 0;
    for (size_t at = 60; at < file.size() / 2; at += file.size() / 60, ++all) {
      std::string changed = file;
      changed[at] ^= 32;
      scratch.write("changed.tif", changed);
      const Finished result = scratch.vistrel("info changed.tif");
      noticed += result.status == 3 && result.err.find("TIFF: " + what) != std::string::npos;
    }
    EXPECT_GE(all, 25u);
    EXPECT_EQ(noticed, all) << what;
  }
}

}  // namespace
}  // namespace vistrel
