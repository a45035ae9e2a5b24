// The demosaic algorithms, in the form that the engine runs.
#pragma once

#include "demosaic/job.h"

namespace vistrel::core {

template <class T>
struct Conversion;

template <class T>
struct DemosaicAlgorithm {
  MakeDemosaic<T>* make;
  // Works in the work buffer, pass after pass, for regions of a single row or column. Null if these
  // need no special treatment.
  void (*inPlace)(const Conversion<T>& conversion) = nullptr;
  // Whether it can finish pixels at the current level. Null if it never can.
  bool (*finishes)() = nullptr;
  // Whether it leaves out the columns beside a job's roi, which begins in an even one.
  bool makesRoi = false;
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

// Whether the packed path can run as a sweep; otherwise it goes through the work buffer.
template <class T>
bool packedKimmelSweeps(const Conversion<T>& conversion);

// Instantiates an algorithm for both depths, in its source file.
#define VISTREL_DEMOSAIC_ALGORITHM(name)      \
  template DemosaicAlgorithm<uint8_t> name(); \
  template DemosaicAlgorithm<uint16_t> name()

}  // namespace vistrel::core
