// Command lines that are rejected before any file is opened.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/apps/program.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

void expectUsage(const std::string& arguments, const std::string& text) {
  const Scratch scratch;
  const Finished result = scratch.vistrel(arguments);
  EXPECT_EQ(result.status, 2) << arguments;
  EXPECT_EQ(result.err, "vistrel: " + text) << arguments;
  EXPECT_EQ(result.out, "") << arguments;
  EXPECT_TRUE(scratch.names().empty()) << arguments;
}

std::string algorithmNames() {
  std::string names;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    names.append(i ? ", " : "").append(a->name);
  return names;
}

TEST(Usage, Commands) {
  expectUsage("", "a command is missing; --help lists them\n");
  expectUsage("convrt a.pgm",
              "convrt: there is no such command; the nearest is convert; --help lists them\n");
  expectUsage("darken", "darken: there is no such command; --help lists them\n");
}

// Rare options are named, and the others described.
TEST(Usage, LongHelpLeavesRareOptionsToTheManual) {
  const Scratch scratch;
  const std::string convert = scratch.vistrel("convert --help").out;
  EXPECT_NE(convert.find("\n  also                      --endian, --align, --skip, --stride, "
                         "--continuous,\n"),
            std::string::npos);
  EXPECT_EQ(convert.find("Drop bits"), std::string::npos);
  EXPECT_NE(convert.find("`man vistrel-convert` describes all options."), std::string::npos);
  EXPECT_NE(scratch.vistrel("compare --help").out.find("Drop bits"), std::string::npos);
}

TEST(Usage, UnknownOption) {
  expectUsage("convert a.pgm -o a.png --phase rggb --brighter",
              "--brighter: there is no such option; --help lists them\n");
  // Even if it leaves another argument missing.
  expectUsage("convert --brighter", "--brighter: there is no such option; --help lists them\n");
}

TEST(Usage, NearestOption) {
  expectUsage("convert a.pgm -o a.png --phas rggb",
              "--phas: there is no such option; the nearest is --phase; --help lists them\n");
  expectUsage("convert a.pgm -o a.png --stripe=80",
              "--stripe=80: there is no such option; the nearest is --stride; --help lists them\n");
  expectUsage("report a.pgm", "a.pgm: the command takes no such argument\n");
}

TEST(Usage, MissingValues) {
  expectUsage("convert a.pgm -o", "--output: OUT is missing\n");
  expectUsage("convert a.pgm -o a.png --pixfmt", "--pixfmt: NAME is missing\n");
  for (const std::string option : {"--curve", "--dark", "--flat", "--hot", "--manifest"})
    expectUsage("convert a.pgm -o a.png " + option + " ''",
                option + " '': the name of a file is expected\n");
}

TEST(Usage, OptionsAreGivenOnce) {
  expectUsage("convert a.pgm -o a.png --phase rggb --phase rggb",
              "--phase: it is given more than once\n");
}

TEST(Usage, HelpAndVersion) {
  const Scratch scratch;
  for (const auto& [words, option] :
       {std::pair("help", "--help"), {"help cfa", "cfa --help"}, {"-V", "--version"}}) {
    EXPECT_EQ(scratch.vistrel(words).out, scratch.vistrel(option).out) << words;
    EXPECT_EQ(scratch.vistrel(words).status, 0) << words;
  }
  expectUsage("help convrt",
              "convrt: there is no such command; the nearest is convert; --help lists them\n");
}

TEST(Usage, MissingArguments) {
  expectUsage("convert -o a.png --phase mono", "IN is required\n");
  expectUsage("convert a.pgm --phase mono", "--output is required\n");
  expectUsage("info", "IN is required\n");
  expectUsage("scene", "--output is required\n");
}

TEST(Usage, DepthOfAHeaderlessFileIsRequired) {
  const std::string text = "--bits is missing: a headerless raw file does not specify its depth\n";
  expectUsage("convert a.raw -o a.png --phase rggb -s 4x4", text);
  expectUsage("info a.raw -s 4x4", text);
}

TEST(Usage, Phase) {
  const std::string kNames =
      "rggb, bggr, grbg, gbrg and mono are allowed, and blue=0,0 to blue=1,1, the row and column "
      "of the blue site";
  for (const auto& [phase, nearest] :
       {std::pair("rgbg", "rggb"), {"bgr", "bggr"}, {"GBRG1", "gbrg"}, {"mon", "mono"}})
    expectUsage(
        std::string("convert a.pgm -o a.png --phase ") + phase,
        std::string("--phase ") + phase + ": " + kNames + "; the nearest is " + nearest + "\n");
  expectUsage("convert a.pgm -o a.png --phase blue=0,2", "--phase blue=0,2: " + kNames + "\n");
  expectUsage("scene -o a.pgm --phase bayer", "--phase bayer: " + kNames + "\n");
}

TEST(Usage, Numbers) {
  const std::string convert = "convert a.pgm -o a.png --phase rggb ";
  expectUsage(convert + "--recursive=5", "--recursive: it takes no value\n");
  expectUsage(convert + "--bin 0", "--bin 0: a whole number from 1 to 4 is expected\n");
  expectUsage(convert + "--bin 5", "--bin 5: a whole number from 1 to 4 is expected\n");
  expectUsage(convert + "--bits 0", "--bits 0: a whole number from 8 to 16 is expected\n");
  expectUsage(convert + "--bits 7", "--bits 7: a whole number from 8 to 16 is expected\n");
  expectUsage(convert + "--bits 17", "--bits 17: a whole number from 8 to 16 is expected\n");
  expectUsage(convert + "--window 3", "--window 3: a whole number from 0 to 2 is expected\n");
  expectUsage(
      convert + "--curve 1",
      "--curve 1: 2 to 6, light, lighter, lightest, dark, contrast, or a file with a table, "
      "are allowed\n");
  expectUsage(convert + "--depth 12", "--depth 12: 8, 16, reduce10 are allowed\n");
  expectUsage(convert + "--format bgr32",
              "--format bgr32: gray8, gray16, bgr24, rgb24, bgra, rgba, argb, bgr48, rgb48, "
              "nv12, i420, i444 are allowed\n");
  expectUsage(convert + "--format rbg24",
              "--format rbg24: gray8, gray16, bgr24, rgb24, bgra, rgba, argb, bgr48, rgb48, "
              "nv12, i420, i444 are allowed; the nearest is rgb24\n");
  expectUsage(convert + "--black -1",
              "--black -1: one level, or four as in 64:64:66:64, from 0 to 65535\n");
  expectUsage(convert + "--black 65536",
              "--black 65536: one level, or four as in 64:64:66:64, from 0 to 65535\n");
  expectUsage(convert + "--edges cut", "--edges cut: native, padded are allowed\n");
  expectUsage(convert + "--format gray8 --gray red", "--gray red: luma, raw are allowed\n");
  for (const std::string option : {"--frame", "--skip", "--stride"})
    for (const std::string value : {"-1", "18446744073709551616", "7x", "0x7", "1e3"})
      expectUsage(convert + "-s 4x4 --bits 8 " + option + " " + value,
                  option + " " + value + ": a whole number from 0 is expected\n");
  expectUsage("scene -o a.pgm --seed -1", "--seed -1: a whole number from 0 is expected\n");
  for (const std::string value : {"12.5", "''", "x", "0x9", "+9"})
    expectUsage(convert + "--bits " + value,
                "--bits " + value + ": a whole number from 8 to 16 is expected\n");
  expectUsage("scene -o a.pgm --bits 7", "--bits 7: a whole number from 8 to 16 is expected\n");
}

TEST(Usage, NumbersAreDecimal) {
  const Scratch scratch;
  scratch.write("in.raw", std::string(10, 'a') + "bcde");
  const std::string convert = "convert in.raw -s 2x2 --bits 08 --phase mono --skip 010 -o out.pgm";
  EXPECT_EQ(scratch.vistrel(convert).status, 0);
  EXPECT_EQ(scratch.read("out.pgm"), "P5\n2 2\n255\nbcde");
}

TEST(Usage, Algorithm) {
  const std::string convert = "convert a.pgm -o a.png --phase rggb -a ";
  for (const std::string name : {"sharpest", "sharpest:4"})
    expectUsage(convert + name, "--algorithm " + name + ": " + algorithmNames() + " are allowed\n");
  for (const auto& [name, nearest] :
       {std::pair("bilinea", "bilinear"), {"EGDE:20", "edge"}, {"dir", "directional"}})
    expectUsage(convert + name, std::string("--algorithm ") + name + ": " + algorithmNames() +
                                    " are allowed; the nearest is " + nearest + "\n");
  expectUsage(convert + "laroche:5",
              "--algorithm laroche:5: laroche takes no threshold; only edge does\n");
  for (const std::string threshold : {"256", "-1", "", "x", "5x", "99999999999"})
    expectUsage(convert + "edge:" + threshold,
                "--algorithm edge:" + threshold + ": a threshold of 0 to 255 is allowed\n");
}

TEST(Usage, WhiteBalance) {
  const std::string convert = "convert a.pgm -o a.png --phase rggb --wb ";
  for (const std::string gains : {"Auto", "1", "1,1", "1,1,1,1", "1,,1", "1,1,", "0,1,1", "1,1,17",
                                  "1,1,nan", "1,1,inf", "1;1;1", "1,1,1x", "0.0001,1,1", "-1,1,1"})
    expectUsage(convert + gains, "--wb " + gains +
                                     ": auto, or three gains R,G,B from 1/4096 to 16, as in "
                                     "2.1,1,1.6\n");
}

TEST(Usage, Geometry) {
  const std::string convert = "convert a.pgm -o a.png --phase rggb ";
  for (const std::string size :
       {"640", "640x", "x480", "640x480x2", "0x480", "640x0", "-1x5", "4294967296x1", "640X480"})
    expectUsage(convert + "-s " + size,
                "--size " + size + ": WxH is expected, both at least 1, such as 640x480\n");
  for (const std::string roi : {"640x480", "640x480+1", "640x480+1+", "640x480-1-1", "1x1+1+1+1"})
    expectUsage(convert + "--roi " + roi,
                "--roi " + roi + ": WxH+X+Y is expected, such as 640x480+16+8\n");
}

TEST(Usage, ConflictingOptions) {
  const std::string convert = "convert a.pgm -o a.png --phase rggb ";
  expectUsage(convert + "--window 1 --curve 2", "--window excludes --curve\n");
  expectUsage(convert + "--skip 12", "--skip requires --size\n");
  expectUsage(convert + "--stride 12", "--stride requires --size\n");
  expectUsage(convert + "--endian big", "--endian requires --size\n");
  const auto expectClash = [&](const std::string& one, const std::string& other,
                               const std::string& why) {
    expectUsage(convert + one + " " + other,
                one + " and " + other + " cannot be combined: " + why + "\n");
  };
  expectClash("--curve 2", "--depth 16", "the latter keeps all bits");
  expectClash("--curve 3", "--format bgr48", "the latter keeps all bits");
  expectClash("--window 1", "--format gray16", "the latter keeps all bits");
  expectClash("--depth 16", "--format gray8", "that format has 8 bits; bgr48 and gray16 keep all");
  expectClash("--depth 8", "--format gray16", "that format keeps all bits; bgr24 and gray8 have 8");
  expectClash("--gray raw", "--format bgr24", "it applies to gray8 and gray16 only");
  expectUsage(convert + "--type tiff --depth 8 --format bgr48",
              "--depth 8 and --format bgr48 cannot be combined: that format keeps all bits; bgr24 "
              "and gray8 have 8\n"
              "vistrel: --type tiff and -o a.png cannot be combined: a picture's name sets its "
              "type, --type that of pictures in a folder\n");
  expectUsage("convert a.pgm --phase rggb -o - --json --manifest m.jsonl",
              "--json and -o - cannot be combined: standard output is for the picture alone\n"
              "vistrel: --manifest m.jsonl and -o - cannot be combined: standard output is for the "
              "picture alone\n");
  expectUsage(convert + "--gray raw", "--gray requires --format\n");
}

TEST(Usage, Films) {
  const std::string convert = "convert a.pgm --phase rggb -o ";
  for (const std::string rate : {"0", "-1", "25/0", "25/", "x", "30000/1001/2", "1.5"})
    expectUsage(convert + "y4m:- --fps " + rate,
                "--fps " + rate + ": frames per second are expected, as 25 or 30000/1001\n");
  expectUsage(convert + "a.png --fps 25",
              "--fps and -o a.png cannot be combined: only a Y4M has a rate\n");
  expectUsage(convert + "y4m:- --format bgr24",
              "--format bgr24 and a .y4m cannot be combined: that is i420 or i444\n");
  expectUsage(convert + "a.y4m --type png",
              "--type png and -o a.y4m cannot be combined: a picture's name sets its type, --type "
              "that of pictures in a folder\n");
  expectUsage(convert + "a.y4m --depth 16",
              "--depth 16 and a .y4m cannot be combined: that has 8 bits\n");
  expectUsage(
      convert + "a.png --format i420",
      "--format i420 and such a picture cannot be combined: only .raw and .y4m have planes\n");
  expectUsage(convert + "a.y4m --json --shard 1/2",
              "--json and -o a.y4m cannot be combined: all pictures go to one file\n"
              "vistrel: --shard and -o a.y4m cannot be combined: all pictures go to one file\n");
}

TEST(Usage, Shards) {
  for (const std::string shard : {"0/2", "3/2", "1", "1/", "/2", "1/x", "-1/2", "1/2/3", "1.0/2"})
    expectUsage("convert a.pgm --phase rggb -o out/ --shard " + shard,
                "--shard " + shard + ": I/N is expected, with I from 1 to N\n");
}

TEST(Usage, OutputFormat) {
  const std::string text =
      ": the name of a picture ends in .png, .jpg, .tif, .pam, .ppm (colour), .pgm (gray), .npy or "
      ".raw, that of a raw frame in .dng; "
      "standard output is - for PNM, png:- and so on\n";
  expectUsage("convert a.pgm --phase rggb -o a.gif", "-o a.gif" + text);
  expectUsage("convert a.pgm --phase rggb -o picture",
              "-o picture: there is no such folder; picture/ makes one, picture.png a picture\n");
  expectUsage("scene -o a.tif", "-o a.tif: a raw frame is a .dng, .pgm, .png, .npy or .raw\n");
}

std::string helpOf(const std::string& command) {
  const Scratch scratch;
  const Finished result = scratch.vistrel(command + " --help");
  EXPECT_EQ(result.status, 0) << command;
  EXPECT_EQ(result.err, "") << command;
  EXPECT_NE(result.out.find("Usage: vistrel " + command), std::string::npos) << result.out;
  return result.out;
}

// From the list in the program's help.
std::vector<std::string> commands() {
  const std::string help = helpOf("");
  std::istringstream lines(help.substr(help.find("\nCommands:\n") + 11));
  std::vector<std::string> names;
  for (std::string line; std::getline(lines, line) && !line.empty();)
    if (line.size() > 2 && line[2] != ' ') names.push_back(line.substr(2, line.find(' ', 2) - 2));
  return names;
}

void expectFitsAScreen(const std::string& command, const std::string& help) {
  std::istringstream lines(help);
  size_t count = 0;
  for (std::string line; std::getline(lines, line); ++count)
    EXPECT_LE(line.size(), 80u) << command << ": " << line;
  EXPECT_LE(count, 40u) << command;
}

TEST(Usage, HelpFitsAScreenAndHasAnExample) {
  const std::vector<std::string> names = commands();
  EXPECT_GE(names.size(), 5u);
  expectFitsAScreen("", helpOf(""));
  for (const std::string& name : names) {
    const std::string help = helpOf(name);
    expectFitsAScreen(name, help);
    EXPECT_NE(help.find("\nExample"), std::string::npos) << name;
    EXPECT_NE(help.find("\n  vistrel " + name + " "), std::string::npos) << name;
  }
}

TEST(Usage, Version) {
  const Scratch scratch;
  EXPECT_EQ(scratch.vistrel("--version").out.substr(0, 8), "vistrel ");
}

// docs/program.md has a line for every algorithm, with the bits that it supports.
TEST(Usage, TheManualNamesEveryAlgorithm) {
  std::ostringstream manual;
  manual << std::ifstream(VISTREL_MANUAL).rdbuf();
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
    const size_t line = manual.str().find("\n| `" + std::string(a->name) + "` |");
    ASSERT_NE(line, std::string::npos) << a->name;
    const std::string text =
        manual.str().substr(line + 1, manual.str().find('\n', line + 1) - line);
    const std::string side = std::to_string(a->min_size);
    EXPECT_NE(text.find("| 8 to " + std::to_string(a->max_bits) + " | " + side + "x" + side + " |"),
              std::string::npos)
        << text;
  }
}

}  // namespace
}  // namespace vistrel
