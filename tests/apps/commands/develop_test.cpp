// Pictures for the eye: what is decided, what is printed, what files say of themselves.
#include <gtest/gtest.h>

#include <tiffio.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "tests/apps/input/tiff_file.h"
#include "tests/apps/patches.h"
#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

// A look without any decision.
const std::string kPlainLook =
    "black=0,white=255,gains=1:1:1,matrix=1:0:0:0:1:0:0:0:1,exposure=1,curve=linear,"
    "highlights=clip";

// Red 100, green 50, blue 25 of a block that begins with red.
uint32_t darkerRggb(uint32_t x, uint32_t y) { return (x + y) % 2 ? 50 : y % 2 ? 25 : 100; }

void expectAllPixels(const Picture& picture, const std::vector<uint16_t>& colour) {
  ASSERT_EQ(picture.channels, colour.size());
  for (size_t i = 0; i < picture.samples.size(); ++i)
    ASSERT_EQ(picture.samples[i], colour[i % colour.size()]) << "sample " << i;
}

struct Develop : ::testing::Test {
  Finished develop(const std::string& arguments) const {
    return scratch.vistrel("develop " + arguments);
  }
  // Runs the command that was printed.
  void repeat(const std::string& line) const {
    ASSERT_EQ(line.substr(0, 16), "vistrel develop ");
    const Finished result = scratch.run({"sh", "-c", VISTREL_PROGRAM + line.substr(7)});
    EXPECT_EQ(result.status, 0) << line << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, line);
  }

  const Scratch scratch;
};

TEST_F(Develop, EachPartOfALookDoesWhatItSays) {
  scratch.write("in.pgm", pgm(16, 12, 255, darkerRggb));
  const auto expect = [&](const std::string& look, const std::vector<uint16_t>& colour) {
    const Finished result = develop("in.pgm --phase rggb -o out.png --look " + look);
    EXPECT_EQ(result.status, 0) << result.err;
    expectAllPixels(readPng(scratch / "out.png"), colour);
  };
  const auto with = [](const std::string& part) {
    const std::string name = part.substr(0, part.find('='));
    const size_t at = kPlainLook.find(name + "="),
                 end = std::min(kPlainLook.find(',', at), kPlainLook.size());
    return kPlainLook.substr(0, at) + part + kPlainLook.substr(end);
  };
  expect(kPlainLook, {100, 50, 25});
  expect(with("black=20"), {87, 33, 5});           // 80, 30 and 5 of 235: 86.8, 32.6, 5.4
  expect(with("black=20:10:10:5"), {87, 42, 20});  // 40 of 245, 20 of 250
  expect(with("white=200"), {127, 64, 32});        // of 200: just below 127.5, 63.75, 31.9
  expect(with("gains=2:1:4"), {200, 50, 100});
  expect(with("exposure=1.5"), {150, 75, 38});
  expect(with("matrix=0:1:0:1:0:0:0:0:1"), {50, 100, 25});
  expect(with("curve=gamma:2"), {160, 113, 80});  // 255 times the root of 100, 50, 25 / 255
}

TEST_F(Develop, SixteenBitsComeFromBytes) {
  scratch.write("in.pgm", pgm(16, 12, 255, darkerRggb));
  EXPECT_EQ(develop("in.pgm --phase rggb --depth 16 -o out.png --look " + kPlainLook).status, 0);
  expectAllPixels(readPng(scratch / "out.png"), {25700, 12850, 6425});
}

// The line decides nothing any more, so it makes the same bytes.
TEST_F(Develop, PrintsACommandThatRepeatsIt) {
  EXPECT_EQ(scratch.vistrel("scene --camera -s 300x200 -o in.dng").status, 0);
  for (const std::string options : {"", "--look astro", "--look linear", "--bin 2 --depth 16",
                                    "--orient 270 --roi 101x75+33+20 -a laroche"}) {
    const Finished first = develop("in.dng -o out.png " + options);
    ASSERT_EQ(first.status, 0) << first.err;
    EXPECT_EQ(std::ranges::count(first.out, '\n'), 1);
    const std::string picture = scratch.read("out.png");
    repeat(first.out);
    EXPECT_EQ(scratch.read("out.png"), picture) << first.out;
  }
}

TEST_F(Develop, QuotesNamesForTheShell) {
  EXPECT_EQ(scratch.vistrel("scene --camera -s 60x40 -o in.dng").status, 0);
  std::filesystem::rename(scratch / "in.dng", scratch / "it's a $frame.dng");
  const Finished first =
      scratch.run({VISTREL_PROGRAM, "develop", "it's a $frame.dng", "-o", "a picture.png"});
  ASSERT_EQ(first.status, 0) << first.err;
  const std::string picture = scratch.read("a picture.png");
  repeat(first.out);
  EXPECT_EQ(scratch.read("a picture.png"), picture);
}

TEST_F(Develop, NamesThatBeginLikeOptionsStayNames) {
  EXPECT_EQ(scratch.vistrel("scene --camera -s 60x40 -o in.dng").status, 0);
  std::filesystem::rename(scratch / "in.dng", scratch / "-in.dng");
  const Finished first = scratch.run({VISTREL_PROGRAM, "develop", "--", "-in.dng"});
  ASSERT_EQ(first.status, 0) << first.err;
  repeat(first.out);
}

// Neutral patches are neutral, in the order of their lightness, and colours have their hues.
TEST_F(Develop, UndoesTheCamera) {
  EXPECT_EQ(scratch.vistrel("scene --camera -o in.dng").status, 0);
  EXPECT_EQ(develop("in.dng -o out.png").status, 0);
  const Picture picture = readPng(scratch / "out.png");
  double before = 256;
  for (const Patch& patch : readPatches(VISTREL_CHART)) {
    std::array<double, 3> mean{};
    for (uint32_t y = patch.box.y; y < patch.box.y + patch.box.height; ++y)
      for (uint32_t x = patch.box.x; x < patch.box.x + patch.box.width; ++x)
        for (uint32_t c = 0; c < 3; ++c) mean[c] += picture.at(x, y, c);
    for (double& m : mean) m /= patch.box.width * patch.box.height;
    const auto [least, most] = std::minmax_element(mean.begin(), mean.end());
    if (patch.isNeutral()) {
      EXPECT_LT(*most - *least, 3) << patch.name;
      EXPECT_LT(mean[1], before) << patch.name;
      before = mean[1];
    } else {
      EXPECT_EQ(patch.colour[static_cast<size_t>(most - mean.begin())],
                std::ranges::max(patch.colour))
          << patch.name;
    }
  }
}

// Folders of the system grant access to everyone and take no file.
TEST_F(Develop, PrintsNoCommandForAPictureThatCannotBeWritten) {
  EXPECT_EQ(scratch.vistrel("scene --camera -s 60x40 -o in.dng").status, 0);
  const Finished plain = develop("in.dng -o /proc/x.png");
  EXPECT_EQ(plain.status, 4);
  EXPECT_EQ(plain.out, "");
  EXPECT_EQ(plain.err.rfind("vistrel: in.dng: /proc/x.png cannot be written: ", 0), 0u)
      << plain.err;
  const Finished report = develop("in.dng -o /proc/x.png --json");
  EXPECT_EQ(report.status, 4);
  const auto output = nlohmann::json::parse(report.out).at("inputs").at(0).at("outputs").at(0);
  EXPECT_EQ(output.at("status"), "failed");
  EXPECT_FALSE(output.contains("command") || output.contains("look")) << output;
}

TEST_F(Develop, UsesOrientationAndCropOfTheFile) {
  TiffSpec spec;
  spec.width = 24, spec.height = 16;
  spec.cfa = {0, 1, 1, 2};
  spec.isDng = true, spec.orientation = 6;
  spec.frame.pairs = {{TIFFTAG_DEFAULTCROPORIGIN, {2, 4}}, {TIFFTAG_DEFAULTCROPSIZE, {20, 10}}};
  writeTiff(scratch / "in.dng", spec, [](uint32_t x, uint32_t) { return x < 12 ? 100u : 4000u; });
  const Finished result = develop("in.dng -o out.png");
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.out.find(" --roi 20x10+2+4 --orient 90 "), std::string::npos) << result.out;
  const Picture picture = readPng(scratch / "out.png");
  EXPECT_EQ(picture.width, 10u);
  EXPECT_EQ(picture.height, 20u);
  EXPECT_LT(picture.at(5, 1, 1), picture.at(5, 18, 1));  // left is at the top now
  EXPECT_EQ(develop("in.dng -o out.png --orient upright --roi 24x16+0+0").status, 0);
  EXPECT_EQ(readPng(scratch / "out.png").width, 24u);
}

TEST_F(Develop, PutsPicturesBesideTheirFrames) {
  std::filesystem::create_directory(scratch / "in");
  EXPECT_EQ(scratch.vistrel("scene --camera -s 60x40 -o in/a.dng").status, 0);
  EXPECT_EQ(develop("in/a.dng").status, 0);
  EXPECT_TRUE(std::filesystem::exists(scratch / "in/a.png"));
  const std::string first = scratch.read("in/a.png");
  EXPECT_EQ(develop("in/a.dng --look exposure=0.5").status, 0);
  EXPECT_NE(scratch.read("in/a.png"), first);  // made again
  EXPECT_EQ(develop("in/a.dng --type ppm").status, 0);
  EXPECT_TRUE(std::filesystem::exists(scratch / "in/a.ppm"));
  const Finished folder = develop("in");
  EXPECT_EQ(folder.status, 2);
  EXPECT_NE(folder.err.find("-o is missing: in the input folder in, the next run would take .png "
                            "pictures for frames"),
            std::string::npos)
      << folder.err;
  const Finished pipe = develop("- --phase rggb");
  EXPECT_EQ(pipe.status, 2);
  EXPECT_NE(pipe.err.find("-o is missing: standard input has no folder"), std::string::npos);
}

// A frame may be a PNG itself: it is never overwritten.
TEST_F(Develop, KeepsFrames) {
  scratch.write("in.pgm", pgm(16, 12, 255, darkerRggb));
  EXPECT_EQ(scratch.vistrel("convert in.pgm --phase mono -o in.png").status, 0);
  const std::string frame = scratch.read("in.png");
  EXPECT_EQ(develop("in.png --phase rggb").status, 2);
  EXPECT_EQ(scratch.read("in.png"), frame);
}

std::string lookOf(const std::string& line) {
  return line.substr(line.find("--look"), line.find(" -o ") - line.find("--look"));
}

// The second frame is twice as bright, and stays so.
TEST_F(Develop, SameIsTheLookOfTheFirstFrame) {
  for (const uint32_t factor : {1u, 2u})
    scratch.write(factor == 1 ? "a.pgm" : "b.pgm",
                  pgm(40, 30, 1023, [factor](uint32_t x, uint32_t y) {
                    return factor * (40 + darkerRggb(x, y) * (1 + x / 10));
                  }));
  std::filesystem::create_directory(scratch / "out");
  const auto looks = [&](const std::string& options) {
    const Finished result = develop("a.pgm b.pgm --phase rggb --overwrite -o out/ " + options);
    EXPECT_EQ(result.status, 0) << result.err;
    const size_t end = result.out.find('\n');
    return std::pair(lookOf(result.out.substr(0, end)), lookOf(result.out.substr(end + 1)));
  };
  const auto [a, b] = looks("");
  EXPECT_NE(a, b);
  const auto [first, second] = looks("--same -j 2");
  EXPECT_EQ(first, a);
  EXPECT_EQ(second, a);
  scratch.write("b.pgm", pgm(40, 30, 255, darkerRggb));
  const Finished result =
      develop("a.pgm b.pgm --phase rggb --overwrite --same --keep-going -o out/");
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.err.find("--same: the first frame has 10 bits; this one has 8"),
            std::string::npos)
      << result.err;
}

// Levels are places of the 2x2 block, and a mono frame has no colours.
TEST_F(Develop, SameIsForFramesOfOnePhase) {
  const auto frame = pgm(16, 12, 255, darkerRggb);
  for (const char* const name :
       {"a_8b_rggb.pgm", "b_8b_grbg.pgm", "c_8b_mono.pgm", "d_8b_rggb.pgm"})
    scratch.write(name, frame);
  std::filesystem::create_directory(scratch / "out");
  const Finished result = develop(
      "a_8b_rggb.pgm b_8b_grbg.pgm c_8b_mono.pgm d_8b_rggb.pgm --from-name --same --keep-going -o "
      "out");
  EXPECT_EQ(result.status, 1);
  const std::string first = ": --same: the phase of the first frame is rggb; that of this one is ";
  EXPECT_NE(result.err.find("b_8b_grbg.pgm" + first + "grbg\n"), std::string::npos) << result.err;
  EXPECT_NE(result.err.find("c_8b_mono.pgm" + first + "mono\n"), std::string::npos) << result.err;
  EXPECT_TRUE(std::filesystem::exists(scratch / "out/d_8b_rggb.png"));
}

TEST_F(Develop, BlamesTheBlackThatIsGiven) {
  scratch.write("in.pgm", pgm(40, 30, 1023, [](uint32_t x, uint32_t y) {
                  return x < 20 ? 900 : 100 + 10 * x + y;
                }));
  EXPECT_EQ(
      develop("in.pgm --phase rggb -o out.png --look black=900").err,
      "vistrel: in.pgm: --look black=900: it must be below the white level, 900, unless white= "
      "sets another\n");
  EXPECT_EQ(develop("in.pgm --phase rggb -o out.png --look black=1024").err,
            "vistrel: in.pgm: --look black=1024: samples of 10 bits allow 0 to 1023\n");
}

TEST_F(Develop, JsonHasTheCommandAndItsParts) {
  EXPECT_EQ(scratch.vistrel("scene --camera -s 60x40 -o in.dng").status, 0);
  const std::string look =
      "black=1:2:3:4,white=4000,gains=2:1:1.5,matrix=1:0:0:0.5:0.5:0:0:0:1,exposure=1.25,"
      "curve=asinh:50";
  const std::string options = "in.dng -o out.png --orient 90 -a edge --look " + look;
  const std::string line = develop(options).out;
  const auto output =
      nlohmann::json::parse(develop(options + " --json").out)["inputs"][0]["outputs"][0];
  EXPECT_EQ(output["command"].get<std::string>() + "\n", line);
  EXPECT_EQ(output["algorithm"], "edge:0");
  EXPECT_EQ(output["orientation"], "90");
  EXPECT_EQ(output["look"], nlohmann::json::parse(R"({
      "black": [1, 2, 3, 4], "white": 4000, "gains": [2, 1, 1.5],
      "matrix": [1, 0, 0, 0.5, 0.5, 0, 0, 0, 1], "highlights": "neutral",
      "exposure": 1.25, "curve": "asinh:50.000"})"));
}

TEST_F(Develop, StandardOutputIsForThePicture) {
  EXPECT_EQ(scratch.vistrel("scene --camera -s 60x40 -o in.dng").status, 0);
  const Finished result = develop("in.dng -o ppm:-");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out.substr(0, 15), "P6\n60 40\n255\n" + result.out.substr(13, 2));
  EXPECT_EQ(result.err.substr(0, 23), "vistrel develop in.dng ");  // as it is, to be repeated
}

TEST_F(Develop, MonoIsDeveloped) {
  scratch.write("in.pgm", pgm(64, 48, 4095, [](uint32_t x, uint32_t) { return 300 + 10 * x; }));
  const Finished result = develop("in.pgm --phase mono -o out.png");
  EXPECT_EQ(result.status, 0) << result.err;
  const Picture picture = readPng(scratch / "out.png");
  EXPECT_EQ(picture.channels, 1u);
  EXPECT_LT(picture.at(0, 9, 0), 40);
  EXPECT_GT(picture.at(63, 9, 0), 200);
}

TEST_F(Develop, MonoHasNoColoursToBalance) {
  scratch.write("in.pgm", pgm(64, 48, 4095, [](uint32_t x, uint32_t) { return 300 + 10 * x; }));
  const std::string line = develop("in.pgm --phase mono -o out.png").out;
  const std::string colours = "gains=4:1:1,matrix=2:0:0:0:1:0:0:0:1,highlights=clip";
  const Finished result = develop("in.pgm --phase mono -o out.png -a vng --look " + colours);
  EXPECT_EQ(result.out, line);
  EXPECT_EQ(result.err,
            "vistrel: in.pgm: --algorithm vng has no effect: the frame is mono\n"
            "vistrel: in.pgm: --look gains= has no effect: the frame is mono\n"
            "vistrel: in.pgm: --look matrix= has no effect: the frame is mono\n"
            "vistrel: in.pgm: --look highlights= has no effect: the frame is mono\n");
  EXPECT_EQ(line.find("gains"), std::string::npos) << line;
}

TEST_F(Develop, SameNamesAFirstFrameThatCannotBeRead) {
  std::filesystem::create_directory(scratch / "out");
  scratch.write("a.pgm", "P5 9 9 255 short");
  scratch.write("b.pgm", pgm(16, 12, 255, darkerRggb));
  const Finished result = develop("a.pgm b.pgm --phase rggb --same -o out");
  EXPECT_EQ(result.status, 3);
  EXPECT_NE(result.err.find("--same: a.pgm: "), std::string::npos) << result.err;
}

TEST_F(Develop, SameIsTheLookOfTheFirstFrameThatCanBeRead) {
  std::filesystem::create_directory(scratch / "out");
  scratch.write("a.pgm", "P5 9 9 255 short");
  for (const uint32_t factor : {1u, 2u})
    scratch.write(factor == 1 ? "b.pgm" : "c.pgm",
                  pgm(40, 30, 1023, [factor](uint32_t x, uint32_t y) {
                    return factor * (40 + darkerRggb(x, y) * (1 + x / 10));
                  }));
  const Finished alone = develop("b.pgm --phase rggb -o out/");
  const Finished result =
      develop("a.pgm b.pgm c.pgm --phase rggb --same --keep-going --overwrite -o out");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err.rfind("vistrel: --same: the look is that of b.pgm, ", 0), 0u) << result.err;
  const size_t second = result.out.find('\n') + 1;
  EXPECT_EQ(lookOf(result.out.substr(0, second)), lookOf(alone.out));
  EXPECT_EQ(lookOf(result.out.substr(second)), lookOf(alone.out));
  EXPECT_EQ(develop("a.pgm --phase rggb --same --keep-going -o out").status, 3);
}

TEST_F(Develop, OrientMayBeAutomatic) {
  const Finished result = develop("in.dng --orient sideways");
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.err.find("--orient sideways: auto, upright, "), std::string::npos);
}

TEST_F(Develop, BadLooksLeaveNothingBehind) {
  scratch.write("in.pgm", pgm(16, 12, 255, darkerRggb));
  const std::pair<const char*, int> bad[] = {{"bogus", 2},
                                             {"gains=0:1:1", 2},
                                             {"white=14,black=14", 2},
                                             {"white=256", 3},
                                             {"matrix=9:0:0:0:1:0:0:0:1", 2}};
  for (const auto& [look, status] : bad) {
    const Finished result = develop(std::string("in.pgm --phase rggb -o out.png --look ") + look);
    EXPECT_EQ(result.status, status) << look;
    EXPECT_NE(result.err.find("--look"), std::string::npos) << result.err;
    EXPECT_EQ(scratch.names(), std::vector<std::string>{"in.pgm"});
  }
}

// A dark frame that is the camera's black changes nothing: it takes its place. A flat field that is
// even changes nothing either, and the file's black levels stay.
TEST_F(Develop, CalibrationTakesThePlaceOfWhatItMeasures) {
  TiffSpec spec;
  spec.width = 64, spec.height = 48;
  spec.cfa = {0, 1, 1, 2};
  spec.isDng = true, spec.black = 100, spec.white = 4000;
  const auto scene = [](uint32_t x, uint32_t y) { return 100 + 50 * (x + y) % 3900; };
  writeTiff(scratch / "in.dng", spec, scene);
  writeTiff(scratch / "dark.dng", spec, [](uint32_t, uint32_t) { return 100u; });
  writeTiff(scratch / "flat.dng", spec, [](uint32_t, uint32_t) { return 2000u; });
  const auto lookOf = [&](const std::string& options) {
    const Finished result = develop("in.dng -o out.png " + options);
    EXPECT_EQ(result.status, 0) << result.err;
    return result.out.substr(result.out.find("--look"), result.out.find(" -o "));
  };
  const std::string plain = lookOf("");
  const std::vector<uint16_t> picture = readPng(scratch / "out.png").samples;
  EXPECT_NE(plain.find("black=100:100:100:100,white=4000,"), std::string::npos) << plain;
  EXPECT_NE(lookOf("--dark dark.dng").find("black=0:0:0:0,white=3900,"), std::string::npos);
  EXPECT_EQ(readPng(scratch / "out.png").samples, picture);
  EXPECT_NE(lookOf("--flat flat.dng").find("black=100:100:100:100,white=4000,"), std::string::npos);
  EXPECT_EQ(readPng(scratch / "out.png").samples, picture);
}

// convert guesses nothing, but says what there is.
TEST_F(Develop, IsNamedByConvert) {
  EXPECT_EQ(scratch.vistrel("scene --camera -s 60x40 -o in.dng").status, 0);
  const Finished result = scratch.vistrel("convert in.dng -o out.png");
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.err.find("which convert leaves unused; develop applies them"), std::string::npos)
      << result.err;
}

}  // namespace
}  // namespace vistrel
