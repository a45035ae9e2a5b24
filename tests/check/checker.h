// Plays a case on both sides and compares all that the two have left behind.
#pragma once

#include <optional>

#include "cpu/level.h"
#include "tests/check/difference.h"
#include "tests/check/stage.h"

namespace vistrel::core::check {

class Checker {
 public:
  explicit Checker(const Catalogue& things) : things_(things) {}

  std::optional<Failure> check(const Case& calls, Level level);

 private:
  std::optional<Failure> checkCall(const Call& call, const Layout& layout, Level level);

  const Catalogue& things_;
  Stage product_{kProduct};
  Stage reference_{kReference};
};

}  // namespace vistrel::core::check
