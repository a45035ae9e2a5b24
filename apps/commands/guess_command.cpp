#include "apps/commands/commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "apps/commands/picture_request.h"
#include "apps/error.h"
#include "apps/input/reader.h"
#include "apps/names/pixel_format.h"
#include "apps/options/geometry.h"
#include "apps/options/options.h"
#include "apps/tools/guess/guess_text.h"
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

std::string commandOf(const GuessOptions& o, const Guess& g) {
  return fmt::format("vistrel convert {} {} -o guess.png", fileWord(o.path), optionsOf(g));
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
