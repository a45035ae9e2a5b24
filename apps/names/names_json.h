// The tables of names as JSON texts. Null stands where a convention has no name.
#pragma once

#include <string>

#include "apps/names/phase_names.h"
#include "apps/names/pixel_format.h"

namespace vistrel::app {

// {"phases": [...], "raw": [...], "results": [...]}
std::string namesAsJson();

std::string asJson(const PhaseNames& names);
std::string asJson(const PixelFormat& format);

}  // namespace vistrel::app
