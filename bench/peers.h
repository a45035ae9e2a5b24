// The peers, grouped by package; rows.cpp uses only the groups whose package was found.
#pragma once

#include "bench/task.h"

namespace vistrel::core::bench {

// OpenCV; each uses one thread until openCvThreads
void openCvThreads(int threads);
Task openCvBilinear(const Conversion&, const Frame&);  // to BGR24
Task openCvBilinearBgra(const Conversion&, const Frame&);
Task openCvBilinearGray(const Conversion&, const Frame&);       // to BGR24, then to gray
Task openCvVariableGradients(const Conversion&, const Frame&);  // to BGR24
Task openCvBilinearArea(const Conversion&, const Frame&);       // to BGR24, then means of blocks
Task openCvEdgeAware(const Conversion&, const Frame&);          // 8 bits to 8, or 16 to 16
Task openCvCopy(const Conversion&, const Frame&);
Task openCvArea(const Conversion&, const Frame&);
Task openCvConvert(const Conversion&, const Frame&);      // 16 bits to 8
Task openCvAreaConvert(const Conversion&, const Frame&);  // means of blocks, then 16 bits to 8
Task openCvTable(const Conversion&, const Frame&);        // 8 bits to 8; it has no wider tables
Task openCvFilter(const Conversion&, const Frame&);       // an image, out of place

// libdc1394: 8 bits to 8, or 16 to 16
Task dc1394Bilinear(const Conversion&, const Frame&);
Task dc1394HqLinear(const Conversion&, const Frame&);  // fixed filters of 5 x 5
Task dc1394EdgeSense(const Conversion&, const Frame&);
Task dc1394VariableGradients(const Conversion&, const Frame&);

// LibRaw: 16 bits to 16, four samples per pixel
Task librawPixelGrouping(const Conversion&, const Frame&);
Task librawAhd(const Conversion&, const Frame&);

// libswscale
Task swscaleBilinear(const Conversion&, const Frame&);  // 16 bits to RGB24

}  // namespace vistrel::core::bench
