// Sizes and regions as users type them: 640x480, 640x480+16+8.
#pragma once

#include <string>
#include <string_view>

#include "vistrel/vistrel_host.h"

namespace vistrel::app {

struct Size {
  uint32_t width, height;
};

// Parses WxH, both at least 1. Throws ProgramError (usage) that names `option`.
Size parseSize(std::string_view option, std::string_view text);

// Parses WxH+X+Y. Accepts a size of 0, which the conversion rejects, but for 0x0+0+0, which means
// the whole frame there.
vistrel_region parseRegion(std::string_view option, std::string_view text);

// As users type it.
std::string regionText(const vistrel_region& region);

}  // namespace vistrel::app
