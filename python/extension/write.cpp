#include "python/extension/write.h"

#include <pybind11/numpy.h>

#include "apps/files/temporary_file.h"
#include "apps/pictures/picture.h"
#include "python/extension/arguments.h"
#include "python/extension/unlocked.h"

namespace vistrel::python {
namespace {

// Of an array of shape (height, width) or (height, width, channels) without gaps.
Image imageOf(const py::array& array, uint32_t bits) {
  Image image;
  vistrel_layout& l = image.layout;
  l = {};
  l.height = static_cast<uint32_t>(array.shape(0));
  l.width = static_cast<uint32_t>(array.shape(1));
  l.channels = array.ndim() == 2 ? 1 : static_cast<uint32_t>(array.shape(2));
  l.bits = bits;
  l.bytes = static_cast<size_t>(array.nbytes());
  l.row_bytes = l.bytes / l.height;
  const auto* const first = static_cast<const uint8_t*>(array.data());
  image.pixels.assign(first, first + l.bytes);
  return image;
}

app::Encoding encodingOf(py::handle name) {
  static constexpr const char* kEncodings[] = {"unknown", "linear", "srgb", nullptr};
  switch (choiceOf(name, {"encoding", VISTREL_BAD_TRANSFER}, kEncodings)) {
    case 1: return app::kLinearLight;
    case 2: return {app::Encoding::kSrgb};
    default: return {};
  }
}

std::optional<app::DngCamera> cameraOf(py::handle phase, py::handle black, py::handle white,
                                       uint32_t bits) {
  if (phase.is_none()) return {};
  const uint32_t code = codeOf(phase, {"phase", VISTREL_BAD_PHASE}, vistrel_parse_phase);
  app::DngCamera camera = app::unknownCamera(code, bits);
  uint32_t levels[4];
  integersOf(black, {"black", VISTREL_BAD_BLACK}, levels, 4);
  std::copy(levels, levels + 4, camera.black.begin());
  if (!white.is_none()) camera.white = integerOf(white, {"white", VISTREL_BAD_WHITE});
  return camera;
}

void numbersOf(py::handle value, const Parameter& parameter, double* numbers, size_t count) {
  const auto items = sequenceOf(value, parameter, count, std::to_string(count) + " numbers");
  for (size_t i = 0; i < count; ++i) numbers[i] = numberOf(py::object(items[i]), parameter);
}

// The camera's colours of a neutral object, and its matrix from linear sRGB; or None.
void addColours(py::handle neutral, py::handle fromSrgb, app::DngCamera& camera) {
  const Parameter look{"look", VISTREL_BAD_FINISH};
  if (!neutral.is_none()) numbersOf(neutral, look, camera.neutral.emplace().data(), 3);
  if (fromSrgb.is_none()) return;
  app::Matrix3 matrix;
  numbersOf(fromSrgb, look, matrix.data(), 9);
  camera.matrix = app::product(matrix, camera.matrix);
  camera.illuminant = app::kExifD65;
  camera.knowsColours = true;
}

void checkChannels(const app::PictureType& type, uint32_t channels) {
  if (type.channels && type.channels != channels)
    reject(VISTREL_BAD_FORMAT, "image", std::to_string(channels) + " channels",
           std::string("a ") + type.extension + " has " + std::to_string(type.channels));
}

void write(const std::string& path, const py::array& array, uint32_t bits, py::handle phase,
           py::handle black, py::handle white, py::handle encoding, py::handle neutral,
           py::handle fromSrgb) {
  const Image image = imageOf(array, bits);
  const Parameter to{"path", VISTREL_BAD_FORMAT};
  checkChannels(parsed(to, [&] { return app::pictureType(path); }), image.layout.channels);
  app::PictureDetails details{.encoding = encodingOf(encoding),
                              .camera = cameraOf(phase, black, white, bits)};
  if (details.camera) addColours(neutral, fromSrgb, *details.camera);
  if (details.camera) parsed(to, [&] { app::frameType(path); });
  withoutLockOrThrow([&] { app::savePicture(image, details, path); });
}

}  // namespace

void bindWrite(py::module_& module) {
  module.def("write", &write);
  module.def("remove_stale_files", &app::removeStaleFiles);
}

}  // namespace vistrel::python
