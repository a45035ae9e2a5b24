#include "apps/commands/finished_look.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace vistrel::app {

FinishedLook::FinishedLook(const Look& look) : look_(look) {
  if (look.transfer.curve != Curve::kLinear)
    transfer_ = makeTransfer(static_cast<uint32_t>(look.transfer.curve), look.transfer.parameter,
                             size_t{1} << 16);
  finish_.exposure = look.exposure;
  finish_.transfer = transfer_.empty() ? nullptr : transfer_.data();
  finish_.transfer_points = static_cast<uint32_t>(transfer_.size());
  monoFinish_ = finish_;
  finish_.highlights =
      look.neutralHighlights ? VISTREL_HIGHLIGHTS_NEUTRAL : VISTREL_HIGHLIGHTS_CLIP;
  std::copy(look.matrix.begin(), look.matrix.end(), finish_.matrix);
}

void FinishedLook::apply(const vistrel_frame& frame, vistrel_conversion& c) const {
  const bool isMono = frame.phase == VISTREL_MONO;
  std::copy(look_.black.begin(), look_.black.end(), c.black);
  c.white = look_.white;
  c.finish = isMono ? &monoFinish_ : &finish_;
  if (isMono) return;
  c.white_balance = VISTREL_BALANCE_GAINS;
  std::copy(look_.gains.begin(), look_.gains.end(), c.gains);
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

void addLookOption(CLI::App& command, LookChoice& choice) {
  command
      .add_option_function<std::string>(
          "--look", [&choice](const std::string& text) { choice = parseLook(text); },
          "auto, linear, srgb, astro; or parts of a look, such as exposure=1.5,curve=srgb (auto)")
      ->type_name("LOOK");
}

}  // namespace vistrel::app
