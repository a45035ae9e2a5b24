// A conversion that has passed all checks, by the engine.
#pragma once

#include "common/rows/arena.h"
#include "host/plan.h"
#include "host/preparation.h"

namespace vistrel::host {

struct EngineCall {
  const Plan& plan;
  const vistrel_frame& frame;
  const vistrel_conversion& conversion;
  Gains gains;
  unsigned char* pixels;
  ptrdiff_t stride;
};

// Rows first .. end - 1 of the image.
struct ImageRows {
  uint32_t first, end;
};

// Makes them. Bands begin on rows that are multiples of rowsThatBelongTogether(). From an arena
// that counts it only takes the memory that it needs.
void makeRows(const EngineCall& call, ImageRows rows, core::Arena& arena);

}  // namespace vistrel::host
