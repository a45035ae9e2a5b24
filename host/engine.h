// Runs a checked conversion on the engine.
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
  const void* finishTable = nullptr;  // null without a finishing stage
  bool isPushed = false;              // rows may be read as soon as they are final
};

// Makes rows of the image and makes them visible to all threads. With an arena that counts, it only
// takes memory: the same amount for any rows.
void makeRows(const EngineCall& call, ImageRows rows, core::Arena& arena);

}  // namespace vistrel::host
