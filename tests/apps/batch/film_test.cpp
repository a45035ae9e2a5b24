// Pictures one after the other: in standard output, in a Y4M.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"
#include "tests/sanitizer.h"

namespace vistrel {
namespace {

// Frames of 4x2 samples of 8 bits.
struct Films : ::testing::Test {
  Scratch scratch;
  const std::string format = " -s 4x2 --bits 8 --phase rggb ";
  const std::string kHead = "YUV4MPEG2 W4 H2 F25:1 Ip A1:1 C420jpeg XCOLORRANGE=LIMITED\n";

  static std::string flat(int value) { return std::string(8, static_cast<char>(value)); }
  // Runs a line of a shell in which $V is the program.
  Finished shell(const std::string& line) const {
    return scratch.run({"timeout", "60", "sh", "-c", "V=$0; " + line, VISTREL_PROGRAM});
  }
};

std::string times(size_t n, const std::string& text) {
  std::string all;
  for (size_t i = 0; i < n; ++i) all += text;
  return all;
}

std::string bytes(std::initializer_list<int> values) {
  return std::string(values.begin(), values.end());
}

TEST_F(Films, HavePicturesOneAfterTheOther) {
  scratch.write("in.raw", flat(1) + flat(2) + flat(3));
  const std::string raw = std::string(24, 1) + std::string(24, 2) + std::string(24, 3);
  const Finished file = scratch.vistrel("convert in.raw -o raw:-" + format);
  EXPECT_EQ(file.out, raw);
  EXPECT_EQ(file.err, "");
  EXPECT_EQ(file.summary.rfind("vistrel: 3 made, 0 failed in ", 0), 0u) << file.summary;
  EXPECT_EQ(shell("cat in.raw | $V convert - -o raw:-" + format).out, raw);
  const std::string head = "P6\n4 2\n255\n";
  EXPECT_EQ(shell("cat in.raw | $V convert - -o -" + format).out,
            head + raw.substr(0, 24) + head + raw.substr(24, 24) + head + raw.substr(48));
  EXPECT_EQ(shell("cat in.raw | $V convert - -o raw:- --frame 1" + format).out, raw.substr(24, 24));
  EXPECT_EQ(scratch.vistrel("convert in.raw in.raw -o raw:- --frame 2" + format).out,
            times(2, raw.substr(48)));
}

TEST_F(Films, AreOfAnyThreads) {
  std::string frames;
  for (int i = 0; i < 64 * 64 * 3; ++i) frames += static_cast<char>(i * i % 251);
  scratch.write("in.raw", frames);
  const std::string options = "convert in.raw -s 64x64 --bits 8 --phase gbrg -o ppm:- -j ";
  const Finished one = scratch.vistrel(options + "1");
  EXPECT_EQ(one.out.size(), 3 * (13 + 64 * 64 * 3u));
  EXPECT_EQ(scratch.vistrel(options + "3").out, one.out);
}

// White has the luma 235, black 16, both the chroma 128.
TEST_F(Films, OfY4mAreInLimitedRange) {
  scratch.write("in.raw", flat(255) + flat(0));
  const std::string white = std::string(8, '\xEB'), black = std::string(8, 16);
  const auto grays = [](size_t n) { return std::string(n, '\x80'); };
  EXPECT_EQ(scratch.vistrel("convert in.raw -o y4m:-" + format).out,
            kHead + "FRAME\n" + white + grays(4) + "FRAME\n" + black + grays(4));
  EXPECT_EQ(
      scratch.vistrel("convert in.raw -o new/a.Y4M --format i444 --fps 30000/1001" + format).status,
      0);
  EXPECT_EQ(scratch.read("new/a.Y4M"),
            "YUV4MPEG2 W4 H2 F30000:1001 Ip A1:1 C444 XCOLORRANGE=LIMITED\n"
            "FRAME\n" +
                white + grays(16) + "FRAME\n" + black + grays(16));
  EXPECT_EQ(scratch.vistrel("convert in.raw -s 4x2 --bits 8 --phase mono --frame 0 -o y4m:-").out,
            "YUV4MPEG2 W4 H2 F25:1 Ip A1:1 Cmono XCOLORRANGE=LIMITED\nFRAME\n" + white);
}

// Each frame is sent when the picture of the last one has come out.
TEST_F(Films, FlowWhileFramesArrive) {
  scratch.write("frame", flat(7));
  const std::string wait = "while [ $(wc -c <out) -lt $size ]; do sleep 0.01; done; ";
  const Finished result = shell(": >out; { for size in 24 48 72; do cat frame; " + wait +
                                "done; } | $V convert - -o raw:-" + format + ">out; echo done");
  EXPECT_EQ(result.out, "done\n");
  EXPECT_EQ(scratch.read("out"), std::string(72, 7));
}

TEST_F(Films, SayWhatIsLeftOver) {
  scratch.write("in.raw", flat(1) + "end");
  const std::string left = "3 bytes after the last frame are ignored\n";
  EXPECT_EQ(scratch.vistrel("convert in.raw -o raw:-" + format).err, "vistrel: in.raw: " + left);
  const Finished pipe = shell("cat in.raw | $V convert - -o raw:-" + format);
  EXPECT_EQ(pipe.err, "vistrel: -: " + left);
  EXPECT_EQ(pipe.status, 0);
  const Finished missing = shell("cat in.raw | $V convert - -o raw:- --frame 1" + format);
  EXPECT_EQ(missing.status, 3);
  EXPECT_EQ(missing.err, "vistrel: -: --frame 1: the input ends before it\n");
  const Finished empty = shell("$V convert - -o raw:- </dev/null" + format);
  EXPECT_EQ(empty.status, 3);
  EXPECT_EQ(empty.out, "");
}

// Ten bits in 16: the second frame has a sample of eleven.
TEST_F(Films, GoOnAfterAFailureIfAskedTo) {
  const std::string good = times(8, bytes({1, 2})), bad = times(8, bytes({1, 4}));
  scratch.write("in.raw", good + bad + good);
  const std::string command = "convert in.raw -s 4x2 --bits 10 --phase rggb -o raw:- ";
  const std::string fault =
      "vistrel: in.raw, frame 1: sample 1025 at column 0, row 0: samples of 10 bits are at most "
      "1023";
  const Finished stopped = scratch.vistrel(command);
  EXPECT_EQ(stopped.status, 1);
  EXPECT_EQ(stopped.out.size(), 24u);
  EXPECT_EQ(stopped.err.rfind(fault, 0), 0u) << stopped.err;
  const Finished all = scratch.vistrel(command + "--keep-going");
  EXPECT_EQ(all.status, 1);
  EXPECT_EQ(all.out, times(2, stopped.out));
  EXPECT_EQ(all.summary.rfind("vistrel: 2 made, 1 failed in ", 0), 0u) << all.summary;
  EXPECT_EQ(scratch.vistrel("convert missing.raw in.raw -o raw:-" + format).status, 4);
}

TEST_F(Films, HavePicturesThatAreAlike) {
  const auto one = [](uint32_t, uint32_t) { return 1; };
  scratch.write("a.pgm", pgm(4, 2, 255, one));
  scratch.write("b.pgm", pgm(2, 4, 255, one));
  const Finished result =
      scratch.vistrel("convert a.pgm b.pgm a.pgm --phase mono -o - --keep-going");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, times(2, scratch.read("a.pgm")));
  EXPECT_EQ(result.err,
            "vistrel: b.pgm: 2x4, 1 channel of 8 bits: all pictures must be like the first one\n");
}

TEST_F(Films, HaveOneLook) {
  scratch.write("in.raw", flat(40) + flat(80));
  const std::string develop =
      "develop - --look black=0,white=255,gains=1:1:1,curve=linear -o raw:-" + format;
  const auto frames = [&](const std::string& options) {
    const Finished result = shell("cat in.raw | $V " + develop + options);
    const int lines = options == "--same" ? 1 : 2;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), lines) << result.err;
    EXPECT_EQ(result.out.size(), 48u);
    return result.out;
  };
  const std::string same = frames("--same"), own = frames("");
  EXPECT_LT(static_cast<uint8_t>(same[0]), static_cast<uint8_t>(same[24]));
  EXPECT_EQ(same.substr(0, 24), own.substr(0, 24));
  EXPECT_NE(same, own) << "the second frame's own exposure";
  EXPECT_EQ(shell("$V " + develop + "--same <in.raw").out, same) << "a file, not a pipe";
}

// The line of a film makes the film again; the lines of its frames make their pictures.
TEST_F(Films, AreRepeatedByTheirLines) {
  scratch.write("in.raw", flat(40) + flat(80));
  const Finished same = shell("$V develop in.raw --same -o a.y4m" + format);
  EXPECT_EQ(same.out.rfind("vistrel develop in.raw --phase rggb ", 0), 0u) << same.out;
  const std::string film = scratch.read("a.y4m");
  scratch.write("a.y4m", "");
  EXPECT_EQ(shell("$V" + same.out.substr(7)).status, 0);
  EXPECT_EQ(scratch.read("a.y4m"), film);

  const std::string lines = shell("$V develop in.raw -o a.y4m" + format).out;
  ASSERT_EQ(std::count(lines.begin(), lines.end(), '\n'), 2) << lines;
  EXPECT_NE(lines.find(" --frame 0 "), lines.npos) << lines;
  const size_t second = lines.find('\n') + 1;
  EXPECT_EQ(shell("$V" + lines.substr(second + 7)).status, 0);
  EXPECT_EQ(shell("$V develop in.raw --frame 1 -o b.png" + format).status, 0);
  EXPECT_EQ(scratch.read("a_000001.png"), scratch.read("b.png"));
}

TEST_F(Films, ShowWhatWouldBeDone) {
  scratch.write("in.raw", flat(1) + flat(2));
  const Finished file = scratch.vistrel("convert in.raw -o new/a.y4m --dry-run" + format);
  EXPECT_EQ(file.out, "in.raw -> new/a.y4m: 4x2, colour of 8 bits\n");
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"in.raw"});
}

TEST_F(Films, CannotBeWritten) {
  scratch.write("in.raw", flat(1) + flat(2));
  const Finished full = shell("$V convert in.raw -o raw:- --keep-going >/dev/full" + format);
  EXPECT_EQ(full.status, 4);
  EXPECT_EQ(full.err,
            "vistrel: in.raw, frame 0: raw:- cannot be written: No space left on device\n");
}

#if !VISTREL_SANITIZED
// 10,000 frames are 156 MB and their pictures 234 MB.
TEST_F(Films, OfManyFramesTakeTheMemoryOfOne) {
  const Finished result = scratch.run(
      {"sh", "-c",
       "head -c 163840000 /dev/zero | $0 convert - -s 128x128 --bits 8 --phase rggb -o y4m:- -q |"
       "wc -c",
       VISTREL_PROGRAM},
      [] {
        const rlimit data{32 << 20, 32 << 20};
        setrlimit(RLIMIT_DATA, &data);
      });
  const std::string head = "YUV4MPEG2 W128 H128 F25:1 Ip A1:1 C420jpeg XCOLORRANGE=LIMITED\n";
  EXPECT_EQ(result.out, std::to_string(head.size() + 10'000 * (6 + 128 * 128 * 3 / 2)) + "\n");
  EXPECT_EQ(result.err, "");
}
#endif

// What it makes of the planes are the samples that we gave it.
TEST_F(Films, AreReadByFfmpeg) {
  if (shell("command -v ffmpeg").status != 0) GTEST_SKIP() << "no ffmpeg";
  std::string frames;
  for (int i = 0; i < 3 * 6 * 4 * 3 / 2; ++i) frames += static_cast<char>(i * i * 7 % 256);
  scratch.write("frames.raw", frames);
  const std::string convert = "$V convert - -s 6x4 --pixfmt BayerRG12p <frames.raw ";
  const std::string ffmpeg = " | ffmpeg -v error -i - -f rawvideo -";
  for (const auto& [name, pixels] : {std::pair{"i420", 36u}, {"i444", 72u}}) {
    const std::string format_ = std::string("--format ") + name;
    const Finished raw = shell(convert + format_ + " -o raw:-");
    EXPECT_EQ(raw.out.size(), 3 * pixels);
    EXPECT_EQ(shell(convert + format_ + " -o y4m:-" + ffmpeg).out, raw.out) << name;
  }
}

}  // namespace
}  // namespace vistrel
