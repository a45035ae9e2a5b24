// How far a demosaiced picture is from the truth. Ten pixels at each border do not count.
#pragma once

#include <vector>

#include "apps/tools/report/quality.h"
#include "tests/quality/planes.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::quality {

struct Measures {
  double cpsnr;       // dB, of samples as they are
  double ssim;        // of samples as they are displayed, as `vistrel report` computes it
  double difference;  // mean distance in CIELAB (1976)
  double zipper;  // percent of pixels whose distance from their nearest neighbour has changed by
                  // more than 2.3: Lu and Tan (2003)
  double worst;   // the largest distance in CIELAB
};

enum class Light { kLinear, kDisplay };  // what samples are proportional to

struct Lab {
  double l, a, b;
};

struct LabPlane {
  LabPlane(const Planes& planes, Light light);
  const Lab& at(int x, int y) const { return colours[static_cast<size_t>(y * width + x)]; }

  int width, height;
  std::vector<Lab> colours;
};

// What pictures are compared with.
class Truth {
 public:
  Truth(const Planes& planes, Light light);

  Measures of(const Planes& picture) const;  // of the same size

 private:
  Planes planes_;
  Light light_;
  LabPlane colours_;
  app::Evaluator evaluator_;
};

// Of linear light under D65.
Lab labOf(double red, double green, double blue);

struct Chroma {
  double mean, largest;
};

// The distance in CIELAB from gray, up to that many pixels from the centre.
Chroma chromaWithin(const Planes& picture, double radius, Light light);

// As it is displayed, in blue, green, red of 8 bits.
Image displayed(const Planes& picture, Light light);

}  // namespace vistrel::quality
