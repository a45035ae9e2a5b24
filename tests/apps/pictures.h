// Writes files for the program to read, and reads those that it wrote.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vistrel {

// A binary PGM of 8-bit samples, or of big-endian 16-bit ones. A comment names the phase, if any.
std::string pgm(uint32_t width, uint32_t height, uint32_t maxval,
                const std::function<uint32_t(uint32_t x, uint32_t y)>& sample,
                const std::string& phase = "");

struct Picture {
  uint32_t width, height, channels;
  uint32_t bits;         // per sample in the file: 8 or 16
  uint32_t significant;  // as the file says; 0 if it doesn't
  std::vector<uint16_t> samples;

  uint16_t at(uint32_t x, uint32_t y, uint32_t channel) const {
    return samples[(size_t{y} * width + x) * channels + channel];
  }
};

// As in the file: red, green, blue, not scaled.
Picture readPng(const std::filesystem::path& path);

}  // namespace vistrel
