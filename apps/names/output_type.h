// The types of outputs, by their names.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vistrel::app {

// What follows the last point of a name, or precedes the ":-" of standard output, in lower case:
// "png" for x.PNG and for png:-. Empty if there is neither.
std::string outputTypeName(const std::filesystem::path& output);

// The types of pictures in a folder, as --type takes them.
const std::vector<std::string>& folderTypes();

}  // namespace vistrel::app
