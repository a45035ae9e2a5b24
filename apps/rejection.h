// Rejections by the host layer, in the terms of the command line.
#pragma once

#include <string>
#include <vector>

#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// What sets an argument of the host layer on this command line.
struct OptionName {
  std::string argument, option;
  std::string value = {};  // as typed; empty: the host layer's own
  std::string hint = {};   // what the user can do about it; may be empty
};
using OptionNames = std::vector<OptionName>;

// "--option VALUE: reason; hint". `names` come first; an argument that they don't have goes by the
// name that it has in all commands.
std::string textOf(const Error& error, const OptionNames& names = {});

}  // namespace vistrel::app
