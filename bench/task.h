// One conversion of a frame that can be run repeatedly.
#pragma once

#include <functional>

#include "bench/frame.h"
#include "bench/picture.h"

namespace vistrel::core::bench {

struct Task {
  std::function<void()> run;
  Picture picture;  // the result of run()
};

struct Conversion {
  const char* algorithm;
  uint32_t nAlgorithm;
  unsigned depth;  // of a source sample: 8 or 16
  uint32_t nFormat;
  unsigned factor;  // binning of either axis
  uint32_t nLutMode;
  unsigned significantBits = 12;  // of a 16-bit source sample

  std::string name() const;  // e.g. bilinear8/BGR24/2x2
};

struct Peer {
  const char* name;
  Task (*make)(const Conversion&, const Frame&);
};

// The conversion by our library, through its public entries.
Task makeOurs(const Conversion& conversion, const Frame& frame);
// The same with packed operations disabled.
Task makeWithoutPacked(const Conversion& conversion, const Frame& frame);
// The conversion by a function that has no algorithm code; without binning.
Task makeAhd(const Conversion& conversion, const Frame& frame);

// The tone curve of the table rows on both sides: 0..1 to 0..1.
double toneCurve(double light);

}  // namespace vistrel::core::bench
