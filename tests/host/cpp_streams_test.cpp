// The C++ interface: pushed rows, rows of an image, teams and runners.
#include <gmock/gmock.h>

#include <stdexcept>
#include <thread>

#include "tests/host/frames.h"

namespace vistrel {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

uint32_t cppTexture(uint32_t x, uint32_t y) { return (x * 31 + y * 17 + x * y) % 256; }

struct CppStreams : ::testing::Test {
  static constexpr uint32_t kWidth = 20, kHeight = 16, kRow = 3 * kWidth;
  std::vector<uint8_t> samples = samplesOf<uint8_t>(kWidth, kHeight, cppTexture);
  vistrel_frame frame = frameOf(samples, kWidth, kHeight, VISTREL_RGGB);
  vistrel_conversion conversion = defaultConversion(frame);
  const Image expected = convert(frame, conversion);
  Stream stream = Stream::acquire();

  Span<const uint8_t> rows(uint32_t first, uint32_t count) const {
    return {samples.data() + size_t{first} * kWidth, size_t{count} * kWidth};
  }
  void pushAll(PushedConversion& pushed) const {
    for (uint32_t y = 0; y < kHeight; y += 4) pushed.push(rows(y, 4), 4);
  }
};

TEST_F(CppStreams, TakePushedRows) {
  Image image;
  PushedConversion pushed = stream.begin(frame, conversion, image);
  EXPECT_EQ(pushed.layout().bytes, size_t{kRow} * kHeight);
  EXPECT_TRUE(pushed);
  EXPECT_EQ(pushed.finalRows(), 0u);
  // Bilinear reaches two rows down.
  EXPECT_EQ(pushed.push(rows(0, 6), 6), 4u);
  EXPECT_EQ(pushed.finalRows(), 4u);
  EXPECT_TRUE(
      std::equal(image.pixels.begin(), image.pixels.begin() + 4 * kRow, expected.pixels.begin()));
  EXPECT_EQ(pushed.tryPush(rows(6, 10), 10).value(), kHeight);
  EXPECT_FALSE(pushed) << "the frame is complete";
  EXPECT_EQ(image.pixels, expected.pixels);
  EXPECT_EQ(stream.convert(frame, conversion).pixels, expected.pixels);
  EXPECT_EQ(pushed.tryPush(rows(0, 1), 1).error().status(), VISTREL_BAD_STREAM);
}

TEST_F(CppStreams, TakePushedRowsOfSixteenBits) {
  const auto wide = samplesOf<uint16_t>(kWidth, kHeight, cppTexture);
  frame = frameOf(wide, kWidth, kHeight, 8, VISTREL_RGGB);
  std::vector<uint8_t> pixels(expected.pixels.size() + 1, 77);
  PushedConversion pushed = stream.begin(frame, conversion, pixels);
  EXPECT_EQ(pushed.push(wide, kHeight), kHeight);
  EXPECT_TRUE(std::equal(expected.pixels.begin(), expected.pixels.end(), pixels.begin()));
  EXPECT_EQ(pixels.back(), 77);
}

TEST_F(CppStreams, TakePushedRowsIntoABottomUpImage) {
  std::vector<uint8_t> pixels(size_t{kRow} * kHeight);
  PushedConversion pushed = stream.begin(frame, conversion, pixels, -ptrdiff_t{kRow});
  pushAll(pushed);
  for (size_t y = 0; y < kHeight; ++y)
    EXPECT_TRUE(std::equal(&pixels[y * kRow], &pixels[y * kRow] + kRow,
                           &expected.pixels[(kHeight - 1 - y) * kRow]))
        << y;
}

TEST_F(CppStreams, AreFreeAfterAPushedConversionHasEnded) {
  Image image;
  const auto isBusy = [&] {
    const auto other = stream.tryConvert(frame, conversion);
    return !other && other.error().status() == VISTREL_BUSY_STREAM;
  };
  {
    const PushedConversion pushed = stream.begin(frame, conversion, image);
    EXPECT_TRUE(isBusy());
  }
  EXPECT_FALSE(isBusy()) << "dropped";
  PushedConversion pushed = stream.begin(frame, conversion, image);
  pushed.abort();
  EXPECT_FALSE(pushed || isBusy()) << "aborted";
  pushed = stream.begin(frame, conversion, image);
  EXPECT_TRUE(pushed && isBusy());
  PushedConversion moved = std::move(pushed);
  EXPECT_TRUE(moved && !pushed && isBusy()) << "moved";
  pushAll(moved);
  EXPECT_EQ(image.pixels, expected.pixels);
  Stream second = Stream::acquire();
  Image secondImage;
  moved = stream.begin(frame, conversion, image);
  moved = second.begin(frame, conversion, secondImage);
  EXPECT_FALSE(isBusy()) << "replaced";
  EXPECT_EQ(stream.convert(frame, conversion).pixels, expected.pixels);
}

TEST_F(CppStreams, OutlivedByAPushedConversionEndIt) {
  Image image;
  PushedConversion pushed = stream.begin(frame, conversion, image);
  stream.release();
  EXPECT_EQ(pushed.tryPush(rows(0, 1), 1).error().status(), VISTREL_BAD_STREAM);
  Stream next = Stream::acquire();
  PushedConversion others = next.begin(frame, conversion, image);
  pushed.abort();
  pushAll(others);
  EXPECT_EQ(image.pixels, expected.pixels) << "whoever has the stream next is not disturbed";
}

TEST_F(CppStreams, RejectPushedRows) {
  Image image;
  PushedConversion pushed = stream.begin(frame, conversion, image);
  EXPECT_EQ(pushed.tryPush(rows(0, 1), 2).error().status(), VISTREL_SHORT_BUFFER);
  EXPECT_THROW(pushed.push(rows(0, 1), 0), Error);
  EXPECT_TRUE(pushed) << "goes on";
  EXPECT_EQ(stream.tryBegin(frame, conversion, image).error().status(), VISTREL_BUSY_STREAM);
  EXPECT_THROW(stream.begin(frame, conversion, image), Error);
  pushed.abort();
  conversion.white_balance = VISTREL_BALANCE_GRAY_WORLD;
  EXPECT_EQ(stream.tryBegin(frame, conversion, image).error().status(), VISTREL_BAD_BALANCE);
  std::vector<uint8_t> few(5);
  conversion = defaultConversion(frame);
  EXPECT_EQ(stream.tryBegin(frame, conversion, few).error().status(), VISTREL_SHORT_BUFFER);
  EXPECT_THROW(stream.begin(frame, conversion, few), Error);
}

TEST_F(CppStreams, EndAPushedConversionAtAnExcessSample) {
  std::vector<uint16_t> wide = samplesOf<uint16_t>(kWidth, kHeight, cppTexture);
  wide[9 * kWidth] = 256;
  frame = frameOf(wide, kWidth, kHeight, 8, VISTREL_RGGB);
  Image image;
  PushedConversion pushed = stream.begin(frame, conversion, image);
  EXPECT_EQ(pushed.tryPush(wide, kHeight).error().status(), VISTREL_EXCESS_SAMPLE);
  EXPECT_EQ(pushed.finalRows(), 7u);
  EXPECT_FALSE(pushed);
  EXPECT_TRUE(stream.tryConvert(frameOf(samples, kWidth, kHeight, VISTREL_RGGB), conversion));
}

TEST_F(CppStreams, MakeRowsOfAnImage) {
  std::vector<uint8_t> pixels(expected.pixels.size(), 77);
  EXPECT_EQ(stream.convertRows(frame, conversion, pixels, 5, 3).bytes, pixels.size());
  for (size_t i = 0; i < pixels.size(); ++i)
    EXPECT_EQ(pixels[i], i / kRow >= 5 && i / kRow < 8 ? expected.pixels[i] : 77) << i;
  const auto beyond = stream.tryConvertRows(frame, conversion, pixels, 16, 1);
  EXPECT_EQ(beyond.error().status(), VISTREL_BAD_ROWS);
  EXPECT_THROW(stream.convertRows(frame, conversion, pixels, 0, 0), Error);
}

// Large enough for several bands.
struct CppTeams : ::testing::Test {
  static constexpr uint32_t kWidth = 1000, kHeight = 600;
  std::vector<uint8_t> samples = samplesOf<uint8_t>(kWidth, kHeight, cppTexture);
  vistrel_frame frame = frameOf(samples, kWidth, kHeight, VISTREL_GBRG);
  vistrel_conversion conversion = defaultConversion(frame);
  const Image expected = convert(frame, conversion);
};

TEST_F(CppTeams, ShareAnImage) {
  Team team = Team::create(3);
  EXPECT_TRUE(team);
  EXPECT_EQ(team.threads(), 3u);
  setTeam(conversion, team);
  EXPECT_EQ(conversion.threads, 3u);
  EXPECT_EQ(conversion.team, team.handle());
  EXPECT_EQ(convert(frame, conversion).pixels, expected.pixels);
  const Team none;
  EXPECT_FALSE(none);
  setTeam(conversion, none);
  EXPECT_EQ(convert(frame, conversion).pixels, expected.pixels) << "on this thread";
}

TEST_F(CppTeams, EndWithTheirOwner) {
  const auto exists = [&](vistrel_team* team) {
    conversion.threads = 2, conversion.team = team;
    return tryConvert(frame, conversion).has_value();
  };
  Team a = Team::create(2), b = Team::create(2);
  vistrel_team *const first = a.handle(), *const second = b.handle();
  EXPECT_TRUE(exists(first) && exists(second));
  a = std::move(b);
  EXPECT_TRUE(!exists(first) && exists(second)) << "ended by assignment";
  EXPECT_TRUE(!b && b.threads() == 0 && a.threads() == 2);
  {
    const Team c = std::move(a);
    EXPECT_TRUE(c.handle() == second && !a && exists(second));
  }
  EXPECT_FALSE(exists(second)) << "ended by its scope";
  Team d = Team::create(2);
  vistrel_team* const third = d.handle();
  d.end();
  d.end();
  EXPECT_FALSE(d || exists(third));
}

TEST_F(CppTeams, AreRejected) {
  EXPECT_EQ(Team::tryCreate(1).error().status(), VISTREL_BAD_THREADS);
  EXPECT_THROW(Team::create(1000), Error);
}

TEST_F(CppTeams, MayBeARunner) {
  std::vector<uint32_t> counts;
  auto runner = [&counts](uint32_t count, auto task) {
    counts.push_back(count);
    std::vector<std::thread> threads;
    for (uint32_t i = 0; i < count; ++i) threads.emplace_back([=] { task(i); });
    for (auto& thread : threads) thread.join();
  };
  setRunner(conversion, 4, runner);
  EXPECT_EQ(convert(frame, conversion).pixels, expected.pixels);
  // The check for excess bits finds nothing to do in frames of bytes.
  EXPECT_THAT(counts, Each(4u));
  EXPECT_FALSE(counts.empty());
}

TEST_F(CppTeams, MayBeARunnerThatIsConst) {
  const auto runner = [](uint32_t count, auto task) {
    while (count > 0) task(--count);
  };
  setRunner(conversion, 2, runner);
  EXPECT_EQ(convert(frame, conversion).pixels, expected.pixels);
}

TEST_F(CppTeams, RejectARunnerThatThrows) {
  auto runner = [](uint32_t, auto) { throw std::runtime_error("no thread"); };
  setRunner(conversion, 2, runner);
  const auto image = tryConvert(frame, conversion);
  ASSERT_FALSE(image);
  EXPECT_EQ(image.error().status(), VISTREL_RUN_FAILED);
}

TEST_F(CppTeams, AreEitherATeamOrARunner) {
  const Team team = Team::create(2);
  auto runner = [](uint32_t count, auto task) {
    while (count > 0) task(--count);
  };
  setTeam(conversion, team);
  setRunner(conversion, 2, runner);
  EXPECT_EQ(convert(frame, conversion).pixels, expected.pixels);
  setTeam(conversion, team);
  EXPECT_EQ(convert(frame, conversion).pixels, expected.pixels);
}

// A conversion on no stream leaves its memory to the pool.
TEST_F(CppTeams, LeaveNothingWorseForATrim) {
  trim();
  EXPECT_EQ(convert(frame, conversion).pixels, expected.pixels);
}

}  // namespace
}  // namespace vistrel
