// A frame that the page has decoded, in place of the program's readers that need large libraries.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <vector>

#include "apps/commands/scene_frame.h"
#include "apps/input/reader.h"

namespace vistrel::page {

struct Decoded {
  app::Description description;
  std::vector<uint8_t> samples;  // packed rows in native byte order
};

// The frame that the readers of PNG and TIFF return.
Decoded& decoded();

// What a PNG or a TIFF says, under the names of its tags.
app::Description descriptionOf(const nlohmann::json& tags);

// The test scene.
Decoded decodedScene(const app::SceneOptions& options, uint32_t phase);

}  // namespace vistrel::page
