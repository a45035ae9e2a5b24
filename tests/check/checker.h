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

  // The reference runs a case of one call once: the next level compares with the same results.
  std::optional<Failure> check(const Case& calls, Level level);

  // Calls of the product that were compared and equal.
  uint64_t equalCalls() const { return equalCalls_; }

 private:
  std::optional<Failure> checkCall(const Call& call, const Layout& layout, Level level);

  const Catalogue& catalogue_;
  Case kept_;  // the case whose results the reference's memory holds
  Outcome expected_;
  uint64_t equalCalls_ = 0;
  Sandbox product_{kProduct};
  Sandbox reference_{kReference};
};

}  // namespace vistrel::core::check
