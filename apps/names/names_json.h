// The tables of names as JSON. A name that a convention lacks is null.
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
