// Real frames, if there are any.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace vistrel {

// A binary PGM without comments.
struct Mosaic {
  uint32_t width = 0, height = 0, maxval = 0;
  std::vector<unsigned char> bytes;

  explicit Mosaic(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::string magic;
    in >> magic >> width >> height >> maxval;
    in.get();
    bytes.assign(std::istreambuf_iterator<char>(in), {});
  }
  int at(int x, int y) const {
    const size_t i = static_cast<size_t>(y) * width + x;
    return maxval > 255 ? bytes[2 * i] << 8 | bytes[2 * i + 1] : bytes[i];
  }
};

struct FrameName {
  uint32_t bits;
  std::string phase;
};

// b03_dogfur_10b_grbg, m01_edge_8b
inline FrameName frameNameOf(const std::string& stem) {
  const size_t end = stem.find("b_", stem.find('_') + 1);
  const size_t last = end == std::string::npos ? stem.size() - 1 : end;
  const size_t begin = stem.rfind('_', last - 1) + 1;
  return {static_cast<uint32_t>(std::stoul(stem.substr(begin, last - begin))),
          end == std::string::npos ? "mono" : stem.substr(end + 2)};
}

// The files in a folder of the test data, sorted; none if there is no such folder.
inline std::vector<std::filesystem::path> framesIn(const std::string& folder) {
  const char* data = std::getenv("VISTREL_DATA");
  const std::filesystem::path path = std::filesystem::path(data ? data : VISTREL_DATA) / folder;
  std::vector<std::filesystem::path> frames;
  if (std::filesystem::is_directory(path))
    for (const auto& entry : std::filesystem::directory_iterator(path))
      frames.push_back(entry.path());
  std::sort(frames.begin(), frames.end());
  return frames;
}

}  // namespace vistrel
