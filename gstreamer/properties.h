// The properties of the element.
#pragma once

#include <glib-object.h>

#include <vector>

#include "gstreamer/settings.h"

namespace vistrel::gstreamer {

struct Property {
  GParamSpec* spec;
  void (*set)(Settings& settings, const GValue* value);
  void (*get)(const Settings& settings, GValue* value);
};

// Their number in a class is their index plus 1.
std::vector<Property> makeProperties();

}  // namespace vistrel::gstreamer
