// The finishing stage of a conversion: how its samples are scaled, and how its pixels are finished.
#pragma once

#include "finish/finish_rows.h"
#include "host/engine.h"
#include "samples/scale.h"

namespace vistrel::host {

// The white level, or full scale.
uint32_t whiteOf(const vistrel_frame& frame, const vistrel_conversion& conversion);

// The bits that samples are scaled to, unless the conversion truncates them.
uint32_t finishBits(const vistrel_frame& frame, const vistrel_conversion& conversion);

// Throws Rejection for a finishing stage that is not for this frame or conversion.
void checkFinish(const vistrel_frame& frame, const vistrel_conversion& conversion);

// How samples are scaled at the place (x, y) of the frame and at the next one in its row.
core::Scaling scalingOf(const Plan& plan, const vistrel_frame& frame,
                        const vistrel_conversion& conversion, const Gains& gains, int64_t x,
                        int64_t y);

// The memory of a conversion's table; 0 without a finishing stage.
size_t finishTableBytes(const Plan& plan, const vistrel_conversion& conversion);

// Fills it. Returns null without a finishing stage.
const void* fillFinishTable(const EngineCall& call, void* table);

core::Finish finishOf(const Plan& plan, const vistrel_frame& frame,
                      const vistrel_conversion& conversion, const Gains& gains, const void* table);

}  // namespace vistrel::host
