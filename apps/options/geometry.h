// Sizes and regions as people write them: 640x480, 640x480+16+8.
#pragma once

#include <string_view>

#include "vistrel/vistrel_host.h"

namespace vistrel::app {

struct Size {
  uint32_t width, height;
};

// WxH, both from 1. Throws Failure (usage) with `option` in its text.
Size parseSize(std::string_view option, std::string_view text);

// WxH+X+Y. A size of 0 passes: that nothing is left of it, the conversion says.
vistrel_region parseRegion(std::string_view option, std::string_view text);

}  // namespace vistrel::app
