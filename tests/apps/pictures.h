// Files for the program to read, and what is in the ones that it wrote.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vistrel {

// A binary PGM of one byte a sample, or two, the high one first.
std::string pgm(uint32_t width, uint32_t height, uint32_t maxval,
                const std::function<uint32_t(uint32_t x, uint32_t y)>& sample);

struct Picture {
  uint32_t width, height, channels;
  uint32_t bits;         // of a sample in the file: 8 or 16
  uint32_t significant;  // as the file tells; 0 where it does not
  std::vector<uint16_t> samples;

  uint16_t at(uint32_t x, uint32_t y, uint32_t channel) const {
    return samples[(size_t{y} * width + x) * channels + channel];
  }
};

// As the file has it: red, green, blue; nothing is scaled.
Picture readPng(const std::filesystem::path& path);

}  // namespace vistrel
