// What each convention calls the formats that a conversion writes.
#pragma once

#include <cstdint>
#include <vector>

namespace vistrel::app {

// Null where a convention has no name for it.
struct OutputNames {
  const char* constant;
  uint32_t bytes;     // of a pixel
  const char* order;  // of its samples
  const char* v4l2;
  const char* gstreamer;
  const char* ffmpeg;
  const char* opencv;  // type of the matrix
};

const std::vector<OutputNames>& outputNames();

}  // namespace vistrel::app
