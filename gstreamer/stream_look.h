// Levels, gains and look of a stream: given, or decided from its frames.
#pragma once

#include <optional>

#include "apps/look/decide.h"
#include "apps/look/finished_look.h"
#include "gstreamer/settings.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::gstreamer {

class StreamLook {
 public:
  // Throws ProgramError, and then stays as it was. What has been decided stays too, unless other
  // parts are known now.
  void set(const Settings& settings);

  // Forgets what has been decided.
  void reset();

  // Sets black, white, gains and finishing stage for a frame that begins that many seconds after
  // the last one. The conversion refers to this object; its region is not empty.
  void apply(const vistrel_frame& frame, double seconds, vistrel_conversion& conversion);

 private:
  void decide(const vistrel_frame& frame, const vistrel_region& region);
  void prepare(vistrel_conversion& conversion) const;
  void balance(const vistrel_frame& frame, double seconds, vistrel_conversion& conversion);
  app::Gains measure(const vistrel_frame& frame, const vistrel_conversion& conversion);

  bool isWanted_ = false;
  app::LookChoice choice_;
  std::optional<app::FinishedLook> finished_;
  BalanceMode mode_ = BalanceMode::kOff;
  double balanceTime_ = 1;
  WhiteBalance balance_;
  Bytes memory_;
};

}  // namespace vistrel::gstreamer
