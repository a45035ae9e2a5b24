// From frames to pictures whose samples can be worked out by hand.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

uint32_t slope(uint32_t x, uint32_t y) { return 300 * y + 11 * x; }

// Red 160, green 96, blue 48 of a 2x2 block that begins with red.
uint32_t plainRggb(uint32_t x, uint32_t y) { return (x + y) % 2 ? 96 : y % 2 ? 48 : 160; }

void expectDone(const Finished& result) {
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out, "");
}

void expectPlain(const Picture& picture, const std::vector<uint16_t>& colour) {
  ASSERT_EQ(picture.channels, colour.size());
  for (size_t i = 0; i < picture.samples.size(); ++i)
    ASSERT_EQ(picture.samples[i], colour[i % colour.size()]) << "sample " << i;
}

TEST(Convert, MonoPgmIsUnchanged) {
  const Scratch scratch;
  const std::string file = pgm(17, 5, 255, slope);
  scratch.write("in.pgm", file);
  expectDone(scratch.vistrel("convert in.pgm --phase mono -o out.pgm"));
  EXPECT_EQ(scratch.read("out.pgm"), file);
}

TEST(Convert, SixteenBitPgmIsBigEndian) {
  const Scratch scratch;
  const std::string file = pgm(17, 5, 4095, slope);
  scratch.write("in.pgm", file);
  expectDone(scratch.vistrel("convert in.pgm --phase mono --depth 16 -o out.pgm"));
  EXPECT_EQ(scratch.read("out.pgm"), file);
  expectDone(scratch.vistrel("convert in.pgm --phase mono -o out8.pgm"));
  EXPECT_EQ(scratch.read("out8.pgm"),
            pgm(17, 5, 255, [](uint32_t x, uint32_t y) { return slope(x, y) >> 4; }));
}

TEST(Convert, HeadersMayHaveCommentsAndAnyWhiteSpace) {
  const Scratch scratch;
  const std::string samples = "\n#9 abcdef";  // the first is a newline, the second a hash
  scratch.write("in.pgm", "P5 #made by hand\n\t# 9 9\r\n5#wide\n \v\f2\n#\n\n255 " + samples);
  expectDone(scratch.vistrel("convert in.pgm --phase mono -o out.pgm"));
  EXPECT_EQ(scratch.read("out.pgm"), "P5\n5 2\n255\n" + samples);
  scratch.write("in.pgm", "P5#\n5 2 255# the last\n" + samples);
  expectDone(scratch.vistrel("convert in.pgm --phase mono -o out.pgm"));
  EXPECT_EQ(scratch.read("out.pgm"), "P5\n5 2\n255\n" + samples);
}

TEST(Convert, DepthFollowsMaxval) {
  const Scratch scratch;
  const auto top = [](uint32_t maxval) {
    return pgm(1, 1, maxval, [=](uint32_t, uint32_t) { return maxval; });
  };
  // If all bits of the detected depth are set, the result is 255.
  for (const uint32_t maxval : {511u, 1023u, 2047u, 4095u, 8191u, 16383u, 32767u, 65535u}) {
    scratch.write("in.pgm", top(maxval));
    expectDone(scratch.vistrel("convert in.pgm --phase mono -o out.png"));
    EXPECT_EQ(readPng(scratch / "out.png").samples[0], 255) << maxval;
  }
  scratch.write("in.pgm", top(4092));  // unspecified depth: 16 bits
  EXPECT_EQ(
      scratch.vistrel("convert in.pgm --phase mono -o out.png").err,
      "vistrel: in.pgm: using 16 bits, only 12 of which are set; --bits 12 would use those\n");
  EXPECT_EQ(readPng(scratch / "out.png").samples[0], 15);
  scratch.write("in.pgm", top(100));  // one byte, eight bits
  expectDone(scratch.vistrel("convert in.pgm --phase mono -o out.png"));
  EXPECT_EQ(readPng(scratch / "out.png").samples[0], 100);
}

TEST(Convert, PngHasRedGreenBlue) {
  const Scratch scratch;
  scratch.write("in.pgm", pgm(12, 10, 255, plainRggb));
  expectDone(scratch.vistrel("convert in.pgm --phase rggb -o out.png"));
  const Picture picture = readPng(scratch / "out.png");
  EXPECT_EQ(picture.width, 12u);
  EXPECT_EQ(picture.height, 10u);
  EXPECT_EQ(picture.bits, 8u);
  EXPECT_EQ(picture.significant, 0u);
  expectPlain(picture, {160, 96, 48});
}

TEST(Convert, PpmHasRedGreenBlue) {
  const Scratch scratch;
  scratch.write("in.pgm", pgm(2, 2, 255, plainRggb));
  expectDone(scratch.vistrel("convert in.pgm --phase rggb -o out.ppm"));
  EXPECT_EQ(scratch.read("out.ppm"), "P6\n2 2\n255\n\xA0`0\xA0`0\xA0`0\xA0`0");
  scratch.write("in.pgm", pgm(2, 2, 1023, plainRggb));
  expectDone(scratch.vistrel("convert in.pgm --phase rggb --depth 16 -o out.ppm"));
  const std::string pixel("\0\xA0\0`\0000", 6);
  EXPECT_EQ(scratch.read("out.ppm"), "P6\n2 2\n1023\n" + pixel + pixel + pixel + pixel);
}

// Ten bits are scaled to sixteen by repeating the highest ones: v * 64 + v / 16.
TEST(Convert, PngOfSixteenBitsReachesFromBlackToWhite) {
  const Scratch scratch;
  scratch.write("in.pgm", pgm(1024, 1, 1023, [](uint32_t x, uint32_t) { return x; }));
  expectDone(scratch.vistrel("convert in.pgm --phase mono --depth 16 -o out.png"));
  const Picture picture = readPng(scratch / "out.png");
  EXPECT_EQ(picture.bits, 16u);
  EXPECT_EQ(picture.significant, 10u);
  for (uint32_t v = 0; v < 1024; ++v) ASSERT_EQ(picture.samples[v], v * 64 + v / 16);
  scratch.write("in.pgm", pgm(4, 4, 65535, [](uint32_t, uint32_t) { return 0xF234; }));
  expectDone(scratch.vistrel("convert in.pgm --phase rggb --depth 16 -o out.png"));
  EXPECT_EQ(readPng(scratch / "out.png").significant, 0u);
  expectPlain(readPng(scratch / "out.png"), {0xF234, 0xF234, 0xF234});
}

TEST(Convert, RegionMovesThePhase) {
  const Scratch scratch;
  scratch.write("in.pgm", pgm(12, 10, 255, plainRggb));
  for (const std::string origin : {"+0+0", "+1+0", "+0+1", "+1+1", "+2+3"}) {
    expectDone(scratch.vistrel("convert in.pgm --phase rggb -o out.png --roi 7x5" + origin));
    const Picture picture = readPng(scratch / "out.png");
    EXPECT_EQ(picture.width, 7u);
    EXPECT_EQ(picture.height, 5u);
    expectPlain(picture, {160, 96, 48});
  }
}

TEST(Convert, BinningRoundsTheRegionDown) {
  const Scratch scratch;
  scratch.write("in.pgm", pgm(12, 10, 255, [](uint32_t, uint32_t) { return 50; }));
  expectDone(scratch.vistrel("convert in.pgm --phase mono --bin 3 --roi 11x8+1+2 -o out.png"));
  const Picture picture = readPng(scratch / "out.png");
  EXPECT_EQ(picture.width, 3u);
  EXPECT_EQ(picture.height, 2u);
  expectPlain(picture, {150});
}

TEST(Convert, WindowAndCurve) {
  const Scratch scratch;
  scratch.write("in.pgm", pgm(2, 2, 4095, [](uint32_t, uint32_t) { return 256; }));
  const auto sample = [&scratch](const std::string& option) {
    expectDone(scratch.vistrel("convert in.pgm --phase gbrg -o out.png " + option));
    return readPng(scratch / "out.png").samples[0];
  };
  EXPECT_EQ(sample(""), 16);
  EXPECT_EQ(sample("--window 0"), 16);
  EXPECT_EQ(sample("--window 1"), 32);
  EXPECT_EQ(sample("--window 2"), 64);
  EXPECT_EQ(sample("--curve 2"), 32);  // 64 of 1024 becomes 128
  EXPECT_EQ(sample("--curve 4"), 64);  // 64 of 1024 becomes 256
  EXPECT_EQ(sample("--curve 5"), 8);   // 64 of 1024 becomes 32
}

TEST(Convert, MaskDropsExcessBits) {
  const Scratch scratch;
  scratch.write("in.pgm", pgm(2, 2, 65535, [](uint32_t, uint32_t) { return 0xF000 + 512; }));
  expectDone(scratch.vistrel("convert in.pgm --phase mono --bits 10 --mask -o out.png"));
  expectPlain(readPng(scratch / "out.png"), {128});
}

TEST(Convert, HeaderlessRawFile) {
  const Scratch scratch;
  // Two rows of three 16-bit samples, after one byte, with four bytes of padding.
  scratch.write("in.raw", std::string("?\x01\x00\x02\x00\x00\x03....\x00\x01\x00\x02\x03\x00", 17));
  const std::string options =
      "convert in.raw -s 3x2 --bits 12 --phase mono --depth 16 --skip 1 --stride 10 -o out.pgm ";
  expectDone(scratch.vistrel(options));
  EXPECT_EQ(
      scratch.read("out.pgm"),
      "P5\n3 2\n4095\n" + std::string("\x00\x01\x00\x02\x03\x00\x01\x00\x02\x00\x00\x03", 12));
  expectDone(scratch.vistrel(options + "--endian big"));
  EXPECT_EQ(
      scratch.read("out.pgm"),
      "P5\n3 2\n4095\n" + std::string("\x01\x00\x02\x00\x00\x03\x00\x01\x00\x02\x03\x00", 12));
}

TEST(Convert, NameSpecifiesBitsAndPhase) {
  const Scratch scratch;
  scratch.write("a_10b_rggb.pgm", pgm(4, 4, 65535, plainRggb));
  expectDone(scratch.vistrel("convert a_10b_rggb.pgm --from-name -o out.png"));
  expectPlain(readPng(scratch / "out.png"), {40, 24, 12});
  scratch.write("a_9b.pgm", pgm(4, 4, 65535, [](uint32_t, uint32_t) { return 100; }));
  // A name of bits alone leaves the phase open.
  const Finished open = scratch.vistrel("convert a_9b.pgm --from-name -o no.png");
  EXPECT_EQ(open.status, 3);
  EXPECT_EQ(open.err,
            "vistrel: a_9b.pgm: --phase is missing, and file and name do not specify it. It names "
            "the colours of the 2x2 block in the top left corner of the frame: rggb, bggr, grbg or "
            "gbrg; mono is for a frame without colour filters. With --from-name a name such as "
            "rose_12b_rggb.pgm specifies it\n");
  expectDone(scratch.vistrel("convert a_9b.pgm --from-name --phase mono -o out.png"));
  expectPlain(readPng(scratch / "out.png"), {50});
  scratch.write("a_9b_mono.pgm", scratch.read("a_9b.pgm"));
  expectDone(scratch.vistrel("convert a_9b_mono.pgm --from-name -o out.png"));
  // Options override it.
  EXPECT_EQ(
      scratch.vistrel("convert a_9b_mono.pgm --from-name --bits 8 --phase grbg -o out.png").err,
      "vistrel: a_9b_mono.pgm: using 8 bits; its name says 9\n"
      "vistrel: a_9b_mono.pgm: using grbg; its name says mono\n");
  expectPlain(readPng(scratch / "out.png"), {100, 100, 100});
  for (const std::string name : {"a_99b.pgm", "a_10b_rgbb.pgm", "a10b.pgm", "a_10b_rggb_1.pgm"}) {
    scratch.write(name, pgm(4, 4, 255, plainRggb));
    EXPECT_EQ(scratch.vistrel("convert " + name + " --from-name -o no.png").status, 3) << name;
  }
}

TEST(Convert, TurnsClockwise) {
  const Scratch scratch;
  scratch.write("in.pgm", pgm(3, 2, 255, [](uint32_t x, uint32_t y) { return 3 * y + x + 1; }));
  const auto expect = [&](const std::string& how, const std::string& pixels) {
    expectDone(scratch.vistrel("convert in.pgm --phase mono -o out.pgm --orient " + how));
    const std::string file = scratch.read("out.pgm");
    EXPECT_EQ(file.substr(file.size() - 6), pixels) << how;
  };
  expect("90", "\4\1\5\2\6\3");
  expect("180", "\6\5\4\3\2\1");
  expect("270", "\3\6\2\5\1\4");
  expect("mirrored", "\3\2\1\6\5\4");
  expect("4", "\4\5\6\1\2\3");
}

TEST(Convert, BinsToMeans) {
  const Scratch scratch;
  scratch.write("in.pgm", pgm(2, 2, 255, [](uint32_t x, uint32_t y) { return 100 + 10 * x + y; }));
  expectDone(scratch.vistrel("convert in.pgm --phase mono --bin 2 --bin-means -o out.pgm"));
  EXPECT_EQ(scratch.read("out.pgm").back(), 106);  // 422 / 4, rounded up
}

TEST(Convert, TakesFourBlackLevels) {
  const Scratch scratch;
  scratch.write("in.pgm", pgm(16, 12, 255, plainRggb));
  expectDone(scratch.vistrel("convert in.pgm --phase rggb --black 60:6:16:8 -o out.png"));
  // Greens of 90 and 80 are mixed.
  const Picture picture = readPng(scratch / "out.png");
  EXPECT_EQ(picture.at(8, 6, 0), 100);
  EXPECT_EQ(picture.at(8, 6, 2), 40);
  for (const char* const bad : {"1:2", "1:2:3", "1:2:3:4:5", "1:2:3:", "a", "65536", "-1"})
    EXPECT_EQ(scratch.vistrel(std::string("convert in.pgm -o x.png --black ") + bad).status, 2)
        << bad;
}

TEST(Convert, NamesTheOptionOfABadLevel) {
  const Scratch scratch;
  scratch.write("in.pgm", pgm(16, 12, 255, plainRggb));
  const auto errorOf = [&](const std::string& options) {
    return scratch.vistrel("convert in.pgm --phase rggb -o out.png " + options).err;
  };
  EXPECT_NE(errorOf("--white 256").find("--white 256: samples of 8 bits"), std::string::npos);
  EXPECT_NE(errorOf("--bin 2 --bin-means --format gray8 --gray raw").find("--bin-means"),
            std::string::npos);
}

// A colour cast on the left, none on the right.
TEST(Convert, BalancesByARegion) {
  const Scratch scratch;
  scratch.write("in.pgm", pgm(32, 16, 255, [](uint32_t x, uint32_t y) {
                  return x < 16 ? plainRggb(x, y) : 100u;
                }));
  const auto noteOf = [&](const std::string& balance) {
    return scratch.vistrel("convert in.pgm --phase rggb -o out.png --wb " + balance).err;
  };
  EXPECT_NE(noteOf("auto:12x16+2+0").find("--wb 1.0000,1.6667,3.3333"), std::string::npos);
  EXPECT_NE(noteOf("auto:12x16+20+0").find("--wb 1.0000,1.0000,1.0000"), std::string::npos);
  EXPECT_NE(noteOf("auto:99x16+20+0").find("--wb auto:99x16+20+0: it extends beyond the frame"),
            std::string::npos);
}

}  // namespace
}  // namespace vistrel
