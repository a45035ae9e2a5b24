// What the options, the name and the file say about a frame.
#include "tests/apps/input/fits_file.h"
#include "tests/apps/input/input_test.h"

namespace vistrel {
namespace {

struct FrameFiles : InputTest {};

TEST_F(FrameFiles, HighBitsOfFilesWithAHeader) {
  scratch.write("in.pgm", pgm(3, 1, 65535, [](uint32_t x, uint32_t) { return x * 0x5550; }));
  const std::string convert = "convert in.pgm --phase mono --depth 16 -o out.pgm --align high";
  EXPECT_EQ(scratch.vistrel(convert + " --bits 12").err, "");
  EXPECT_EQ(scratch.read("out.pgm"),
            pgm(3, 1, 4095, [](uint32_t x, uint32_t) { return x * 0x555; }));
  EXPECT_EQ(info("in.pgm --align high --bits 12")["full_scale"], 0xFFF0);
  EXPECT_EQ(scratch.vistrel(convert + " --bits 10").err,
            "vistrel: in.pgm: sample 21840 at column 1, row 0: the lowest 6 of 16 bits are 0 in "
            "samples of 10 high bits\n");
  EXPECT_EQ(scratch.vistrel(convert).err,
            "vistrel: in.pgm: --align high: --bits is missing, and the file does not specify it\n");
  scratch.write("in.pgm", pgm(3, 1, 4095, [](uint32_t x, uint32_t) { return x; }));
  EXPECT_EQ(
      scratch.vistrel(convert).err,
      "vistrel: in.pgm: --align high: the file says that its samples are in the low 12 bits\n");
  scratch.write("in.pgm", flat(77));
  EXPECT_EQ(scratch.vistrel(convert).err,
            "vistrel: in.pgm: --align high: it applies to 16-bit samples only\n");
}

TEST_F(FrameFiles, OptionsThatContradictTheFile) {
  scratch.write("in.pgm", flat(600, 1023));
  info("in.pgm --bits 10");
  const auto description =
      info("in.pgm --bits 12", "vistrel: in.pgm: using 12 bits; the file says 10\n");
  EXPECT_EQ(description["bits"], 12);
  for (const char* dry : {"", " --dry-run"}) {
    const auto convert = "convert in.pgm --bits 12 --phase mono -o out.png" + std::string(dry);
    EXPECT_EQ(scratch.vistrel(convert).err, "vistrel: in.pgm: using 12 bits; the file says 10\n");
  }
}

TEST_F(FrameFiles, UnspecifiedBits) {
  const auto said = [this](const std::string& arguments) {
    const Finished result = scratch.vistrel("convert " + arguments + " --phase mono -o out.png");
    EXPECT_EQ(result.status, 0) << arguments;
    EXPECT_EQ(result.out, "");
    return result.err;
  };
  scratch.write("in.pgm", flat(2048, 65535));
  EXPECT_EQ(
      said("in.pgm"),
      "vistrel: in.pgm: using 16 bits, only 12 of which are set; --bits 12 would use those\n");
  EXPECT_EQ(said("in.pgm --bits 12"), "");
  EXPECT_EQ(said("in.pgm --bits 16"), "");
  scratch.write("in.raw", std::string("\x03\0\x01\0", 4));
  EXPECT_EQ(said("in.raw -s 2x1 --pixfmt Mono16"), "");
  scratch.write("in.pgm", flat(1, 65535));
  EXPECT_EQ(said("in.pgm"),
            "vistrel: in.pgm: using 16 bits, only 1 of which are set; --bits 8 would use those\n");
  for (const uint32_t quiet : {0u, 32768u}) {
    scratch.write("in.pgm", flat(quiet, 65535));
    EXPECT_EQ(said("in.pgm"), "");
  }
}

TEST_F(FrameFiles, OptionsThatContradictTheName) {
  scratch.write("a_10b_grbg.pgm", flat(600, 1023));
  EXPECT_EQ(
      scratch.vistrel("convert a_10b_grbg.pgm --from-name --phase rggb --bits 16 -o o.png").err,
      "vistrel: a_10b_grbg.pgm: using 16 bits; its name says 10\n"
      "vistrel: a_10b_grbg.pgm: using rggb; its name says grbg\n"
      "vistrel: a_10b_grbg.pgm: using 16 bits; the file says 10\n");
}

TEST_F(FrameFiles, NamesThatSayNothingOfFilesThatDo) {
  EXPECT_EQ(scratch.vistrel("scene --camera -s 64x48 --bits 12 --phase grbg -o any.dng").status, 0);
  EXPECT_EQ(scratch.vistrel("develop any.dng --from-name -o any.png").status, 0);
  scratch.write("any.pgm", flat(600, 65535));
  EXPECT_THAT(scratch.vistrel("convert any.pgm --from-name --phase rggb -o no.png").err,
              testing::HasSubstr("--from-name: the name does not end in"));
}

// If the file's phase is invalid, an option overrides it.
TEST_F(FrameFiles, OptionOverridesInvalidPhase) {
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

// Remarks about a frame appear although it is rejected, whether when it is opened or later.
TEST_F(FrameFiles, RemarksAboutARejectedFrame) {
  scratch.write("in.pgm", pgm(4, 4, 4095, [](uint32_t x, uint32_t y) { return 1000 * x + y; }));
  const std::string note =
      "vistrel: in.pgm: read as headerless raw because of --size; it begins like a PNM (PGM) "
      "file\n";
  const Finished samples =
      scratch.vistrel("convert in.pgm -s 4x4 --bits 9 --phase rggb -o out.png");
  EXPECT_EQ(samples.status, 3);
  EXPECT_EQ(samples.err.find(note), 0u) << samples.err;
  EXPECT_NE(samples.err.find("\nvistrel: in.pgm: sample 13648 "), std::string::npos) << samples.err;
  for (const std::string command :
       {"convert in.pgm -o out.png", "develop in.pgm -o out.png", "info in.pgm", "bench in.pgm",
        "compare in.pgm -o out.png", "convert in.pgm -o out.png --dry-run"}) {
    const std::string phase = command[0] == 'i' ? "" : " --phase rggb";
    const Finished size = scratch.vistrel(command + phase + " -s 400x400 --bits 12");
    EXPECT_EQ(size.status, 3) << command;
    EXPECT_EQ(size.err.find(note), 0u) << command << ": " << size.err;
    EXPECT_NE(size.err.find("the file is too short"), std::string::npos) << command;
  }
  const Finished json =
      scratch.vistrel("convert in.pgm -s 400x400 --bits 12 --phase rggb -o out.png --json");
  const auto output = nlohmann::json::parse(json.out)["inputs"][0]["outputs"][0];
  EXPECT_EQ(output["status"], "failed");
  EXPECT_EQ(output["warnings"].size(), 1u);
}

}  // namespace
}  // namespace vistrel
