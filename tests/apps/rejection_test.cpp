// Rejections by the host layer name options and samples, never the host layer's arguments.
#include "apps/rejection.h"

#include <gtest/gtest.h>

#include <cstring>
#include <regex>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

Error rejectionOf(const char* argument, const char* value, const char* reason) {
  vistrel_error error{};
  std::strcpy(error.argument, argument);
  std::strcpy(error.value, value);
  std::strcpy(error.reason, reason);
  std::strcpy(error.text, "as the host layer says it");
  return Error(error);
}

TEST(RejectionText, HasTheOptionBehindTheArgument) {
  const Error error = rejectionOf("conversion.region", "3x2+1+0", "it is empty");
  EXPECT_EQ(app::textOf(error), "--roi 3x2+1+0: it is empty");
  EXPECT_EQ(app::textOf(error, {{"conversion.region", "--crop"}}), "--crop 3x2+1+0: it is empty");
  EXPECT_EQ(app::textOf(error, {{"conversion.black[0]", "--black"},
                                {"conversion.region", "--crop", "typed", "take a larger one"}}),
            "--crop typed: it is empty; take a larger one");
}

TEST(RejectionText, IsTheHostLayersOwnIfNoOptionIsBehindIt) {
  EXPECT_EQ(app::textOf(rejectionOf("stream", "", "")), "as the host layer says it");
}

// What the program says of command lines that the host layer rejects.
struct Rejections : ::testing::Test {
  Scratch scratch;

  Rejections() {
    scratch.write("large.pgm", pgm(40, 30, 65535, [](uint32_t x, uint32_t y) {
                    return x == 33 && y == 20 ? 1060u : 7u;
                  }));
    scratch.write("deep.pgm", pgm(40, 30, 4095, [](uint32_t x, uint32_t) { return x; }));
    scratch.write("bytes.pgm", pgm(40, 30, 255, [](uint32_t x, uint32_t) { return x; }));
    scratch.write("narrow.raw", "12345678");
    std::string line;
    for (int i = 0; i < 4096; ++i) line += "7 ";
    scratch.write("curve.txt", line);
  }

  void expect(const std::string& arguments, const std::string& text) const {
    const Finished result = scratch.vistrel(arguments);
    EXPECT_EQ(result.status, 3) << arguments;
    EXPECT_EQ(result.err, "vistrel: " + text + "\n") << arguments;
  }
};

TEST_F(Rejections, SampleWithExcessBits) {
  const std::string text =
      "large.pgm: sample 1060 at column 33, row 20: samples of 10 bits are at most 1023";
  for (const char* command : {"convert large.pgm -o x.png", "compare large.pgm -a near -o x.png",
                              "bench large.pgm -a near --rounds 1"})
    expect(std::string(command) + " --phase rggb --bits 10", text);
}

TEST_F(Rejections, Region) {
  const std::string raw = " narrow.raw -s 1x8 --bits 8 --phase rggb";
  const std::string reason = "algorithm bilinear needs 2x2 pixels or more";
  expect("convert" + raw + " -o x.png", "narrow.raw: frame 1x8: " + reason);
  expect("convert" + raw + " -o x.png --roi 1x7+0+1", "narrow.raw: --roi 1x7+0+1: " + reason);
  expect("compare" + raw + " -o x.png", "narrow.raw: --crop 1x8+0+0: " + reason);
  expect("compare" + raw + " -o x.png --crop 1x2+0+3", "narrow.raw: --crop 1x2+0+3: " + reason);
  expect("bench" + raw + " -a bilinear --rounds 1", "narrow.raw: frame 1x8: " + reason);
  expect("convert" + raw + " -o x.png --edges padded",
         "narrow.raw: frame 1x8: padding a mosaic takes at least 2 columns and 2 rows");
  const std::string beyond = "40x30+1+0: it extends beyond the frame of 40x30";
  const std::string pgm = " bytes.pgm --phase rggb -o x.png ";
  expect("convert" + pgm + "--roi 40x30+1+0", "bytes.pgm: --roi " + beyond);
  expect("compare" + pgm + "--crop 40x30+1+0", "bytes.pgm: --crop " + beyond);
  expect("compare" + pgm + "--crop 4x0+1+0", "bytes.pgm: --crop 4x0+1+0: it is empty");
}

TEST_F(Rejections, Conversion) {
  const std::string pgm = "convert bytes.pgm --phase rggb -o x.png ";
  const std::string deep = "convert deep.pgm --phase rggb -o x.png ";
  expect(pgm + "--format gray8 --gray raw --edges padded",
         "bytes.pgm: --edges padded: raw gray has native edges only");
  expect(pgm + "--format gray8 --gray raw -a near",
         "bytes.pgm: --gray raw: algorithm near has none");
  expect(pgm + "--black 256", "bytes.pgm: --black 256: samples of 8 bits allow 0 to 255");
  expect(pgm + "--window 1", "bytes.pgm: --window 1: it needs 9 bits or more; the samples have 8");
  expect("compare bytes.pgm --phase rggb -o x.png --window 2",
         "bytes.pgm: --window 2: it needs 10 bits or more; the samples have 8");
  expect("convert bytes.pgm --phase mono -o x.png --wb auto",
         "bytes.pgm: --wb auto: a mono frame has no colours");
  expect(deep + "-a kimmel",
         "deep.pgm: --algorithm kimmel: it supports at most 10 bits; the samples have 12; --depth "
         "reduce10 drops the lowest bits first");
}

// Every command, with files and options that don't fit each other.
TEST_F(Rejections, NoMessageNamesAnArgumentOfTheHostLayer) {
  const std::regex argument("\\b(conversion|frame|packed|image)\\.[a-z]");
  const auto expectNone = [&](const std::string& arguments) {
    const Finished result = scratch.vistrel(arguments);
    EXPECT_FALSE(std::regex_search(result.err, argument)) << arguments << "\n" << result.err;
  };
  const std::string inputs[] = {"large.pgm", "bytes.pgm", "narrow.raw -s 1x8",
                                "narrow.raw -s 2x2 --pixfmt Mono12p --stride 1"};
  const std::string commands[] = {"convert -o x.png --phase rggb ",
                                  "convert -o x.png --phase mono --wb 1,2,3 ",
                                  "compare -o x.png --phase grbg ",
                                  "bench --rounds 1 --phase rggb -a vng ",
                                  "unpack -o x.pgm ",
                                  "info "};
  const std::string options[] = {"",
                                 "--bits 8",
                                 "--bits 10",
                                 "--align high --bits 9",
                                 "--format bgr48",
                                 "--bits 10 --curve curve.txt",
                                 "--black 65535",
                                 "-a laroche"};
  for (const std::string& command : commands)
    for (const std::string& input : inputs)
      for (const std::string& option : options) expectNone(command + input + " " + option);
  for (const char* arguments :
       {"mosaic bytes.pgm -o y.pgm", "report --reference bytes.pgm", "guess narrow.raw",
        "guess narrow.raw -s 1x8", "scene -o y.pgm --bits 17", "cfa rggb --crop 0x1+0+0"})
    expectNone(arguments);
}

}  // namespace
}  // namespace vistrel
