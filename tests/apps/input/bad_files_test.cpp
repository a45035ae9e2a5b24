// Invalid files of every kind: rejected with the reason, never a crash.
#include <gtest/gtest.h>

#include "tests/apps/input/fits_file.h"
#include "tests/apps/input/tiff_file.h"
#include "tests/apps/input/tiled_fits.h"
#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

struct BadFiles : ::testing::Test {
  Scratch scratch;

  void expectRejected(const std::string& name, const std::string& text, int status = 3) const {
    const Finished result = scratch.vistrel("info " + name);
    EXPECT_EQ(result.status, status) << text << "\n" << result.err;
    EXPECT_EQ(result.err, "vistrel: " + name + ": " + text + "\n");
    EXPECT_EQ(result.out, "");
  }
  // Wherever a file is truncated, it is rejected or, if nothing important is missing, read.
  void cutEverywhere(const std::string& name, size_t step) const {
    const std::string whole = scratch.read(name);
    for (size_t size = 0; size < whole.size(); size += step) {
      scratch.write(name, whole.substr(0, size));
      const Finished result = scratch.vistrel("info " + name);
      EXPECT_TRUE(result.status == 0 || result.status == 3) << size << ": " << result.err;
      EXPECT_EQ(result.err.empty(), result.status == 0) << size;
      EXPECT_EQ(result.err.find('\n') + 1, result.err.size()) << result.err;
    }
  }
  void tiff(const std::string& text, const std::function<void(TiffSpec&)>& change) const {
    TiffSpec spec;
    change(spec);
    writeTiff(scratch / "in.tif", spec, [](uint32_t, uint32_t) { return 1; });
    expectRejected("in.tif", text);
  }
  void fits(const std::string& text, const std::string& file) const {
    scratch.write("in.fits", file);
    expectRejected("in.fits", text);
  }
};

TEST_F(BadFiles, TiffOfOtherKinds) {
  tiff(
      "a TIFF of 3 samples a pixel, photometric interpretation 2: a mosaic of one sample a pixel "
      "or "
      "gray is expected",
      [](TiffSpec& s) { s.samplesPerPixel = 3, s.bits = 8; });
  tiff("TIFF: 4 bits a sample: 8 to 16 are allowed", [](TiffSpec& s) { s.bits = 4; });
  tiff("TIFF: 17 bits a sample: 8 to 16 are allowed", [](TiffSpec& s) { s.bits = 17; });
  tiff("TIFF: sample format 2: unsigned whole numbers, 1, are expected",
       [](TiffSpec& s) { s.sampleFormat = 2; });
  tiff("TIFF: ActiveArea 0 0 6 7: it exceeds the image of 7x5, or is empty", [](TiffSpec& s) {
    s.activeArea = {0, 0, 6, 7};
  });
  tiff("TIFF: ActiveArea 4 0 4 7: it exceeds the image of 7x5, or is empty", [](TiffSpec& s) {
    s.activeArea = {4, 0, 4, 7};
  });
}

// A directory written by hand, since libtiff would not write it.
std::string tiffOf(const std::vector<std::vector<uint32_t>>& tags) {
  std::string file("II*\0\x08\0\0\0", 8);
  const auto put = [&file](uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) file += static_cast<char>(value >> 8 * i);
  };
  put(static_cast<uint32_t>(tags.size()), 2);
  for (const auto& tag : tags) put(tag[0], 2), put(4, 2), put(1, 4), put(tag[1], 4);
  put(0, 4);
  return file;
}

TEST_F(BadFiles, TiffOfWrongSizes) {
  const auto expectTiff = [this](uint32_t width, uint32_t height, uint32_t compression,
                                 const std::string& text) {
    scratch.write("in.tif", tiffOf({{256, width},
                                    {257, height},
                                    {258, 16},
                                    {259, compression},
                                    {262, 1},
                                    {273, 8},
                                    {277, 1},
                                    {278, height},
                                    {279, 100}}));
    expectRejected("in.tif", text);
  };
  expectTiff(0, 5, 1, "TIFF: Computed scanline size is zero");
  expectTiff(5, 0, 1, "TIFF: Bad value 0 for \"RowsPerStrip\" tag");
  expectTiff(1000, 1000, 1,
             "the file is too short: 1000x1000 samples of 16 bits do not fit its 122 bytes");
  expectTiff(60000, 60000, 5,
             "the file is too short: 60000x60000 samples of 16 bits do not fit its 122 bytes");
  expectTiff(4294967295u, 4294967295u, 1, "TIFF: it cannot be opened");
  expectTiff(4, 4, 6,
             "TIFF: compression 6: none (1), LZW (5), deflate (8) and PackBits (32773) are read");
}

// The header is longer than the samples, so that the file has enough bytes for them.
TEST_F(BadFiles, TiffWithTruncatedSamples) {
  scratch.write("in.tif", tiffOf({{256, 4},
                                  {257, 4},
                                  {258, 16},
                                  {259, 1},
                                  {262, 1},
                                  {273, 100},
                                  {277, 1},
                                  {278, 4},
                                  {279, 32}}));
  expectRejected("in.tif",
                 "the file is too short: 32 bytes of samples are to begin at byte 100 of its 122");
}

TEST_F(BadFiles, TiffTruncatedAnywhere) {
  TiffSpec spec;
  spec.cfa = {0, 1, 1, 2};
  spec.inSubdirectory = spec.isDng = true;
  writeTiff(scratch / "in.tif", spec, [](uint32_t x, uint32_t y) { return x * y; });
  cutEverywhere("in.tif", 41);
  spec.compression = 8;
  spec.tile = 16;
  writeTiff(scratch / "in.tif", spec, [](uint32_t x, uint32_t y) { return x * y; });
  cutEverywhere("in.tif", 67);
}

TEST_F(BadFiles, Fits) {
  const std::string data(2880, 1);
  fits("FITS: 1 axes: 2 or 3 are expected", vistrel::fits(cards(8, {"2"}), data));
  fits("FITS: 4 axes: 2 or 3 are expected", vistrel::fits(cards(8, {"2", "2", "1", "1"}), data));
  fits("FITS: it contains no image", vistrel::fits(cards(8, {}), ""));
  fits("FITS: an axis of 0: 1 to 4294967295 are allowed",
       vistrel::fits(cards(8, {"0", "2"}), data));
  fits("the file is too short: 3000x2000 samples of 8 bits do not fit its 5760 bytes",
       vistrel::fits(cards(8, {"3000", "2000"}), data));
  fits("the file is too short: 20x20 samples of 8 bits do not fit its 5760 bytes",
       vistrel::fits(cards(8, {"20", "20", "1000"}), data));
  auto header = cards(16, {"2", "2"});
  header.push_back(card("BSCALE", "0"));
  fits("FITS: BSCALE 0, BZERO 0: numbers are expected, BSCALE not 0", vistrel::fits(header, data));
  fits("FITS: a sample is below 0 or above 65535",
       vistrel::fits(cards(16, {"2", "2"}), std::string(8, '\xFF')));
}

TEST_F(BadFiles, FitsThatCfitsioRejects) {
  const std::string file = vistrel::fits(cards(8, {"2", "2"}), "abcd");
  for (const std::string& bad :
       {std::string("SIMPLE  ="), file.substr(0, 1000), file.substr(0, 2880) + "ab",
        vistrel::fits(cards(8, {"-2", "2"}), "abcd"),
        vistrel::fits(cards(9, {"2", "2"}), "abcd")}) {
    scratch.write("in.fits", bad);
    const Finished result = scratch.vistrel("info in.fits");
    EXPECT_EQ(result.status, 3) << result.out;
    EXPECT_EQ(result.err.find("vistrel: in.fits: "), 0u) << result.err;
  }
}

// What a damaged table announces takes no memory.
TEST_F(BadFiles, FitsOfTiles) {
  writeTiledFits(scratch / "whole.fits", GZIP_1, 20, 17,
                 [](uint32_t x, uint32_t y) { return 65535 - x * y; });
  const std::string file = scratch.read("whole.fits");
  const auto replaced = [&file](const std::string& card, const std::string& value) {
    const size_t at = file.find(card, 2880), begin = at + card.size();  // in the table's header
    std::string changed = file;
    return changed.replace(begin, at + 30 - begin,
                           std::string(at + 30 - begin - value.size(), ' ') + value);
  };
  fits("FITS: tiles of 2000000000 pixels, an image of 340", replaced("ZTILE1  =", "2000000000"));
  fits("FITS: ZTILE2  =                    0: a size from 1 is expected",
       replaced("ZTILE2  =", "0"));
  fits("FITS: ZBITPIX =               (16,1): a size from 1 is expected",
       replaced("ZBITPIX =", "(16,1)"));
  for (const std::string name : {"NAXIS2  =", "PCOUNT  =", "GCOUNT  =", "TFIELDS ="})
    fits("FITS: " + name + "                    .: a whole number is expected",
         replaced(name, "."));
  std::string changed = file;
  changed[file.find("TFIELDS =") + 9] = '(';
  fits("FITS: TFIELDS =(                   1: a whole number is expected", changed);
  changed = file;
  const size_t table = 2880 * (1 + file.find("END ", 2880) / 2880);  // counts and offsets
  fits("FITS: the file is too short for its table of 136 bytes", changed.substr(0, table + 135));
  changed[table] = 0x20;
  fits("FITS: COMPRESSED_DATA of tile 1: the file is too short for it", changed);
  changed = file;
  changed[table + 3 * 8 + 4] = 0x20;
  fits("FITS: COMPRESSED_DATA of tile 4: the file is too short for it", changed);
  changed = file;
  changed[table + 17 * 8 + 15] ^= 8;  // the first tile lies behind the table of 17
  fits("FITS: COMPRESSED_DATA of tile 1 is damaged", changed);
  scratch.write("in.fits", file);
  cutEverywhere("in.fits", 241);
}

// cfitsio divides by the size of a block.
TEST_F(BadFiles, FitsOfRice) {
  writeTiledFits(scratch / "whole.fits", RICE_1, 20, 17,
                 [](uint32_t x, uint32_t y) { return 65535 - x * y; });
  std::string file = scratch.read("whole.fits");
  const size_t value = file.find("ZVAL1   =") + 28;
  ASSERT_EQ(file.substr(value, 2), "32");
  fits("FITS: ZVAL1   =                    0: a size from 1 is expected",
       file.replace(value, 2, " 0"));
}

TEST_F(BadFiles, FitsTruncatedAnywhere) {
  auto header = cards(16, {"40", "30"});
  header.push_back(card("BZERO", "32768"));
  scratch.write("in.fits", vistrel::fits(header, std::string(2400, 1)));
  cutEverywhere("in.fits", 241);
}

TEST_F(BadFiles, Png) {
  scratch.write("in.pgm", pgm(4, 4, 255, [](uint32_t x, uint32_t y) { return 40 * x + y; }));
  ASSERT_EQ(scratch.vistrel("convert in.pgm --phase rggb -o in.png").status, 0);
  expectRejected("in.png", "a PNG of 3 channels of 8 bits: gray of 8 or 16 bits is expected");
  ASSERT_EQ(scratch.vistrel("convert in.pgm --phase mono -o in.png").status, 0);
  const std::string file = scratch.read("in.png");
  cutEverywhere("in.png", 7);
  scratch.write("in.png", file.substr(0, 20) + '\x99' + file.substr(21));
  expectRejected("in.png", "PNG: IHDR: CRC error");
}

TEST_F(BadFiles, Pgm) {
  scratch.write("in.pgm", pgm(4, 4, 1023, [](uint32_t x, uint32_t y) { return 40 * x + y; }));
  cutEverywhere("in.pgm", 2);
}

TEST_F(BadFiles, CameraRaw) {
  if (!std::filesystem::exists(VISTREL_PLUGIN)) GTEST_SKIP() << "built without LibRaw";
  scratch.write("in.nef", "no camera writes this");
  const Finished result = scratch.vistrel("info in.nef");
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err.find("vistrel: in.nef: camera raw: "), 0u) << result.err;
  TiffSpec spec;
  spec.width = 64;
  spec.height = 48;
  spec.cfa = {0, 1, 1, 2};
  spec.isDng = true;
  writeTiff(scratch / "in.nef", spec, [](uint32_t x, uint32_t y) { return x * y; });
  cutEverywhere("in.nef", 501);
}

TEST_F(BadFiles, UnknownFormat) {
  scratch.write("in.bin", "what is this");
  expectRejected(
      "in.bin",
      "unknown kind of frame; --size WxH reads headerless raw files, and `vistrel guess` finds "
      "their size and format");
  scratch.write("in.tif", "");
  expectRejected("in.tif", "the file is empty");
  scratch.write("in.tif", std::string("II*\0garbage", 11));
  expectRejected("in.tif", "TIFF: Can not read TIFF directory count");
}

}  // namespace
}  // namespace vistrel
