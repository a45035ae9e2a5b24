// Whether first guesses are right, for scenes and for dumps of real frames.
#include "apps/tools/guess/guess.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "apps/names/pixel_format.h"
#include "apps/pictures/raw_frame.h"
#include "apps/tools/scene/sensor.h"
#include "tests/amount.h"
#include "tests/apps/tools/guess/dumps.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

using Bytes = std::vector<uint8_t>;

bool isFormat(const app::Guess& g, const app::PixelFormat& format) {
  return g.packing == format.packing && (app::are16Bit(g.packing) || g.bits == format.bits);
}

// Everything that `convert` needs to read the frames.
bool isRight(const std::vector<app::Guess>& guesses, const Dump& d) {
  if (guesses.empty()) return false;
  const app::Guess& g = guesses[0];
  const size_t stride = g.stride ? g.stride : d.stride() - d.padding;
  return g.width == d.width && g.height == d.height && isFormat(g, d.format) &&
         stride == d.stride() && g.skip == d.header && g.frames == d.frames;
}

std::string textOf(const std::vector<app::Guess>& guesses) {
  if (guesses.empty()) return "a frame";
  const app::Guess& g = guesses[0];
  return fmt::format("{} {} {}x{} stride {} skip {} frames {} left {}",
                     app::packingNames(g.packing).name, g.bits, g.width, g.height, g.stride, g.skip,
                     g.frames, g.trailing);
}

TEST(Guess, Scenes) {
  constexpr uint32_t kWidth = 240, kHeight = 180, kBits = 14;
  const app::Scene scene(kWidth, kHeight, "TITLE");
  for (const uint32_t phase : {VISTREL_RGGB, VISTREL_BGGR, VISTREL_GRBG, VISTREL_GBRG}) {
    const Image image = app::expose(scene, kWidth, kHeight, {kBits, phase, 0.5, 1});
    const auto* const samples = reinterpret_cast<const uint16_t*>(image.pixels.data());
    for (const app::PixelFormat& f : app::pixelFormats()) {
      if (f.phase != phase || f.bits > kBits) continue;
      std::vector<uint16_t> shifted(samples, samples + kWidth * kHeight);
      for (uint16_t& s : shifted) s = static_cast<uint16_t>(s >> (kBits - f.bits));
      const auto guesses = app::guessFormat(app::packRow(f, shifted.data(), shifted.size()));
      ASSERT_FALSE(guesses.empty()) << f.pfnc << f.v4l2Code;
      EXPECT_TRUE(isFormat(guesses[0], f)) << f.pfnc << f.v4l2Code;
      EXPECT_EQ(std::pair(guesses[0].width, guesses[0].height), std::pair(kWidth, kHeight));
      EXPECT_TRUE(guesses[0].phase == phase || guesses[0].otherPhase == phase) << f.pfnc;
    }
  }
}

// Dumps of all real frames in turn: plain, padded, with a header, of several frames, mixed.
// docs/guessing.md has the figures; VISTREL_SEED draws others, VISTREL_AMOUNT more.
void guessDumps(bool isSized, double leastShare) {
  const uint64_t dumps = test::amount(100);
  const auto frames = realFrames();
  if (frames.empty()) GTEST_SKIP() << "no real frames";
  std::mt19937 random(20261122 + test::seed());
  size_t right = 0;
  std::string wrong;
  for (uint32_t i = 0; i < dumps; ++i) {
    const SampleFrame& frame = frames[i % frames.size()];
    const Dump d = drawDump(frame, (i + i / 10) % 5, random);
    const std::optional<app::Size> size{{d.width, d.height}};
    const auto guesses = app::guessFormat(bytesOf(frame, d), isSized ? size : std::nullopt);
    const bool hit = isRight(guesses, d);
    right += hit;
    if (!hit) wrong += frame.name + ": " + d.text() + ", not " + textOf(guesses) + "\n";
  }
  std::printf("%s: %zu of %zu first guesses are right; wrong:\n%s",
              isSized ? "size known" : "size unknown", right, size_t{dumps}, wrong.c_str());
  EXPECT_GE(static_cast<double>(right), leastShare * static_cast<double>(dumps));
}

TEST(Guess, Dumps) { guessDumps(false, 0.85); }
TEST(Guess, DumpsOfKnownSize) { guessDumps(true, 0.97); }

// Others leave bytes, or take padding for samples.
TEST(Guess, AKnownSizeDividesTheFile) {
  const auto frames = realFrames();
  if (frames.empty()) GTEST_SKIP() << "no real frames";
  const auto format = [](const char* name) { return *app::findPixelFormat(name); };
  const std::pair<std::string, Dump> dumps[] = {
      {"b06", {66, 160, 640, 480, format("Mono12p"), 0, 3, 100, 8}},
      {"b07", {328, 10, 334, 476, format("Y12P"), 512, 0, 0, 1}},
      {"b05", {100, 100, 320, 240, format("Mono10p"), 512, 0, 4096, 1}},
      {"b05", {40, 20, 320, 240, format("gray16be"), 0, 0, 100, 9}},
      {"b01", {0, 0, 1264, 1392, format("Mono10p"), 196, 0, 1024, 1}}};
  for (const auto& [prefix, d] : dumps) {
    const auto frame = std::ranges::find_if(
        frames, [&name = prefix](const SampleFrame& f) { return f.name.starts_with(name); });
    ASSERT_NE(frame, frames.end());
    const auto guesses = app::guessFormat(bytesOf(*frame, d), app::Size{d.width, d.height});
    EXPECT_TRUE(isRight(guesses, d)) << prefix << ": " << d.text() << ", not " << textOf(guesses);
  }
}

TEST(Guess, NoiseIsNoFrame) {
  std::mt19937 random(7);
  for (const size_t size : {256, 1009, 4096, 100000, 640 * 480}) {
    Bytes noise(size);
    for (uint8_t& byte : noise) byte = static_cast<uint8_t>(random());
    EXPECT_TRUE(app::guessFormat(noise).empty()) << size;
  }
}

// A sky without stars is noise, but not of all values.
TEST(Guess, DarkNoiseOfAKnownSizeIsAFrame) {
  constexpr app::Size kSize{90, 60};
  std::mt19937 random(7);
  Bytes sky, noise;
  for (uint32_t i = 0; i < 3 * kSize.width * kSize.height; ++i) {
    sky.push_back(static_cast<uint8_t>(random() % 4 + random() % 4));
    noise.push_back(static_cast<uint8_t>(random()));
  }
  EXPECT_TRUE(app::guessFormat(sky).empty());
  EXPECT_TRUE(app::guessFormat(noise, kSize).empty());
  EXPECT_TRUE(app::guessFormat(Bytes(sky.size(), 7), kSize).empty());
  const auto guesses = app::guessFormat(sky, kSize);
  ASSERT_FALSE(guesses.empty());
  EXPECT_EQ(guesses[0].packing, uint32_t{VISTREL_PACKING_BYTES});
  EXPECT_EQ(guesses[0].frames, 3u);
  EXPECT_EQ(guesses[0].skip + guesses[0].trailing, 0u);
}

TEST(Guess, EqualBytesAndShortFilesAreNoFrame) {
  EXPECT_TRUE(app::guessFormat(Bytes(640 * 480)).empty());
  EXPECT_TRUE(app::guessFormat(Bytes(640 * 480, 7)).empty());
  EXPECT_TRUE(app::guessFormat({}).empty());
  EXPECT_TRUE(app::guessFormat(Bytes(255, 7)).empty());
}

// Words have a place in two bytes, as 16-bit samples have, but nothing recurs from row to row.
TEST(Guess, TextIsNoFrame) {
  std::mt19937 random(7);
  Bytes text;
  while (text.size() < 50000) {
    for (size_t n = 1 + random() % 9; n; --n)
      text.push_back(static_cast<uint8_t>('a' + random() % 26));
    text.push_back(random() % 12 ? ' ' : '\n');
  }
  EXPECT_TRUE(app::guessFormat(text).empty());
}

// Columns recur from row to row, and neighbouring rows are alike.
TEST(Guess, TablesAreNoFrames) {
  std::string numbers, times, code;
  for (int y = 0; y < 300; ++y) {
    for (int x = 0; x < 64; ++x)
      numbers +=
          fmt::format("{:4d},", static_cast<int>(2000 + 1000 * sin(x / 19.0) * cos(y / 17.0)));
    numbers.back() = '\n';
  }
  for (int i = 0; i < 5000; ++i)
    times += fmt::format("{:02d}:00:00;\tSensor;{}.0;ok\r\n", i % 24, 20 + i % 5);
  for (int i = 0; i < 3000; ++i)
    code += fmt::format("    {{0x{:04X}, 0x{:04X}, \"name\"}},\n", i, i * 7);
  for (const std::string& text : {numbers, times, code}) {
    EXPECT_TRUE(app::guessFormat(Bytes(text.begin(), text.end())).empty()) << text.substr(0, 30);
    EXPECT_TRUE(app::guessFormat(Bytes(text.begin(), text.end()), app::Size{320, 240}).empty());
  }
}

// 16-bit samples with 10 significant high bits, of a known size.
TEST(Guess, KnownSizeAndHighBits) {
  std::vector<uint16_t> samples;
  for (uint32_t y = 0; y < 60; ++y)
    for (uint32_t x = 0; x < 94; ++x)
      samples.push_back(static_cast<uint16_t>((5 * x + 9 * y) << 6));
  samples[0] = 1023 << 6;
  const app::PixelFormat& words = *app::findPixelFormat("Mono16");
  const auto guesses =
      app::guessFormat(app::packRow(words, samples.data(), samples.size()), app::Size{94, 60});
  ASSERT_FALSE(guesses.empty());
  EXPECT_EQ(guesses[0].packing, uint32_t{VISTREL_PACKING_LITTLE});
  EXPECT_TRUE(guesses[0].highBits);
  EXPECT_EQ(guesses[0].bits, 10u);
  EXPECT_EQ(guesses[0].phase, VISTREL_MONO);
  for (const app::Guess& g : guesses) EXPECT_EQ(std::pair(g.width, g.height), std::pair(94u, 60u));
}

}  // namespace
}  // namespace vistrel
