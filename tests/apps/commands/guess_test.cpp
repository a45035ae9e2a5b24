// vistrel guess, as a process.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/apps/program.h"

namespace vistrel {
namespace {

TEST(Guess, Program) {
  const Scratch scratch;
  scratch.vistrel("scene -s 400x300 --bits 12 --phase gbrg -o scene.pgm");
  const std::string pgm = scratch.read("scene.pgm");
  scratch.write("in.raw", pgm.substr(pgm.size() - 400 * 300 * 2));  // big-endian
  const Finished result = scratch.vistrel("guess in.raw --json");
  ASSERT_EQ(result.status, 0) << result.err;
  const auto best = nlohmann::json::parse(result.out)[0];
  EXPECT_EQ(best["width"], 400);
  EXPECT_EQ(best["height"], 300);
  EXPECT_EQ(best["packing"], "16bit-be");
  EXPECT_EQ(best["bits"], 12);
  EXPECT_EQ(best["command"],
            "vistrel convert in.raw -s 400x300 --bits 12 --endian big --phase grbg -o guess.png");
  EXPECT_EQ(best["phases"], (nlohmann::json{"grbg", "gbrg"}));
  // The command line works.
  EXPECT_EQ(scratch.vistrel(best["command"].get<std::string>().substr(8)).status, 0);
  const std::string text = scratch.vistrel("guess in.raw").out;
  EXPECT_EQ(text.substr(0, text.find('\n')), best["command"]);
  EXPECT_NE(text.find("Red and blue cannot be told apart"), std::string::npos);
}

// Rows of 400 words, of 840 bytes each, after a header of 512 bytes; two frames.
TEST(Guess, PaddedRowsHeaderAndFrames) {
  const Scratch scratch;
  scratch.vistrel("scene -s 400x300 --bits 12 --phase rggb -o scene.pgm");
  const std::string pgm = scratch.read("scene.pgm");
  std::string raw(512, 'h');
  for (int frame = 0; frame < 2; ++frame)
    for (size_t y = 0; y < 300; ++y)
      raw += pgm.substr(pgm.size() - (300 - y) * 800, 800) + std::string(40, '\0');
  scratch.write("in.raw", raw);
  const Finished result = scratch.vistrel("guess in.raw --json");
  ASSERT_EQ(result.status, 0) << result.err;
  const auto best = nlohmann::json::parse(result.out)[0];
  EXPECT_EQ(best["stride"], 840);
  EXPECT_EQ(best["skip"], 512);
  EXPECT_EQ(best["frames"], 2);
  EXPECT_EQ(best["trailing"], 0);
  EXPECT_EQ(best["command"],
            "vistrel convert in.raw -s 400x300 --bits 12 --endian big --phase rggb --stride 840 "
            "--skip 512 --frame 0 -o guess.png");
  EXPECT_EQ(scratch.vistrel(best["command"].get<std::string>().substr(8)).status, 0);
  EXPECT_EQ(scratch.vistrel("guess in.raw -s 400x300").out.substr(0, 15), "vistrel convert");
}

TEST(Guess, PathsAreQuoted) {
  const Scratch scratch;
  scratch.vistrel("scene -s 400x300 --bits 12 --phase rggb -o scene.pgm");
  const std::string pgm = scratch.read("scene.pgm");
  scratch.write("it's mine.raw", pgm.substr(pgm.size() - 400 * 300 * 2));
  const Finished result = scratch.run({VISTREL_PROGRAM, "guess", "it's mine.raw"});
  EXPECT_EQ(result.out.find("vistrel convert 'it'\\''s mine.raw' -s 400x300 "), 0u) << result.out;
  // Not taken for options.
  std::filesystem::rename(scratch / "it's mine.raw", scratch / "-1.raw");
  const std::string dash = scratch.vistrel("guess -- -1.raw").out;
  const std::string command = dash.substr(0, dash.find('\n'));
  EXPECT_EQ(command.find("vistrel convert ./-1.raw -s 400x300 "), 0u) << command;
  EXPECT_EQ(scratch.vistrel(command.substr(8)).status, 0);
}

void expectRejection(const Scratch& scratch, const std::string& arguments, int status,
                     const std::string& text) {
  const Finished result = scratch.vistrel("guess " + arguments);
  EXPECT_EQ(result.status, status) << arguments;
  EXPECT_EQ(result.err, "vistrel: " + text + "\n");
  EXPECT_EQ(result.out, "");
}

TEST(Guess, Errors) {
  const Scratch scratch;
  expectRejection(scratch, "none.raw", 4, "none.raw: cannot be read: No such file or directory");
  scratch.write("empty.raw", "");
  expectRejection(scratch, "empty.raw", 3, "empty.raw: nothing looks like a frame");
  scratch.write("zeros.raw", std::string(640 * 480, '\0'));
  expectRejection(scratch, "zeros.raw", 3, "zeros.raw: nothing looks like a frame");
  expectRejection(scratch, "zeros.raw -s 640x480", 3,
                  "zeros.raw: nothing looks like a frame of 640x480 pixels");
  scratch.write("long.raw", "");
  std::filesystem::resize_file(scratch / "long.raw", (1 << 30) + 1);
  expectRejection(scratch, "long.raw", 3,
                  "long.raw: it has 1073741825 bytes: at most 1073741824 are allowed");
  scratch.write("prime.raw", std::string(1009, 'a'));
  expectRejection(scratch, "prime.raw -s 30", 2,
                  "--size 30: WxH is expected, both at least 1, such as 640x480");
}

}  // namespace
}  // namespace vistrel
