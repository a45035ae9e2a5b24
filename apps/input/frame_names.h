// Which files of a folder are frames, by their extensions.
#pragma once

#include <filesystem>

namespace vistrel::app {

// Case is ignored.
bool isFrameName(const std::filesystem::path& path);  // readable without options
bool isCameraRawName(const std::filesystem::path& path);
bool isHeaderlessName(const std::filesystem::path& path);

}  // namespace vistrel::app
