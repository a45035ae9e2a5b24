// Whether first guesses are right, for scenes and real frames in every packing.
#include <gtest/gtest.h>

#include <cstdio>

#include "apps/input/frame_file.h"
#include "apps/names/pixel_format.h"
#include "apps/pictures/raw_frame.h"
#include "apps/tools/guess/guess.h"
#include "apps/tools/scene/sensor.h"
#include "tests/real_frames.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

using Bytes = std::vector<uint8_t>;

// The frame's samples in that format, without the bits that don't fit.
Bytes packed(const vistrel_frame& frame, const app::PixelFormat& format) {
  std::vector<uint16_t> samples(size_t{frame.width} * frame.height);
  for (size_t i = 0; i < samples.size(); ++i) {
    const uint16_t sample = frame.bytes_per_sample == 1
                                ? static_cast<const uint8_t*>(frame.samples)[i]
                                : static_cast<const uint16_t*>(frame.samples)[i];
    samples[i] = static_cast<uint16_t>(sample >> (frame.bits - format.bits));
  }
  return app::packRow(format, samples.data(), samples.size());
}

// How many first guesses are right, of how many files.
struct Share {
  size_t formats = 0, phases = 0, all = 0;  // formats: size, packing and the bits of packed ones
  std::string wrong;
};

// Guesses that frame in every packing for which it has enough bits.
void evaluate(const std::string& name, const vistrel_frame& frame, Share& share) {
  for (const app::PixelFormat& format : app::pixelFormats()) {
    if (format.phase != frame.phase || format.bits > frame.bits) continue;
    const auto guesses = app::guessFormat(packed(frame, format));
    const app::Guess best = guesses.empty() ? app::Guess{} : guesses[0];
    const bool isFormat = best.width == frame.width && best.height == frame.height &&
                          best.packing == format.packing &&
                          (app::are16Bit(format.packing) || best.bits == format.bits);
    const bool isPhase = best.phase == frame.phase || best.otherPhase == frame.phase;
    ++share.all;
    share.formats += isFormat;
    share.phases += isPhase;
    if (!isFormat || !isPhase)
      share.wrong += name + " as " + app::packingNames(format.packing).name + " " +
                     std::to_string(format.bits) + ": " + app::packingNames(best.packing).name +
                     " " + std::to_string(best.bits) + " " + std::to_string(best.width) + "x" +
                     std::to_string(best.height) + "\n";
  }
}

TEST(Guess, Scenes) {
  constexpr uint32_t kWidth = 240, kHeight = 180, kBits = 14;
  const app::Scene scene(kWidth, kHeight, "TITLE");
  Share share;
  for (const uint32_t phase : {VISTREL_RGGB, VISTREL_BGGR, VISTREL_GRBG, VISTREL_GBRG}) {
    const Image image = app::expose(scene, kWidth, kHeight, {kBits, phase, 0.5, 1});
    vistrel_frame frame{};
    frame.samples = image.pixels.data();
    frame.size = image.pixels.size();
    frame.width = kWidth;
    frame.height = kHeight;
    frame.bytes_per_sample = 2;
    frame.bits = kBits;
    frame.phase = phase;
    evaluate(vistrel_phase_name(phase), frame, share);
  }
  EXPECT_EQ(share.formats, share.all) << share.wrong;
  EXPECT_EQ(share.phases, share.all) << share.wrong;
  EXPECT_EQ(share.all, 4u * 15);
}

// Their names specify bits and phase. Some guesses about a nebula that is mostly noise are wrong;
// docs/program.md says how many.
TEST(Guess, RealFrames) {
  const auto frames = framesIn("bayer");
  if (frames.empty()) GTEST_SKIP() << "no real frames";
  app::InputOptions options;
  options.fromName = true;
  Share clear, nebula;
  for (const auto& path : frames) {
    const std::string name = path.stem().string();
    std::vector<std::string> warnings;
    app::FrameFile file(path, options, warnings);
    evaluate(name, file.read(), name.find("ngc7023") == std::string::npos ? clear : nebula);
  }
  std::printf(
      "clear frames: size and packing right in %zu, green in %zu of %zu files\n"
      "nebula: size and packing right in %zu, green in %zu of %zu files\n%s",
      clear.formats, clear.phases, clear.all, nebula.formats, nebula.phases, nebula.all,
      nebula.wrong.c_str());
  EXPECT_EQ(clear.formats, clear.all) << clear.wrong;
  EXPECT_EQ(clear.phases, clear.all) << clear.wrong;
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
