// The program's kinds of input, but for PGM: frames that the page has decoded, and what it can't.
#include <cstring>

#include "apps/error.h"
#include "apps/input/frame_names.h"
#include "apps/input/readers.h"
#include "try/engine/decoded.h"

namespace vistrel::app {
namespace {

class DecodedReader : public Reader {
 public:
  DecodedReader() { description_ = page::decoded().description; }

  void read(uint64_t, void* to) override {
    const auto& samples = page::decoded().samples;
    std::memcpy(to, samples.data(), samples.size());
  }
};

[[noreturn]] void throwAbsent(const char* kind) {
  throwError(kRejected, "this page doesn't read {}; the program does", kind);
}

bool beginsPng(const Source&, const std::string& head) { return head.starts_with("\x89PNG\r\n"); }
bool beginsTiff(const Source&, const std::string& head) {
  using namespace std::string_literals;
  return head.starts_with("II*\0"s) || head.starts_with("MM\0*"s);
}
bool beginsFits(const Source&, const std::string& head) { return head.starts_with("SIMPLE  ="); }
bool beginsGzip(const Source&, const std::string& head) { return head.starts_with("\x1f\x8b"); }
bool isCameraRaw(const Source& source, const std::string&) {
  return isCameraRawName(source.path());
}

std::unique_ptr<Reader> openDecoded(const Source&, const InputOptions&) {
  return std::make_unique<DecodedReader>();
}
std::unique_ptr<Reader> openFits(const Source&, const InputOptions&) { throwAbsent("FITS"); }
std::unique_ptr<Reader> openGzip(const Source&, const InputOptions&) { throwAbsent("gzip files"); }
std::unique_ptr<Reader> openCameraRaw(const Source&, const InputOptions&) {
  throwAbsent("camera raw files other than uncompressed DNG");
}

}  // namespace

const ReaderType kPng{"PNG", beginsPng, openDecoded};
const ReaderType kTiff{"TIFF (DNG)", beginsTiff, openDecoded};
const ReaderType kFits{"FITS", beginsFits, openFits};
const ReaderType kGzipFits{"gzip", beginsGzip, openGzip};
const ReaderType kCameraRaw{"camera raw", isCameraRaw, openCameraRaw};

}  // namespace vistrel::app
