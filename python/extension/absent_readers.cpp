// In wheels, in place of the readers that need large libraries.
#include <pybind11/pybind11.h>

#include "apps/error.h"
#include "apps/input/frame_names.h"
#include "apps/input/readers.h"

namespace vistrel::app {
namespace {

[[noreturn]] void throwAbsent(const char* kind) {
  throw pybind11::import_error(
      fmt::format("reading {} needs the Debian package python3-vistrel", kind));
}

bool beginsFits(const Source&, const std::string& head) { return head.starts_with("SIMPLE  ="); }
bool beginsGzip(const Source&, const std::string& head) { return head.starts_with("\x1f\x8b"); }
bool isCameraRaw(const Source& source, const std::string&) {
  return isCameraRawName(source.path());
}

std::unique_ptr<Reader> openFits(const Source&, const InputOptions&) { throwAbsent("FITS"); }
std::unique_ptr<Reader> openCameraRaw(const Source&, const InputOptions&) {
  throwAbsent("camera raw files");
}

}  // namespace

const ReaderType kFits{"FITS", beginsFits, openFits};
const ReaderType kGzipFits{"gzip", beginsGzip, openFits};
const ReaderType kCameraRaw{"camera raw", isCameraRaw, openCameraRaw};

std::unique_ptr<Reader> openCompressedDng(const Source&, uint64_t) {
  throwAbsent("a DNG of JPEG samples");
}

}  // namespace vistrel::app
