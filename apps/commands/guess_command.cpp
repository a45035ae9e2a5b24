#include "apps/commands/commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "apps/error.h"
#include "apps/input/reader.h"
#include "apps/names/pixel_format.h"
#include "apps/options/geometry.h"
#include "apps/tools/guess/guess.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr const char* kGuessExamples = R"(Examples:
  vistrel guess camera.raw
  vistrel guess camera.raw -s 1280x960 --json

Ranks possible formats by the similarity of neighbouring samples. The file must
hold one frame, without a header or row padding. A dark frame may have more bits
than it uses. The green sites can be measured, but not which of the other two is
red: if colours come out wrong, use the second phase.)";

// A frame of 16 x 16 bytes; the most that is read into memory.
constexpr uint64_t kMin = 256, kMax = 128 << 20;

struct GuessOptions {
  std::string path;
  std::optional<Size> size;
  bool json = false;
};

// The options that convert needs. Samples in high bits have no named format.
std::string optionsOf(const Guess& g, uint32_t phase) {
  const std::string size = fmt::format("-s {}x{}", g.width, g.height);
  if (are16Bit(g.packing))
    return fmt::format("{} --bits {}{}{} --phase {}", size, std::max(g.bits, 9u),
                       g.packing == VISTREL_PACKING_BIG ? " --endian big" : "",
                       g.highBits ? " --align high" : "", vistrel_phase_name(phase));
  for (const PixelFormat& f : pixelFormats())
    if (f.packing == g.packing && f.bits == g.bits && f.phase == phase)
      return fmt::format("{} --pixfmt {}", size, f.pfnc.empty() ? f.v4l2Code : f.pfnc);
  return size;
}

// Quotes a path for a shell.
std::string quoted(const std::string& path) {
  const auto plain = [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || std::strchr("/._-+", c);
  };
  if (std::all_of(path.begin(), path.end(), plain)) return path;
  std::string text = "'";
  for (const char c : path) c == '\'' ? text += "'\\''" : text += c;
  return text + "'";
}

std::string commandOf(const GuessOptions& o, const Guess& g, uint32_t phase) {
  return fmt::format("vistrel convert {} {} -o guess.png", quoted(o.path), optionsOf(g, phase));
}

void printText(const GuessOptions& o, const std::vector<Guess>& guesses) {
  for (const Guess& g : guesses) {
    const std::string other =
        g.phase == g.otherPhase ? "" : fmt::format(" or {}", vistrel_phase_name(g.otherPhase));
    fmt::print("{:.3f}  {}x{}, {}, {} bits{}, {}{}\n       {}\n", g.score, g.width, g.height,
               packingNames(g.packing).name, g.bits, g.highBits ? " (the high ones)" : "",
               vistrel_phase_name(g.phase), other, commandOf(o, g, g.phase));
  }
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
                    {"phases", g.phase == g.otherPhase
                                   ? nlohmann::ordered_json{vistrel_phase_name(g.phase)}
                                   : nlohmann::ordered_json{vistrel_phase_name(g.phase),
                                                            vistrel_phase_name(g.otherPhase)}},
                    {"command", commandOf(o, g, g.phase)}});
  fmt::print("{}\n", json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

void guessOne(const GuessOptions& o) {
  const Source source(o.path);
  if (const char* const kind = kindOf(source))
    throwError(kRejected,
               "it begins like a {} file, so it is not headerless; vistrel info describes it",
               kind);
  const uint64_t bytes = source.size();
  if (bytes < kMin || bytes > kMax)
    throwError(kRejected, "it has {} bytes: {} to {} are allowed", bytes, kMin, kMax);
  const std::vector<Guess> guesses = guessFormat(source.all(), o.size);
  if (guesses.empty() && o.size)
    throwError(kRejected, "no packing of {}x{} pixels takes {} bytes", o.size->width,
               o.size->height, bytes);
  if (guesses.empty()) throwError(kRejected, "no size fits {} bytes", bytes);
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
