#include "apps/error.h"

#include <gtest/gtest.h>

#include <new>

#include "vistrel/vistrel.hpp"

namespace vistrel {
namespace {

using app::ExitStatus;

ExitStatus sumOf(std::initializer_list<ExitStatus> statuses, bool skipped = false) {
  app::ExitStatusSum sum;
  for (const ExitStatus status : statuses) sum.add(status);
  if (skipped) sum.addSkipped();
  return sum.status();
}

TEST(ExitStatusSum, OfManyInputs) {
  EXPECT_EQ(sumOf({}), app::kDone);
  EXPECT_EQ(sumOf({app::kDone, app::kDone}), app::kDone);
  EXPECT_EQ(sumOf({app::kDone, app::kRejected}), app::kSomeFailed);
  EXPECT_EQ(sumOf({app::kInputOutput, app::kDone}), app::kSomeFailed);
  EXPECT_EQ(sumOf({app::kRejected, app::kRejected}), app::kRejected);
  EXPECT_EQ(sumOf({app::kRejected, app::kInputOutput}), app::kInputOutput);
}

// Not all inputs were rejected if some were not started.
TEST(ExitStatusSum, OfInputsThatWereNotStarted) {
  EXPECT_EQ(sumOf({app::kRejected}, true), app::kSomeFailed);
  EXPECT_EQ(sumOf({app::kInputOutput}, true), app::kInputOutput);
  EXPECT_EQ(sumOf({}, true), app::kDone);
}

TEST(Outcome, OfEveryKindOfException) {
  const auto own = app::attempt([] { app::throwError(app::kUsage, "{} is odd", 3); });
  EXPECT_EQ(own.status, app::kUsage);
  EXPECT_EQ(own.text, "3 is odd");
  EXPECT_EQ(app::attempt([] { parsePhase("x"); }).status, app::kRejected);
  EXPECT_EQ(app::attempt([] { throw std::bad_alloc(); }).text, "out of memory");
  const auto system = app::attempt([] { throw std::runtime_error("no threads"); });
  EXPECT_EQ(system.status, app::kInputOutput);
  EXPECT_EQ(system.text, "no threads");
  EXPECT_EQ(app::attempt([] {}).status, app::kDone);
}

}  // namespace
}  // namespace vistrel
