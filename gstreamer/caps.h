// What goes in and what comes out.
#pragma once

#include <gst/gst.h>

#include "vistrel/vistrel_host.h"

namespace vistrel::gstreamer {

// What makes pictures smaller than frames.
struct Shape {
  vistrel_region region{};  // all 0: the whole frame
  uint32_t binning = 1;

  bool operator==(const Shape& other) const;
};

// Of the pads' templates. The caller owns caps that these functions return.
GstCaps* sinkCaps();
GstCaps* sourceCaps();

// The caps of the other side that fit these ones, of the pad with that direction.
GstCaps* transformedCaps(GstPadDirection direction, const GstCaps* caps, const Shape& shape);

}  // namespace vistrel::gstreamer
