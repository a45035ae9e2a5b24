// The names of files without their extensions.
#pragma once

#include <filesystem>

namespace vistrel::app {

// ".fits" in lower case.
std::string extensionOf(const std::filesystem::path& path);

// "rose" of "roses/rose.pgm"; of a compressed file, both extensions are left out: "m31" of
// "m31.fits.gz".
std::filesystem::path stemOf(const std::filesystem::path& path);

}  // namespace vistrel::app
