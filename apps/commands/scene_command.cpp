#include "apps/commands/commands.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <string>

#include "apps/error.h"
#include "apps/options/input_options.h"
#include "apps/options/options.h"
#include "apps/pictures/picture.h"
#include "apps/tools/scene/camera.h"

namespace vistrel::app {
namespace {

constexpr const char* kSceneExamples = R"(Examples:
  vistrel scene -o scene.pgm -s 1920x1280 --bits 12 --phase rggb
  vistrel convert scene.pgm -o scene.png
  vistrel scene --camera -o scene.dng

With --camera, the frame is what a camera delivers in warm light: linear, with a
black level, colours of its own, vignetting, noise and clipped highlights. A
.dng specifies how to undo it.)";

struct SceneOptions {
  std::string output;
  Size size{1536, 1024};
  uint32_t bits = 12;
  std::optional<uint32_t> phase;
  bool camera = false;
  double noise = 0.5;
  uint64_t seed = 1;
};

std::string titleOf(const SceneOptions& o, uint32_t phase) {
  std::string title = fmt::format("VISTREL  {}X{}  {} BIT  {}", o.size.width, o.size.height, o.bits,
                                  vistrel_phase_name(phase));
  std::transform(title.begin(), title.end(), title.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return title;
}

// From CIE XYZ to the camera's colours in daylight.
Matrix3 xyzMatrixOf(const Camera& camera) {
  return product(diagonal(camera.daylight), product(camera.matrix, srgbFromXyz()));
}

DngCamera dngCamera(const SceneOptions& o, uint32_t phase) {
  DngCamera dng = unknownCamera(phase, o.bits);
  dng.model = "Vistrel test scene";
  dng.knowsColours = true;
  dng.illuminant = kExifD65;
  dng.neutral = {1, 1, 1};
  if (!o.camera) return dng;
  dng.model += " in warm light";
  dng.neutral = kWarmCamera.neutral;
  dng.matrix = xyzMatrixOf(kWarmCamera);
  dng.white = levelOf(kWarmCamera.white, o.bits);
  for (size_t i = 0; i < 4; ++i) dng.black[i] = levelOf(kWarmCamera.black[i], o.bits);
  return dng;
}

Image frameOf(const SceneOptions& o, uint32_t phase) {
  const auto [width, height] = o.size;
  const Scene scene(width, height, titleOf(o, phase));
  const Sensor sensor{o.bits, phase, o.noise, o.seed};
  return o.camera ? expose(scene, width, height, sensor, kWarmCamera)
                  : expose(scene, width, height, sensor);
}

ExitStatus run(const SceneOptions& o) {
  const uint32_t phase = o.phase.value_or(VISTREL_RGGB);
  const bool dng = isDng(frameType(o.output));
  if (phase == VISTREL_MONO && (dng || o.camera))
    throwError(kUsage, "--phase mono: {} needs colour filters", o.camera ? "--camera" : "a .dng");
  savePicture(frameOf(o, phase), {.camera = dngCamera(o, phase)}, o.output);
  return kDone;
}

}  // namespace

void addSceneCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("scene", "Render a test scene as a raw frame");
  const auto o = std::make_shared<SceneOptions>();
  command->add_option("-o,--output", o->output, "Frame: .dng, .pgm, .png, .npy, .raw or -")
      ->required()
      ->type_name("OUT");
  command
      ->add_option_function<std::string>(
          "-s,--size", [o](const std::string& s) { o->size = parseSize("--size", s); },
          "Size (1536x1024)")
      ->type_name("WxH");
  between(command->add_option("--bits", o->bits, "Significant bits of a sample (12)"), 8, 16);
  addPhaseOption(*command, o->phase);
  command->add_flag("--camera", o->camera, "As a camera delivers it, in linear light");
  command->add_option("--noise", o->noise, "Noise: deviation at full scale, in percent of it (0.5)")
      ->check(CLI::Range(0.0, 100.0).description(""))
      ->type_name("PERCENT");
  fromZero(command->add_option("--seed", o->seed, "Seed of the noise (1)"))->type_name("N");
  command->footer(kSceneExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
