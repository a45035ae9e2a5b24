// A demosaic algorithm in the form that the engine runs.
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
  // Whether it can store bytes directly at the current level. Null if it never can.
  bool (*storesDirectly)() = nullptr;
  // Whether it only makes the columns of a job's roi, which must begin at an even column.
  bool makesRoi = false;
};

// Instantiates an algorithm for both depths, in its source file.
#define VISTREL_DEMOSAIC_ALGORITHM(name)      \
  template DemosaicAlgorithm<uint8_t> name(); \
  template DemosaicAlgorithm<uint16_t> name()

}  // namespace vistrel::core
