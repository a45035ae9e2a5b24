// The types of outputs, as their names tell them.
#pragma once

#include <filesystem>
#include <string>

namespace vistrel::app {

// What follows the last point of a name, or precedes the ":-" of standard output, in lower case:
// "png" for x.PNG and for png:-. Empty if there is neither.
std::string outputTypeName(const std::filesystem::path& output);

}  // namespace vistrel::app
