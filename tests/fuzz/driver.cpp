// Replaces libFuzzer: runs every seed of a folder, then mutations of them, the same every time, for
// at most a second and a half.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

using Input = std::vector<uint8_t>;
using Clock = std::chrono::steady_clock;

std::vector<Input> readSeeds(const char* folder) {
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  std::vector<Input> seeds;
  for (const auto& path : paths) {
    std::ifstream in(path, std::ios::binary);
    seeds.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  return seeds;
}

void mutate(Input& input, std::mt19937& random) {
  constexpr uint8_t edges[] = {0, 1, 0x7F, 0x80, 0xFF};
  for (uint32_t n = 1 + random() % 4; n && !input.empty(); --n) {
    const size_t at = random() % input.size();
    switch (random() % 5) {
      case 0: input[at] = static_cast<uint8_t>(random()); break;
      case 1: input[at] = edges[random() % std::size(edges)]; break;
      case 2: input[at] ^= static_cast<uint8_t>(1u << random() % 8); break;
      case 3: input.resize(at); break;
      default: input.insert(input.begin() + static_cast<ptrdiff_t>(at), edges[random() % 5]);
    }
  }
}

}  // namespace

int main(int, char** argv) {
  const std::vector<Input> seeds = readSeeds(argv[1]);
  if (seeds.empty()) return std::fprintf(stderr, "no seeds in %s\n", argv[1]), 1;
  for (const Input& seed : seeds) LLVMFuzzerTestOneInput(seed.data(), seed.size());
  std::mt19937 random(1);
  const auto end = Clock::now() + std::chrono::milliseconds(1500);
  int count = 0;
  for (; count < 5000 && Clock::now() < end; ++count) {
    Input input = seeds[random() % seeds.size()];
    mutate(input, random);
    // A separate copy, so that reading past its end is detected.
    const Input exact(input);
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
  }
  std::printf("%zu seeds, %d mutations\n", seeds.size(), count);
}
