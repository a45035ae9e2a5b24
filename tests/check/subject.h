// The functions to check, in two implementations, and the cases to try them with.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/check/block.h"
#include "tests/check/call.h"
#include "tests/check/draw.h"

namespace vistrel::core::check {

enum Side { kProduct, kReference };

// The memory that one side's call works on.
struct Memory {
  Block source, destination, work, table;
};

// The pixels that bytes form, to describe where a difference is.
struct Raster {
  size_t sampleBytes = 1;
  size_t channels = 1;
  size_t width = 0;  // pixels a row, guard included; 0: not a picture
  size_t left = 0;   // pixels of guard before a row
  size_t top = 0;    // rows of guard
};

struct FrameSize {
  uint32_t width, height;
};

struct Range {
  size_t from = 0, to = 0;
};

// Which bytes a call may touch, and what they hold.
struct Layout {
  Shape source;
  size_t sampleBytes = 1;  // of a source sample
  uint32_t sourceBits = 8;
  Shape destination;
  Raster destinationRaster;
  size_t workBytes = 0;             // the part of the work buffer that the call may touch
  std::optional<FrameSize> stream;  // the smallest size for ImgInitialize that allows the call
  Raster workRaster;
  Range meaningless;  // bytes of the work buffer that are unspecified after the call
  size_t tableEntries = 0;
  uint64_t pixels = 0;  // of the source, for the time per pixel
};

// A function in both implementations.
struct Subject {
  using Run = std::function<uint64_t(const Call&, const Memory&)>;

  std::string name;
  std::function<Layout(const Call&)> layout;
  std::array<Run, 2> run;  // by Side
  // Writes what the call reads. Empty: a frame with the call's pattern.
  std::function<void(const Call&, const Layout&, const Memory&)> fill;
};

// Cases to try.
struct Experiment {
  std::string name;
  std::string group;
  std::function<Case(Draw&)> draw;
  bool levels = true;                // the product runs different code at each level
  bool portable = true;              // the result is the same on every processor
  uint32_t cases = Draw::kComplete;  // unless others are asked for
};

struct Catalogue {
  std::vector<Subject> subjects;
  std::vector<Experiment> experiments;

  // Adds a function and a experiment whose cases have one call.
  void add(const std::string& group, Subject subject, std::function<Call(Draw&)> draw);
  const Subject& subject(const std::string& name) const;
};

// All groups.
Catalogue catalogue();

}  // namespace vistrel::core::check
