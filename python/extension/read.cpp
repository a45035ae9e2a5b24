#include "python/extension/read.h"

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include <cstring>

#include "apps/input/camera_colour.h"
#include "apps/input/frame_file.h"
#include "apps/look/camera_look.h"
#include "python/extension/arguments.h"
#include "python/extension/look_parts.h"
#include "python/extension/unlocked.h"

namespace vistrel::python {
namespace {

// The arguments of _files.read, in this order.
enum ReadArgument {
  kPath,
  kPhase,
  kBits,
  kIndex,
  kAlign,
  kFromName,
  kSize,
  kPixelFormat,
  kByteOrder,
  kSkip,
  kStride,
  kContinuous,
  kRange
};

std::optional<uint32_t> optionalInteger(py::handle value, const Parameter& parameter) {
  if (value.is_none()) return {};
  return integerOf(value, parameter);
}

app::RealRange rangeOf(py::handle value) {
  const Parameter parameter{"range", VISTREL_BAD_TABLE};
  const auto ends = sequenceOf(value, parameter, 2, "two numbers");
  const double low = numberOf(py::object(ends[0]), parameter);
  const double high = numberOf(py::object(ends[1]), parameter);
  if (!(low < high)) reject(parameter.status, parameter.name, textOf(value), "low < high");
  return {low, high};
}

void readHeaderless(const py::args& a, app::InputOptions& o) {
  static constexpr const char* kOrders[] = {"little", "big", nullptr};
  uint32_t size[2];
  integersOf(a[kSize], {"size", VISTREL_BAD_SIZE}, size, 2);
  if (!size[0] || !size[1]) reject(VISTREL_BAD_SIZE, "size", textOf(a[kSize]), "at least 1x1");
  o.size = app::Size{size[0], size[1]};
  if (!a[kPixelFormat].is_none()) o.pixfmt = &pixelFormatOf(a[kPixelFormat]);
  if (!o.pixfmt && !o.bits && !o.fromName)
    reject(VISTREL_BAD_BITS, "bits", "", "a headerless raw file does not specify its depth");
  o.bigEndian = choiceOf(a[kByteOrder], {"byte_order", VISTREL_BAD_PACKING}, kOrders) == 1;
  o.skip = integerOf(a[kSkip], {"skip", VISTREL_SHORT_BUFFER});
  o.stride = optionalInteger(a[kStride], {"stride", VISTREL_BAD_STRIDE}).value_or(0);
  o.continuous = flagOf(a[kContinuous], {"continuous", VISTREL_BAD_CONTINUOUS});
}

app::InputOptions inputOptions(const py::args& a) {
  static constexpr const char* kAlignments[] = {"low", "high", nullptr};
  app::InputOptions o;
  if (!a[kPhase].is_none())
    o.phase = codeOf(a[kPhase], {"phase", VISTREL_BAD_PHASE}, vistrel_parse_phase);
  o.bits = optionalInteger(a[kBits], {"bits", VISTREL_BAD_BITS});
  o.frame = integerOf(a[kIndex], {"frame", VISTREL_BAD_COUNT});
  o.highBits = choiceOf(a[kAlign], {"align", VISTREL_BAD_ALIGNMENT}, kAlignments) == 1;
  o.fromName = flagOf(a[kFromName], {"from_name", VISTREL_BAD_BITS});
  if (!a[kRange].is_none()) o.range = rangeOf(a[kRange]);
  if (!a[kSize].is_none()) readHeaderless(a, o);
  return o;
}

py::array arrayOf(const vistrel_frame& frame) {
  const py::dtype dtype(frame.bytes_per_sample == 1 ? "u1" : "u2");
  py::array samples(dtype, {py::ssize_t{frame.height}, py::ssize_t{frame.width}});
  std::memcpy(samples.mutable_data(), frame.samples, frame.size);
  return samples;
}

py::dict cameraOf(const app::CameraMetadata& m) {
  py::dict camera;
  camera["make"] = m.make;
  camera["model"] = m.model;
  camera["date"] = m.date;
  camera["exposure_time"] = m.exposureTime;
  camera["iso"] = m.iso;
  camera["gain"] = m.gain;
  camera["aperture"] = m.aperture;
  camera["focal_length"] = m.focalLength;
  camera["temperature"] = cameraColour(m).temperature;
  return camera;
}

py::object cropOf(const app::CameraMetadata& m) {
  if (!m.crop) return py::none();
  return py::make_tuple(m.crop->x, m.crop->y, m.crop->width, m.crop->height);
}

py::dict fieldsOf(const app::FrameFile& file) {
  const vistrel_frame& frame = file.frame();
  const app::CameraMetadata& camera = file.description().camera;
  const bool isMono = frame.phase == VISTREL_MONO;
  py::dict fields;
  fields["samples"] = arrayOf(frame);
  fields["phase"] = file.knowsPhase() ? py::object(py::str(vistrel_phase_name(frame.phase)))
                                      : py::object(py::none());
  fields["bits"] = frame.bits;
  fields["align"] = frame.alignment == VISTREL_HIGH_BITS ? "high" : "low";
  fields["format"] = file.description().format;
  fields["frames"] = file.frames();
  fields["look"] = partsOf(app::withCamera({}, camera, isMono).known);
  fields["orientation"] = camera.orientation.value_or(VISTREL_UPRIGHT);
  fields["crop"] = cropOf(camera);
  fields["camera"] = cameraOf(camera);
  return fields;
}

// The fields of vistrel.Frame, and warnings.
py::tuple read(const py::args& arguments) {
  const std::string path = arguments[kPath].cast<std::string>();
  const app::InputOptions options = inputOptions(arguments);
  std::vector<std::string> warnings;
  std::optional<app::FrameFile> file;
  withoutLockOrThrow([&] {
    file.emplace(path, options, warnings);
    file->read();
  });
  for (std::string& warning : warnings) warning = withArguments(warning);
  return py::make_tuple(fieldsOf(*file), warnings);
}

}  // namespace

void bindRead(py::module_& module) { module.def("read", &read); }

}  // namespace vistrel::python
