#include "apps/commands/commands.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <string>

#include "apps/error.h"
#include "apps/options/input_options.h"
#include "apps/options/options.h"
#include "apps/pictures/picture.h"
#include "apps/tools/scene/sensor.h"

namespace vistrel::app {
namespace {

constexpr const char* kSceneExamples = R"(Example:
  vistrel scene -o scene.pgm -s 1920x1280 --bits 12 --phase rggb
  vistrel convert scene.pgm --phase rggb -o scene.png)";

struct SceneOptions {
  std::string output;
  Size size{1536, 1024};
  uint32_t bits = 12;
  std::optional<uint32_t> phase;
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

ExitStatus run(const SceneOptions& o) {
  const PictureType& type = pictureType(o.output);
  if (type.channels != 1) throwError(kUsage, "-o {}: a raw frame is a .pgm", o.output);
  const uint32_t phase = o.phase.value_or(VISTREL_RGGB);
  const Scene scene(o.size.width, o.size.height, titleOf(o, phase));
  const Image image = expose(scene, o.size.width, o.size.height, {o.bits, phase, o.noise, o.seed});
  AtomicFile output(o.output);
  type.write(image, output);
  output.commit();
  return kDone;
}

}  // namespace

void addSceneCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("scene", "Render a test scene as a raw frame");
  const auto o = std::make_shared<SceneOptions>();
  command->add_option("-o,--output", o->output, "Frame (.pgm)")->required()->type_name("OUT");
  command
      ->add_option_function<std::string>(
          "-s,--size", [o](const std::string& s) { o->size = parseSize("--size", s); },
          "Size (1536x1024)")
      ->type_name("WxH");
  between(command->add_option("--bits", o->bits, "Significant bits of a sample (12)"), 8, 16);
  addPhaseOption(*command, o->phase);
  command->add_option("--noise", o->noise, "Noise: deviation at full scale, in percent of it (0.5)")
      ->check(CLI::Range(0.0, 100.0).description(""))
      ->type_name("PERCENT");
  fromZero(command->add_option("--seed", o->seed, "Seed of the noise (1)"))->type_name("N");
  command->footer(kSceneExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
