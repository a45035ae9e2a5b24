#include "apps/input/frame_names.h"

#include <algorithm>
#include <cctype>
#include <span>
#include <string>

namespace vistrel::app {
namespace {

constexpr const char* kPlain[] = {".pgm", ".pnm", ".png",  ".tif", ".tiff",
                                  ".dng", ".fit", ".fits", ".fts"};
constexpr const char* kCameraRawNames[] = {
    ".3fr", ".arw", ".cr2", ".cr3", ".crw", ".dcr", ".erf", ".iiq", ".kdc", ".mef", ".mos",
    ".mrw", ".nef", ".nrw", ".orf", ".pef", ".raf", ".rw2", ".rwl", ".sr2", ".srf", ".srw"};
constexpr const char* kHeaderless[] = {".raw", ".bin", ".dat", ".img", ".dump"};

bool endsLike(const std::filesystem::path& path, std::span<const char* const> ends) {
  std::string end = path.extension().string();
  std::ranges::transform(end, end.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return std::ranges::find(ends, end) != ends.end();
}

}  // namespace

bool isFrameName(const std::filesystem::path& path) {
  return endsLike(path, kPlain) || isCameraRawName(path);
}

bool isCameraRawName(const std::filesystem::path& path) { return endsLike(path, kCameraRawNames); }

bool isHeaderlessName(const std::filesystem::path& path) { return endsLike(path, kHeaderless); }

}  // namespace vistrel::app
