// A folder with frames to convert.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {

// Frames a.pgm, b.pgm, c.pgm of one value each, a minute old, and an invalid one.
struct BatchTest : ::testing::Test {
  Scratch scratch;
  BatchTest() {
    for (const char* name : {"a", "b", "c"}) put(name + std::string(".pgm"), 10 * name[0] % 256);
    scratch.write("bad.pgm", "P5\n1 1\n0\n");
    std::filesystem::create_directory(scratch / "out");
  }
  void put(const std::string& name, uint32_t value) const {
    scratch.write(name, pgm(4, 3, 255, [value](uint32_t, uint32_t) { return value; }));
    age(name, 60);
  }
  void age(const std::string& name, int seconds) const {
    const auto now = std::filesystem::file_time_type::clock::now();
    std::filesystem::last_write_time(scratch / name, now - std::chrono::seconds(seconds));
  }
  Finished convert(const std::string& arguments) const {
    return scratch.vistrel("convert --phase mono -o out " + arguments);
  }
  uint32_t valueOf(const std::string& picture) const {
    return readPng(scratch / picture).samples[0];
  }
};

}  // namespace vistrel
