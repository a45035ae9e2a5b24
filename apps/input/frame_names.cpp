#include "apps/input/frame_names.h"

#include <algorithm>
#include <span>

#include "apps/files/stem.h"

namespace vistrel::app {
namespace {

constexpr const char* kFitsNames[] = {".fit", ".fits", ".fts"};
constexpr const char* kPlain[] = {".pgm", ".pnm",  ".pam", ".png", ".npy",
                                  ".tif", ".tiff", ".dng", ".fz"};
constexpr const char* kCameraRawNames[] = {
    ".3fr", ".arw", ".cr2", ".cr3", ".crw", ".dcr", ".erf", ".iiq", ".kdc", ".mef", ".mos",
    ".mrw", ".nef", ".nrw", ".orf", ".pef", ".raf", ".rw2", ".rwl", ".sr2", ".srf", ".srw"};
constexpr const char* kHeaderless[] = {".raw", ".bin", ".dat", ".img", ".dump"};

bool endsLike(const std::filesystem::path& path, std::span<const char* const> ends) {
  return std::ranges::find(ends, extensionOf(path)) != ends.end();
}

}  // namespace

bool isFrameName(const std::filesystem::path& path) {
  const bool isGzip = extensionOf(path) == ".gz";
  return endsLike(isGzip ? path.stem() : path, kFitsNames) || endsLike(path, kPlain) ||
         isCameraRawName(path);
}

bool isCameraRawName(const std::filesystem::path& path) { return endsLike(path, kCameraRawNames); }

bool isHeaderlessName(const std::filesystem::path& path) { return endsLike(path, kHeaderless); }

}  // namespace vistrel::app
