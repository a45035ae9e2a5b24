// A call of vistrel_stream_convert.
#pragma once

#include <functional>
#include <vector>

#include "bench/task.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::core::bench {

// All that a conversion needs, so that running it does nothing else.
class HostCall {
 public:
  // May change the frame, the conversion and the padding before memory for the image is allocated.
  using Change = std::function<void(HostCall&)>;

  HostCall(const Conversion& c, const Frame& source, const Change& change = {});
  ~HostCall();
  HostCall(const HostCall&) = delete;
  HostCall& operator=(const HostCall&) = delete;

  void run();
  vistrel_stream* stream() const { return stream_; }

  vistrel_frame frame;
  vistrel_conversion conversion{};
  size_t padding = 0;  // bytes behind each row of the image
  vistrel_layout layout{};
  vistrel_image image{};
  Buffer<uint8_t> memory;

 private:
  vistrel_stream* stream_ = nullptr;
  std::vector<uint16_t> table_;
};

}  // namespace vistrel::core::bench
