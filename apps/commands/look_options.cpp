#include "apps/commands/look_options.h"

#include <algorithm>

#include "apps/input/camera_colour.h"

namespace vistrel::app {
namespace {

BlackLevels rounded(const std::array<double, 4>& black) {
  BlackLevels levels;
  for (size_t i = 0; i < 4; ++i) levels[i] = static_cast<uint32_t>(std::max(black[i], 0.0) + 0.5);
  return levels;
}

// What users give goes before what files say.
template <class T>
void prefer(std::optional<T>& given, const std::optional<T>& otherwise) {
  if (!given) given = otherwise;
}

}  // namespace

LookChoice withCamera(LookChoice choice, const CameraMetadata& camera, bool isMono) {
  KnownLook& known = choice.known;
  if (camera.black) prefer(known.black, std::optional(rounded(*camera.black)));
  if (camera.white) {
    const double white = std::clamp(*camera.white, 1.0, double{kMaxLevel});
    prefer(known.white, std::optional(static_cast<uint32_t>(white)));
  }
  if (isMono) return choice;
  const CameraColour colour = cameraColour(camera);
  prefer(known.gains, colour.gains);
  prefer(known.matrix, colour.matrix);
  return choice;
}

void checkBlack(const KnownLook& given, const Look& look, const vistrel_frame& frame) {
  if (!given.black || given.white) return;
  const uint32_t black = std::ranges::max(look.black);
  if (black >= look.white && black >> frame.bits == 0)  // the library rejects larger ones
    throwError(kRejected,
               "--look black={}: it must be below the white level, {}, unless white= sets "
               "another",
               black, look.white);
}

namespace {

template <class Numbers>
nlohmann::ordered_json decimalsOf(const Numbers& numbers) {
  nlohmann::ordered_json json = nlohmann::ordered_json::array();
  for (const auto n : numbers) json.push_back(static_cast<double>(n) / kLookOne);
  return json;
}

}  // namespace

nlohmann::ordered_json jsonOf(const Look& look, bool isMono) {
  nlohmann::ordered_json json{{"black", look.black}, {"white", look.white}};
  if (!isMono) {
    json["gains"] = decimalsOf(look.gains);
    json["matrix"] = decimalsOf(look.matrix);
    json["highlights"] = look.neutralHighlights ? "neutral" : "clip";
  }
  json["exposure"] = static_cast<double>(look.exposure) / kLookOne;
  json["curve"] = transferText(look.transfer);
  return json;
}

OptionNames lookOptionNames() {
  OptionNames names{{"conversion.white", "--look white="}, {"finish.exposure", "--look exposure="}};
  for (size_t i = 0; i < 4; ++i)
    names.push_back({fmt::format("conversion.black[{}]", i), "--look black="});
  for (size_t i = 0; i < 3; ++i)
    names.push_back({fmt::format("conversion.gains[{}]", i), "--look gains="});
  for (size_t i = 0; i < 9; ++i)
    names.push_back({fmt::format("finish.matrix[{}]", i), "--look matrix="});
  return names;
}

namespace {

template <class Choice>
void add(CLI::App& command, Choice& choice, const char* usual) {
  command
      .add_option_function<std::string>(
          "--look", [&choice](const std::string& text) { choice = parseLook(text); },
          fmt::format("auto, linear, srgb, astro; or parts of a look, such as "
                      "exposure=1.5,curve=srgb ({})",
                      usual))
      ->type_name("LOOK");
}

}  // namespace

void addLookOption(CLI::App& command, LookChoice& choice) { add(command, choice, "auto"); }
void addLookOption(CLI::App& command, std::optional<LookChoice>& choice) {
  add(command, choice, "none");
}

}  // namespace vistrel::app
