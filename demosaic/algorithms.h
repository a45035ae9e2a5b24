// The demosaic algorithms, as the engine runs them.
#pragma once

#include "demosaic/job.h"

namespace vistrel::core {

template <class T>
struct Conversion;

template <class T>
struct DemosaicAlgorithm {
  MakeDemosaic<T>* make;
  // In a work buffer, pass after pass: for regions of a single row or column. Null where these are
  // nothing special.
  void (*inPlace)(const Conversion<T>& conversion) = nullptr;
};

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
DemosaicAlgorithm<T> packedKimmel();  // in floats
template <class T>
DemosaicAlgorithm<T> pixelGrouping();
template <class T>
DemosaicAlgorithm<T> ahd();

// Whether the packed floats can run as a sweep; else they go through the work buffer.
template <class T>
bool packedKimmelSweeps(const Conversion<T>& conversion);

// For both depths, in the source of the algorithm.
#define VISTREL_DEMOSAIC_ALGORITHM(name)      \
  template DemosaicAlgorithm<uint8_t> name(); \
  template DemosaicAlgorithm<uint16_t> name()

}  // namespace vistrel::core
