// Many frames on a few workers. Each holds one stream and one image buffer for all its frames.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <thread>
#include <vector>
#include <vistrel/vistrel.hpp>

namespace {

constexpr uint32_t kWidth = 64, kHeight = 48, kFrames = 256;
std::atomic<uint32_t> next, right;

// Frame n is gray: every sample has 12 bits, of which the highest 8 are n.
void convertFrames() {
  std::vector<uint16_t> samples(kWidth * kHeight);
  const vistrel_frame frame = vistrel::frameOf(samples, kWidth, kHeight, 12, VISTREL_GRBG);
  const vistrel_conversion conversion = vistrel::defaultConversion(frame);
  vistrel::Stream stream = vistrel::Stream::acquire();
  std::vector<uint8_t> pixels(vistrel::layoutOf(frame, conversion).bytes);

  for (uint32_t n; (n = next++) < kFrames;) {
    std::fill(samples.begin(), samples.end(), static_cast<uint16_t>(n * 16 + 5));
    const auto layout = stream.tryConvertInto(frame, conversion, pixels);
    if (!layout) {
      std::fprintf(stderr, "frame %u: %s\n", n, layout.error().what());
      continue;
    }
    right += std::all_of(pixels.begin(), pixels.end(), [n](uint8_t p) { return p == n; });
  }
}

}  // namespace

int main() {
  std::vector<std::thread> workers;
  for (int i = 0; i < 4; ++i) workers.emplace_back(convertFrames);
  for (std::thread& worker : workers) worker.join();
  std::printf("%u of %u frames are right\n", right.load(), kFrames);
}
