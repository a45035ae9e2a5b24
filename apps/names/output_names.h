// The names of the output formats in each convention.
#pragma once

#include <cstdint>
#include <vector>

namespace vistrel::app {

// A name that a convention lacks is null.
struct OutputNames {
  const char* constant;
  uint32_t bytes;     // per pixel
  const char* order;  // of the samples
  const char* v4l2;
  const char* gstreamer;
  const char* ffmpeg;
  const char* opencv;  // matrix type
};

const std::vector<OutputNames>& outputNames();

}  // namespace vistrel::app
