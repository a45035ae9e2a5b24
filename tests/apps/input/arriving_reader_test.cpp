// Headerless frames from pipes.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <thread>

#include "apps/error.h"
#include "apps/input/readers.h"
#include "tests/apps/program.h"
#include "tests/sanitizer.h"

namespace vistrel {
namespace {

using namespace app;

struct Arriving : ::testing::Test {
  Scratch scratch;
  InputOptions options;
  std::thread writer;

  Arriving() {
    options.size = Size{3, 2};
    options.bits = 8;
    options.arriving = true;
    mkfifo((scratch / "pipe").c_str(), 0600);
  }
  ~Arriving() override { writer.join(); }

  // Opens a pipe through which these parts come, one after the other.
  std::unique_ptr<Reader> opened(const std::vector<std::string>& parts) {
    writer = std::thread([this, parts] {
      const int pipe = open((scratch / "pipe").c_str(), O_WRONLY);
      for (const std::string& part : parts) {
        EXPECT_EQ(write(pipe, part.data(), part.size()), static_cast<ssize_t>(part.size()));
        usleep(1000);
      }
      close(pipe);
    });
    return openArriving(scratch / "pipe", options);
  }
  static std::string frame(Reader& reader, uint64_t n) {
    std::string samples(6, ' ');
    reader.read(n, samples.data());
    return samples;
  }
};

TEST_F(Arriving, ComesInAnyPieces) {
  const auto reader = opened({"abc", "defgh", "i", "jkl"});
  EXPECT_TRUE(reader->has(0));
  EXPECT_EQ(frame(*reader, 0), "abcdef");
  EXPECT_TRUE(reader->has(1));
  EXPECT_TRUE(reader->has(1)) << "asked again";
  EXPECT_EQ(frame(*reader, 1), "ghijkl");
  EXPECT_FALSE(reader->has(2));
  EXPECT_EQ(reader->description().trailing, 0u);
}

// Each row has a byte of padding, but the last frame ends with its last sample.
TEST_F(Arriving, SkipsHeaderAndPadding) {
  options.skip = 20;
  options.stride = 4;
  const auto reader = opened({std::string(20, '-') + "abc.def.ghi.jkl"});
  EXPECT_TRUE(reader->has(0));
  EXPECT_EQ(frame(*reader, 0), "abcdef");
  EXPECT_TRUE(reader->has(1));
  EXPECT_EQ(frame(*reader, 1), "ghijkl");
  EXPECT_FALSE(reader->has(2));
}

TEST_F(Arriving, PassesFramesThatNobodyWants) {
  const auto reader = opened({"abcdefghijklmnopqr"});
  EXPECT_TRUE(reader->has(2));
  EXPECT_EQ(frame(*reader, 2), "mnopqr");
}

TEST_F(Arriving, CountsWhatIsLeftOver) {
  const auto reader = opened({"abcdefgh"});
  EXPECT_TRUE(reader->has(0));
  EXPECT_FALSE(reader->has(1));
  EXPECT_EQ(reader->description().trailing, 2u);
}

TEST_F(Arriving, IsTooShort) {
  options.skip = 2;
  const auto reader = opened({"abcdefg"});
  const Outcome outcome = attempt([&] { reader->has(0); });
  EXPECT_EQ(outcome.status, kRejected);
  EXPECT_EQ(outcome.text, "the input is too short: 3x2 samples of 8 bits do not fit its 7 bytes");
}

TEST_F(Arriving, IsNoFile) {
  writer = std::thread([] {});
  scratch.write("file", "abcdef");
  EXPECT_FALSE(isArriving(scratch / "file", options));
  EXPECT_FALSE(isArriving(scratch / "", options)) << "a folder";
  EXPECT_FALSE(isArriving(scratch / "missing", options));
  EXPECT_TRUE(isArriving(scratch / "pipe", options));
  options.arriving = false;
  EXPECT_FALSE(isArriving(scratch / "pipe", options));
}

#if !VISTREL_SANITIZED
// 7 GB, of which 6 bytes are there.
TEST(Headerless, LargeFramesTakeNoMemoryBeforeTheyAreThere) {
  const Scratch scratch;
  scratch.write("in.raw", "abcdef");
  for (const std::string input :
       {"convert in.raw", "convert - <in.raw", "cat in.raw | $0 convert -"}) {
    const std::string program = input[1] == 'a' ? "" : "exec $0 ";
    const Finished result = scratch.run(
        {"sh", "-c", program + input + " -s 60000x60000 --bits 16 --phase rggb -o raw:-",
         VISTREL_PROGRAM},
        [] {
          const rlimit data{32 << 20, 32 << 20};
          setrlimit(RLIMIT_DATA, &data);
        });
    EXPECT_EQ(result.status, 3) << input;
    EXPECT_NE(
        result.err.find(" is too short: 60000x60000 samples of 16 bits do not fit its 6 bytes"),
        std::string::npos)
        << result.err;
  }
}
#endif

}  // namespace
}  // namespace vistrel
