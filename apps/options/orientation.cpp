#include "apps/options/orientation.h"

#include <algorithm>
#include <array>

#include "apps/error.h"
#include "apps/names/nearest_name.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

// By TIFF's code less 1.
constexpr std::array kNames{"upright",    "mirrored", "180",        "flipped",
                            "transposed", "90",       "transverse", "270"};

}  // namespace

const char* orientationName(uint32_t code) { return kNames[std::max(code, 1u) - 1]; }

uint32_t parseOrientation(std::string_view option, std::string_view text, std::string_view more) {
  const auto name = std::find(kNames.begin(), kNames.end(), text);
  if (name != kNames.end()) return static_cast<uint32_t>(name - kNames.begin()) + 1;
  if (text.size() == 1 && text[0] >= '1' && text[0] <= '8')
    return static_cast<uint32_t>(text[0] - '0');
  throwError(kUsage, "{} {}: {}{} are allowed, or TIFF's codes 1 to 8{}", option, text, more,
             fmt::join(kNames, ", "), nearestText(text, {kNames.begin(), kNames.end()}));
}

void addOrientOption(CLI::App& command, std::optional<uint32_t>& orientation, bool automatic) {
  const std::string meaning =
      fmt::format("Turn clockwise, mirror: {}{}; or TIFF's codes 1 to 8 ({})",
                  automatic ? "auto, as the file says, " : "", fmt::join(kNames, ", "),
                  automatic ? "auto" : kNames[0]);
  command
      .add_option_function<std::string>(
          "--orient",
          [&orientation, automatic](const std::string& text) {
            orientation.reset();
            if (!automatic || text != "auto")
              orientation = parseOrientation("--orient", text, automatic ? "auto, " : "");
          },
          meaning)
      ->type_name("HOW");
}

}  // namespace vistrel::app
