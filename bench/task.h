// One conversion of a frame, ready to be run again and again.
#pragma once

#include <functional>

#include "bench/frame.h"
#include "bench/picture.h"

namespace vistrel::core::bench {

struct Task {
  std::function<void()> run;
  Picture picture;  // what run() leaves behind
};

struct Conversion {
  const char* algorithm;
  uint32_t nAlgorithm;
  unsigned depth;  // of a source sample: 8 or 16
  uint32_t nFormat;
  unsigned factor;  // binning of either axis
  uint32_t nLutMode;
  unsigned wordBits = 12;  // significant bits of a source word

  std::string name() const;  // e.g. bilinear8/BGR24/2x2
};

struct Peer {
  const char* name;
  Task (*make)(const Conversion&, const Frame&);
};

// The conversion by our own library, through its public entries.
Task makeOurs(const Conversion& conversion, const Frame& frame);
// With the packed operations off.
Task makeWithoutPacked(const Conversion& conversion, const Frame& frame);
// By the function that no algorithm's code leads to; without binning.
Task makeAhd(const Conversion& conversion, const Frame& frame);

// The response of the table rows, 0..1 to 0..1, on both sides.
double toneCurve(double light);

}  // namespace vistrel::core::bench
