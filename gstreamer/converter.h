// Converts the buffers of a stream.
#pragma once

#include "gstreamer/picture_buffer.h"
#include "gstreamer/raw_buffer.h"
#include "gstreamer/stream_look.h"

namespace vistrel::gstreamer {

// All that throws throws ProgramError or Error.
class Converter {
 public:
  // Holds a stream of libvistrelhost from start to stop. Throws if there is none.
  void start();
  void stop();

  void set(const Settings& settings);

  // Settings that have no effect on the frames, and why; none before frames are known.
  std::vector<std::string> unused() const;

  // Throws if pictures of these frames are not as `info` says, and then stays as it was.
  void negotiate(const RawStream& stream, const GstVideoInfo& info);

  // The frame begins that many seconds after the last one.
  void convert(GstBuffer* frame, GstBuffer* picture, double seconds);

 private:
  void setThreads(uint32_t threads);
  RawStream withBits(RawStream stream) const;  // those of the settings
  vistrel_conversion conversionOf(const vistrel_frame& frame, const vistrel_region& visible,
                                  const GstVideoInfo& info) const;

  Settings settings_;
  Shape shape_;  // that of the settings
  RawStream stream_;
  GstVideoInfo info_{};
  StreamLook look_;
  Stream host_;
  Team team_;
  Bytes scratch_;
};

}  // namespace vistrel::gstreamer
