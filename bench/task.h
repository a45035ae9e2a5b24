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
  uint32_t algorithmCode;         // VISTREL_BILINEAR ...; of filters the kernel
  unsigned depth;                 // of a source sample: 8 or 16
  uint32_t format;                // VISTREL_BGR24 ...
  unsigned factor;                // binning of either axis
  uint32_t reduction;             // VISTREL_WINDOW_HIGH ...
  unsigned significantBits = 12;  // of a 16-bit source sample
  uint32_t threshold = 0;

  std::string name() const;  // e.g. bilinear8/BGR24/2x2, ahd16/BGR24/1x1/14bits
};

struct Peer {
  const char* name;
  Task (*make)(const Conversion&, const Frame&);
  bool hasTables = true;  // else its picture has another tone than ours through a table
};

// The conversion by vistrel_stream_convert, with all its checks, into memory that exists.
Task makeOurs(const Conversion& conversion, const Frame& frame);

// The tone curve of the table rows on both sides: 0..1 to 0..1.
double toneCurve(double light);

}  // namespace vistrel::core::bench
