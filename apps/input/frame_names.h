// Which files of a folder are frames, by the ends of their names.
#pragma once

#include <filesystem>

namespace vistrel::app {

// Capitals and small letters are all the same.
bool isFrameName(const std::filesystem::path& path);  // of a kind that is read without options
bool isCameraRawName(const std::filesystem::path& path);
bool isDumpName(const std::filesystem::path& path);

}  // namespace vistrel::app
