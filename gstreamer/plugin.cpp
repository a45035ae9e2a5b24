// The plug-in: what GStreamer loads.
#include <gst/gst.h>

#include "gstreamer/element.h"

static gboolean registerElement(GstPlugin* plugin) {
  return gst_element_register(plugin, "vistreldemosaic", GST_RANK_NONE,
                              vistrel::gstreamer::elementType());
}

#define PACKAGE "vistrel"
GST_PLUGIN_DEFINE(GST_VERSION_MAJOR, GST_VERSION_MINOR, vistrel,
                  "Raw camera frames to pictures, exact to the sample", registerElement,
                  VISTREL_PLUGIN_VERSION, GST_LICENSE_UNKNOWN, "libVistrel",
                  "https://vistrel.example")
