// One call of a function with all arguments, and a case: successive calls on one stream. Both can
// be written as a line of text and read back.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/check/pattern.h"

namespace vistrel::core::check {

// Where a block lies: bits of Call::place. Without its bit, its end lies against a guard page.
enum Place : uint32_t {
  kSourceAtStart = 1,
  kDestinationAtStart = 2,
  kWorkAtStart = 4,
  kGuardPageRows = 8,  // a guard page beside every row of the source
  kWorkExact = 16,     // a work buffer of the bytes that the call may touch, not of the size that
                       // ImgInitialize makes
  kNoTable = 32        // the stream has no look-up table
};

// The arguments by name. A subject reads the ones that its function has.
struct Call {
  std::string subject;
  uint32_t format = 0, algorithm = 0, bayer = 0, binning = 0, dstBits = 0, lutMode = 0;
  uint32_t imgWidth = 0, imgHeight = 0, roiX = 0, roiY = 0, roiWidth = 0, roiHeight = 0;
  uint32_t srcBits = 0, skip = 0, guarded = 0, stride = 0, shift = 0;
  uint32_t unknown = 0;                 // nonzero: the stream was never opened
  uint32_t a = 0, b = 0, c = 0, d = 0;  // further arguments of single functions
  // Those of libvistrelhost, whose regions are in sensor pixels. Gaps are the bytes between rows.
  uint32_t packing = 0, sampleBytes = 0, highBits = 0, sourceGap = 0, gap = 0, upward = 0;
  uint32_t gray = 0, threshold = 0, truncateTo = 0, edges = 0, excess = 0, stray = 0;
  uint32_t black = 0, balance = 0, threads = 0, later = 0, defect = 0;
  uint32_t white = 0, means = 0, orientation = 0, calibrated = 0, finished = 0;
  uint32_t pattern = 0, seed = 0, place = 0;

  uint32_t factor() const { return binning + 1; }
  uint32_t fullWidth() const { return factor() * roiWidth; }
  uint32_t fullHeight() const { return factor() * roiHeight; }
  uint32_t originX() const { return factor() * roiX; }
  bool operator==(const Call&) const = default;
};

using Case = std::vector<Call>;

std::string text(const Call& call);
std::string text(const Case& calls);

// Throws std::invalid_argument, which names what it could not read.
Case readCase(const std::string& line);

}  // namespace vistrel::core::check
