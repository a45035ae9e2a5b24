// Runs a case on both sides and compares everything that the two have left behind.
#pragma once

#include <optional>

#include "cpu/level.h"
#include "tests/check/difference.h"
#include "tests/check/sandbox.h"

namespace vistrel::core::check {

class Checker {
 public:
  explicit Checker(const Catalogue& catalogue) : catalogue_(catalogue) {}

  std::optional<Failure> check(const Case& calls, Level level);

 private:
  std::optional<Failure> checkCall(const Call& call, const Layout& layout, Level level);

  const Catalogue& catalogue_;
  Sandbox product_{kProduct};
  Sandbox reference_{kReference};
};

}  // namespace vistrel::core::check
