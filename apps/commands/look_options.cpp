#include "apps/commands/look_options.h"

namespace vistrel::app {
namespace {

template <class Numbers>
nlohmann::ordered_json decimalsOf(const Numbers& numbers) {
  nlohmann::ordered_json json = nlohmann::ordered_json::array();
  for (const auto n : numbers) json.push_back(static_cast<double>(n) / kLookOne);
  return json;
}

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

void addLookOption(CLI::App& command, LookChoice& choice) { add(command, choice, "auto"); }
void addLookOption(CLI::App& command, std::optional<LookChoice>& choice) {
  add(command, choice, "none");
}

}  // namespace vistrel::app
