#include "apps/commands/commands.h"

#include <memory>
#include <string>

#include "apps/commands/scene_frame.h"
#include "apps/error.h"
#include "apps/options/input_options.h"
#include "apps/options/options.h"
#include "apps/pictures/picture.h"

namespace vistrel::app {
namespace {

constexpr const char* kSceneExamples = R"(Examples:
  vistrel scene -o scene.pgm -s 1920x1280 --bits 12 --phase rggb
  vistrel convert scene.pgm -o scene.png
  vistrel scene --camera -o scene.dng

With --camera, the frame is what a camera delivers in warm light: linear, with a
black level, colours of its own, vignetting, noise and clipped highlights. A
.dng specifies how to undo it.)";

struct SceneRequest : SceneOptions {
  std::string output;
};

ExitStatus run(const SceneRequest& o) {
  const uint32_t phase = o.phase.value_or(VISTREL_RGGB);
  const bool dng = isDng(frameType(o.output));
  if (phase == VISTREL_MONO && (dng || o.camera))
    throwError(kUsage, "--phase mono: {} needs colour filters", o.camera ? "--camera" : "a .dng");
  const Image frame = sceneFrame(o, phase);
  const PictureDetails details{.camera = sceneCamera(o, phase)};
  savePicture(frame, details, o.output);
  printRemarks(o.output, frame.layout, details);
  return kDone;
}

}  // namespace

void addSceneCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("scene", "Render a test scene as a raw frame");
  const auto o = std::make_shared<SceneRequest>();
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
