// Buffers: their sizes, and pools of them.
#pragma once

#include <gst/gst.h>

#include "gstreamer/raw_buffer.h"

namespace vistrel::gstreamer {

// Caps that are fixed and fit the pads' templates.
RawStream rawStreamOf(const GstCaps* frames);

// Of a buffer without a video meta; 0 if the caps aren't fixed.
size_t frameBytes(const GstCaps* frames);
size_t pictureBytes(const GstCaps* pictures);

// Answers those who send frames: a pool, and the metas that say how frames lie in buffers.
bool offerFrames(GstQuery* query);

// Completes the answer of those who receive pictures by a pool.
bool choosePictures(GstQuery* query);

}  // namespace vistrel::gstreamer
