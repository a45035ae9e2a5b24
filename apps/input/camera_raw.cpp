#include "apps/input/readers.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "apps/error.h"
#include "apps/input/frame_names.h"
#include "apps/input/tiff_metadata.h"
#include "apps/names/phase_names.h"
#include "apps/plugin/camera_raw_plugin.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPlugin = "vistrel-libraw.so";

// Next to the program, as in a build folder, or where it is installed.
fs::path findPlugin() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error).parent_path();
  const fs::path installed = (program / VISTREL_PLUGINS_FROM_PROGRAM).lexically_normal();
  for (const fs::path& folder : {program, installed})
    if (fs::exists(folder / kPlugin, error)) return folder / kPlugin;
  throwError(kInputOutput,
             "reading a camera raw file needs the plug-in {}, which is neither in {} nor in {}",
             kPlugin, installed.string(), program.string());
}

// The plug-in stays loaded until the program ends.
vistrel_read_camera_raw_function loadPlugin() {
  const fs::path path = findPlugin();
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const function = library ? dlsym(library, VISTREL_READ_CAMERA_RAW) : nullptr;
  if (!function)
    throwError(kInputOutput, "the plug-in {} cannot be loaded: {}", kPlugin, dlerror());
  return reinterpret_cast<vistrel_read_camera_raw_function>(function);
}

bool isSpecified(const double* values, size_t n) {
  return std::any_of(values, values + n, [](double v) { return v != 0; });
}

CameraMetadata metadataOf(const vistrel_camera_raw& raw) {
  CameraMetadata m;
  m.black = std::to_array(raw.black);
  if (raw.white > 0) m.white = raw.white;
  if (isSpecified(raw.neutral, 3)) m.neutral = std::to_array(raw.neutral);
  if (isSpecified(raw.from_xyz, 9))
    m.calibrations.push_back({std::to_array(raw.from_xyz), kIdentity, {}});
  if (raw.orientation) m.orientation = raw.orientation;
  m.exposureTime = raw.exposure_time;
  m.iso = raw.iso;
  m.aperture = raw.aperture;
  m.focalLength = raw.focal_length;
  m.make = plainText(raw.make);
  m.model = plainText(raw.model);
  m.date = plainDate(raw.date);
  return m;
}

class CameraRawReader : public Reader {
 public:
  explicit CameraRawReader(const Source& source) {
    static const vistrel_read_camera_raw_function readCameraRaw = loadPlugin();
    const std::vector<uint8_t> bytes = source.all();
    char text[200] = "";
    if (readCameraRaw(bytes.data(), bytes.size(), allocateSamples, this, text) != 0)
      throwError(kRejected, "camera raw: {}", text);
    description_.phase = phaseOfBlock(colours_);
    if (description_.phase == VISTREL_MONO)
      throwError(kRejected, "camera raw: its filters are none of the four Bayer phases");
  }

  // Takes what the tags of a DNG say in place of what the plug-in says.
  void readTags(const Source& source, uint64_t offset) {
    Description& d = description_;
    const auto white = d.camera.white;
    d.warnings.clear();
    d.camera = readTiffMetadata(source, offset, d.warnings);
    if (!d.camera.white) d.camera.white = white;
    dropInvalid(d.camera, d.width, d.height, d.warnings);
  }

  void read(uint64_t, void* to) override {
    std::memcpy(to, samples_.data(), samples_.size() * sizeof samples_[0]);
  }

 private:
  static uint16_t* allocateSamples(void* self, const vistrel_camera_raw* raw) {
    auto* reader = static_cast<CameraRawReader*>(self);
    Description& d = reader->description_;
    d.format = "camera raw";
    d.width = raw->width;
    d.height = raw->height;
    d.bytesPerSample = 2;
    d.bits = raw->bits;
    d.bitsKnown = true;
    d.camera = metadataOf(*raw);
    dropInvalid(d.camera, d.width, d.height, d.warnings);
    std::copy_n(raw->colours, 4, reader->colours_.begin());
    try {
      reader->samples_.resize(size_t{raw->width} * raw->height);
    } catch (const std::bad_alloc&) {
      return nullptr;
    }
    return reader->samples_.data();
  }

  std::array<uint32_t, 4> colours_{};
  std::vector<uint16_t> samples_;
};

bool recognisesCameraRaw(const Source& source, const std::string&) {
  return isCameraRawName(source.path());
}

// Loads the plug-in on the first call. Throws ProgramError: input/output if there is no plug-in,
// rejected if it can't read the file.
std::unique_ptr<Reader> openCameraRaw(const Source& source, const InputOptions&) {
  return std::make_unique<CameraRawReader>(source);
}

}  // namespace

const ReaderType kCameraRaw{"camera raw", recognisesCameraRaw, openCameraRaw};

std::unique_ptr<Reader> openCompressedDng(const Source& source, uint64_t offset) {
  auto reader = std::make_unique<CameraRawReader>(source);
  reader->readTags(source, offset);
  return reader;
}

}  // namespace vistrel::app
