// Frames in files, as the program reads them.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/apps/input/tiff_file.h"
#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {

struct InputTest : ::testing::Test {
  Scratch scratch;

  // Expects these messages.
  nlohmann::json info(const std::string& arguments, const std::string& said = "") const {
    const Finished result = scratch.vistrel("info --json " + arguments);
    EXPECT_EQ(result.status, 0) << arguments << ": " << result.err;
    EXPECT_EQ(result.err, said);
    return result.status ? nlohmann::json() : nlohmann::json::parse(result.out);
  }

  // Converting a mono frame yields the frame itself.
  void expectSamples(const std::string& file, uint32_t width, uint32_t height, uint32_t bits,
                     const Sample& sample) const {
    const std::string options = bits > 8 ? " --depth 16" : "";
    const Finished result =
        scratch.vistrel("convert " + file + " --phase mono -o out.pgm" + options);
    EXPECT_EQ(result.status, 0) << file << ": " << result.err;
    EXPECT_EQ(scratch.read("out.pgm"), pgm(width, height, (1u << bits) - 1, sample)) << file;
  }
};

// Different in every bit of every sample.
inline Sample noise(uint32_t bits) {
  return [bits](uint32_t x, uint32_t y) {
    const uint32_t v = (x * 2654435761u ^ y * 40503u * 65537u) + x * y * 97;
    return (v ^ v >> 13) & ((1u << bits) - 1);
  };
}

inline std::string flat(uint32_t value, uint32_t maxval = 255) {
  return pgm(3, 2, maxval, [value](uint32_t, uint32_t) { return value; });
}

}  // namespace vistrel
