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
  EXPECT_NE(scratch.vistrel("guess in.raw").out.find("Red and blue cannot be told apart"),
            std::string::npos);
}

TEST(Guess, PathsAreQuoted) {
  const Scratch scratch;
  scratch.write("it's mine.raw", std::string(32 * 32, 'a'));
  const Finished result = scratch.run({VISTREL_PROGRAM, "guess", "it's mine.raw"});
  EXPECT_NE(result.out.find("vistrel convert 'it'\\''s mine.raw' -s 32x32 "), std::string::npos)
      << result.out;
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
  for (const int bytes : {0, 255}) {
    scratch.write("short.raw", std::string(static_cast<size_t>(bytes), 'a'));
    expectRejection(
        scratch, "short.raw", 3,
        "short.raw: it has " + std::to_string(bytes) + " bytes: 256 to 134217728 are allowed");
  }
  scratch.write("long.raw", "");
  std::filesystem::resize_file(scratch / "long.raw", (128 << 20) + 1);
  expectRejection(scratch, "long.raw", 3,
                  "long.raw: it has 134217729 bytes: 256 to 134217728 are allowed");
  scratch.write("prime.raw", std::string(1009, 'a'));
  expectRejection(scratch, "prime.raw", 3, "prime.raw: no size fits 1009 bytes");
  expectRejection(scratch, "prime.raw -s 30x30", 3,
                  "prime.raw: no packing of 30x30 pixels takes 1009 bytes");
  expectRejection(scratch, "prime.raw -s 30", 2,
                  "--size 30: WxH is expected, both at least 1, such as 640x480");
}

}  // namespace
}  // namespace vistrel
