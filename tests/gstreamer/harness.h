// The element alone, between a source and a sink that tests play.
#pragma once

#include <gst/check/gstharness.h>
#include <gst/video/video.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vistrel::test {

using Bytes = std::vector<uint8_t>;

struct Unref {
  void operator()(GstBuffer* buffer) const { gst_buffer_unref(buffer); }
  void operator()(GstCaps* caps) const { gst_caps_unref(caps); }
};
using Buffer = std::unique_ptr<GstBuffer, Unref>;
using Caps = std::unique_ptr<GstCaps, Unref>;

// Initialises GStreamer and registers the element; critical messages end the process.
void initGstreamer();

class Harness {
 public:
  Harness();
  ~Harness();
  Harness(const Harness&) = delete;
  Harness& operator=(const Harness&) = delete;

  GstHarness* get() { return harness_; }
  GstElement* element() { return harness_->element; }

  // As gst-launch sets properties.
  void set(const char* property, const std::string& value);

  // Of the frames that are pushed, and what the sink accepts.
  void frames(const std::string& caps);
  void pictures(const std::string& caps);

  GstFlowReturn push(const Bytes& bytes);

  // A picture; null if there is none.
  Buffer pull() { return Buffer(gst_harness_try_pull(harness_)); }

  // Of the pictures: as the element says.
  GstVideoInfo info();

  // The texts of the errors that were posted since the last call; the last one of them, empty if
  // there is none.
  std::vector<std::string> errors();
  std::string error();

  // The texts of the warnings that were posted since the last call.
  std::vector<std::string> warnings();

 private:
  GstHarness* harness_;
  GstBus* bus_;
};

// The first error of a pipeline in the notation of gst-launch, also that it can't be made; empty at
// the end of the stream.
std::string errorOf(const std::string& description);

GstBuffer* bufferOf(const Bytes& bytes);
Bytes bytesOf(GstBuffer* buffer);

// How many bytes that don't repeat soon.
Bytes noise(size_t count, uint32_t seed);

}  // namespace vistrel::test
