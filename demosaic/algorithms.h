// The table of the demosaic algorithms.
#pragma once

#include "demosaic/algorithm.h"
#include "vistrel/vistrel.h"

namespace vistrel::core {

template <class T>
DemosaicAlgorithm<T> bilinear();
template <class T>
DemosaicAlgorithm<T> edge();
template <class T>
DemosaicAlgorithm<T> near();
template <class T>
DemosaicAlgorithm<T> laroche();
template <class T>
DemosaicAlgorithm<T> hamilton();
template <class T>
DemosaicAlgorithm<T> variableGradients();
template <class T>
DemosaicAlgorithm<T> cok();
template <class T>
DemosaicAlgorithm<T> kimmel();  // in doubles
template <class T>
DemosaicAlgorithm<T> floatKimmel();
template <class T>
DemosaicAlgorithm<T> pixelGrouping();
template <class T>
DemosaicAlgorithm<T> ahd();
template <class T>
DemosaicAlgorithm<T> directional();

// Rows above and below a pixel that any algorithm reads, at most.
constexpr int kLargestReach = 9;

struct AlgorithmRow {
  const char* name;  // short, lower case
  uint32_t code;
  uint32_t maxBits;  // maximum significant bits of a sample
  uint32_t minSize;  // minimum width and height of a frame
  // Whether its image in libVistrel's work buffer has a guard. Only such images have raw gray.
  bool isGuarded;
  DemosaicAlgorithm<uint8_t> (*of8)();
  DemosaicAlgorithm<uint16_t> (*of16)();
  uint32_t padding = 8;  // of padded edges, on each side: at least its reach

  template <class T>
  DemosaicAlgorithm<T> of() const {
    if constexpr (sizeof(T) == 1)
      return of8();
    else
      return of16();
  }
};

// Not codes of ImgConvert8 or ImgConvert16. For the first one libVistrel has a function; the other
// one is libvistrelhost's alone.
constexpr uint32_t kAhdCode = 256, kDirectionalCode = 257;

// Ten bits for algorithms that clamp at 1023, fifteen for the one that compares 16-bit samples as
// signed numbers.
inline constexpr AlgorithmRow kAlgorithms[] = {
    {"bilinear", DM_BILINEAR, 16, 2, true, bilinear, bilinear},
    {"edge", DM_EDGE_EX, 15, 2, true, edge, edge},
    {"near", DM_NEAR_NEIGHBOR, 16, 2, false, near, near},
    {"laroche", DM_GRADIENT_LAROCHE, 10, 2, true, laroche, laroche},
    {"hamilton", DM_GRADIENT_HAMILTON, 10, 2, true, hamilton, hamilton},
    {"vng", DM_VARIABLE_GRADIENTS, 10, 2, true, variableGradients, variableGradients},
    {"cok", DM_HUE_COK, 10, 2, true, cok, cok},
    {"kimmel", DM_HUE_KIMMEL, 10, 2, true, kimmel, kimmel},
    {"grouping", DM_PIXEL_GROUPING, 10, 2, true, pixelGrouping, pixelGrouping},
    {"ahd", kAhdCode, 16, 5, false, ahd, ahd},
    {"directional", kDirectionalCode, 16, 2, false, directional, directional, 10},
};

// Null for an unknown code.
constexpr const AlgorithmRow* findAlgorithm(uint32_t code) {
  for (const AlgorithmRow& algorithm : kAlgorithms)
    if (algorithm.code == code) return &algorithm;
  return nullptr;
}

// Whether floatKimmel can run as a sweep; otherwise it goes through the work buffer.
template <class T>
bool floatKimmelSweeps(const Conversion<T>& conversion);

}  // namespace vistrel::core
