// More threads than streams, each with its own frames.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "tests/host/frames.h"

namespace vistrel {
namespace {

constexpr uint32_t kThreads = 150, kRounds = 12;

// How many pixels of the thread's frames have a colour that is not the thread's.
uint64_t foreignPixels(uint32_t thread) {
  const uint32_t blue = thread, green = 255 - thread, red = thread / 2;
  uint64_t foreign = 0;
  for (uint32_t round = 0; round < kRounds; ++round) {
    const uint32_t width = 8 + (thread * 7 + round * 13) % 60, height = 8 + (round * 29) % 50;
    const uint32_t phase = (thread + round) % 4;
    const auto samples = samplesOf<uint8_t>(width, height, plainColour(phase, blue, green, red));
    const vistrel_frame frame = frameOf(samples, width, height, phase);
    vistrel_conversion conversion = defaultConversion(frame);
    conversion.algorithm = thread % 2 ? uint32_t{VISTREL_AHD} : uint32_t{VISTREL_BILINEAR};
    const Image image = convert(frame, conversion);
    for (size_t i = 0; i < image.pixels.size(); i += 3)
      foreign +=
          image.pixels[i] != blue || image.pixels[i + 1] != green || image.pixels[i + 2] != red;
  }
  return foreign;
}

TEST(Threads, DoNotSeeEachOthersFrames) {
  std::atomic<uint64_t> foreign = 0;
  std::vector<std::thread> threads;
  for (uint32_t i = 0; i < kThreads; ++i)
    threads.emplace_back([&foreign, i] { foreign += foreignPixels(i); });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(foreign, 0u);
}

}  // namespace
}  // namespace vistrel
