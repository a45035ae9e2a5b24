#include "output/rows.h"

#include "common/level.h"
#include "common/simd.h"

#define VISTREL_BODY "output/rows.inl"
#include "common/each_level.inl"

namespace vistrel {

const RowTable& rowTable() { return *VISTREL_BY_LEVEL(kRows); }

}  // namespace vistrel
