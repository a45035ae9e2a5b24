#include "apps/commands/commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "apps/error.h"
#include "apps/input/reader.h"
#include "apps/names/pixel_format.h"
#include "apps/options/geometry.h"
#include "apps/options/options.h"
#include "apps/tools/guess/guess.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr const char* kGuessExamples = R"(Examples:
  vistrel guess camera.raw
  vistrel guess camera.raw -s 1280x960 --json

The first line is the command for the most likely format; then come all formats,
best first. Rows may be padded, and a header may precede one or several frames.
The green sites can be measured, but not which of the other two is red: if
colours come out wrong, use the second phase. A dark frame may have more bits
than it uses.)";

// The most that is read into memory.
constexpr uint64_t kMax = 1 << 30;

struct GuessOptions {
  std::string path;
  std::optional<Size> size;
  bool json = false;
};

// The options of the packing. Samples in high bits have no named format.
std::string packingOptionsOf(const Guess& g) {
  if (are16Bit(g.packing))
    return fmt::format("--bits {}{}{} --phase {}", std::max(g.bits, 9u),
                       g.packing == VISTREL_PACKING_BIG ? " --endian big" : "",
                       g.highBits ? " --align high" : "", vistrel_phase_name(g.phase));
  for (const PixelFormat& f : pixelFormats())
    if (f.packing == g.packing && f.bits == g.bits && f.phase == g.phase)
      return fmt::format("--pixfmt {}", f.pfnc.empty() ? f.v4l2Code : f.pfnc);
  return "";
}

// Several frames need a folder; the first one shows whether the guess is right.
std::string optionsOf(const Guess& g) {
  std::string options = fmt::format("-s {}x{} {}", g.width, g.height, packingOptionsOf(g));
  if (g.stride) options += fmt::format(" --stride {}", g.stride);
  if (g.continuous) options += " --continuous";
  if (g.skip) options += fmt::format(" --skip {}", g.skip);
  return options + (g.frames > 1 ? " --frame 0" : "");
}

std::string commandOf(const GuessOptions& o, const Guess& g) {
  return fmt::format("vistrel convert {} {} -o guess.png", quoted(o.path), optionsOf(g));
}

std::string describe(const Guess& g) {
  std::string text = fmt::format("{:.3f}  {}x{}, {}, {} bits{}, {}", g.score, g.width, g.height,
                                 packingNames(g.packing).name, g.bits,
                                 g.highBits ? " (the high ones)" : "", vistrel_phase_name(g.phase));
  if (g.phase != g.otherPhase) text += fmt::format(" or {}", vistrel_phase_name(g.otherPhase));
  if (g.stride) text += fmt::format(", {} bytes from row to row", g.stride);
  if (g.skip) text += fmt::format(", after {} bytes", g.skip);
  if (g.frames > 1) text += fmt::format(", {} frames", g.frames);
  if (g.trailing) text += fmt::format(", {} bytes left", g.trailing);
  return text;
}

void printText(const GuessOptions& o, const std::vector<Guess>& guesses) {
  fmt::print("{}\n", commandOf(o, guesses[0]));
  for (const Guess& g : guesses) fmt::print("{}\n       {}\n", describe(g), commandOf(o, g));
  fmt::print("Red and blue cannot be told apart: try the second phase if colours are wrong.\n");
}

void printJson(const GuessOptions& o, const std::vector<Guess>& guesses) {
  auto json = nlohmann::ordered_json::array();
  for (const Guess& g : guesses)
    json.push_back({{"score", g.score},
                    {"width", g.width},
                    {"height", g.height},
                    {"packing", packingNames(g.packing).name},
                    {"bits", g.bits},
                    {"align", g.highBits ? "high" : "low"},
                    {"stride", g.stride ? nlohmann::ordered_json(g.stride) : nullptr},
                    {"continuous", g.continuous},
                    {"skip", g.skip},
                    {"frames", g.frames},
                    {"trailing", g.trailing},
                    {"phases", g.phase == g.otherPhase
                                   ? nlohmann::ordered_json{vistrel_phase_name(g.phase)}
                                   : nlohmann::ordered_json{vistrel_phase_name(g.phase),
                                                            vistrel_phase_name(g.otherPhase)}},
                    {"command", commandOf(o, g)}});
  fmt::print("{}\n", json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

void guessOne(const GuessOptions& o) {
  const Source source(o.path);
  if (const char* const kind = kindOf(source))
    throwError(kRejected,
               "it begins like a {} file, so it is not headerless; vistrel info describes it",
               kind);
  if (source.size() > kMax)
    throwError(kRejected, "it has {} bytes: at most {} are allowed", source.size(), kMax);
  const std::vector<Guess> guesses = guessFormat(source.all(), o.size);
  if (guesses.empty() && o.size)
    throwError(kRejected, "nothing looks like a frame of {}x{} pixels", o.size->width,
               o.size->height);
  if (guesses.empty()) throwError(kRejected, "nothing looks like a frame");
  o.json ? printJson(o, guesses) : printText(o, guesses);
}

}  // namespace

void addGuessCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("guess", "Guess the format of a headerless raw file");
  const auto o = std::make_shared<GuessOptions>();
  command->add_option("IN", o->path, "Headerless raw file; - is standard input")->required();
  command
      ->add_option_function<std::string>(
          "-s,--size", [o](const std::string& s) { o->size = parseSize("--size", s); },
          "Its size, if known")
      ->type_name("WxH");
  command->add_flag("--json", o->json, "Print JSON");
  command->footer(kGuessExamples);
  command->callback([o, &status] {
    const Outcome outcome = attempt([&o] { guessOne(*o); });
    if (outcome.status != kDone) throw ProgramError(outcome.status, o->path + ": " + outcome.text);
    status = kDone;
  });
}

}  // namespace vistrel::app
