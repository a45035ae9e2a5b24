// The element vistreldemosaic.
#pragma once

#include <glib-object.h>

namespace vistrel::gstreamer {

GType elementType();

}  // namespace vistrel::gstreamer
