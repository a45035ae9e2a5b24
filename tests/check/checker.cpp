#include "tests/check/checker.h"

#include <fmt/format.h>

#include <cstring>

namespace vistrel::core::check {
namespace {

std::optional<Failure> faultOf(const Outcome& outcome, const char* side, const Memory& memory) {
  if (!outcome.fault) return std::nullopt;
  const char* what = strsignal(outcome.fault->signal);
  return Failure{Kind::fault,
                 fmt::format("{} ended by '{}', {}", side, what, place(memory, *outcome.fault))};
}

}  // namespace

std::optional<Failure> Checker::checkCall(const Call& call, const Layout& layout, Level level) {
  const Subject& subject = catalogue_.subject(call.subject);
  if (kept_.empty()) {
    reference_.set(subject, call, layout);
    product_.setLike(reference_, call, layout);
    expected_ = reference_.call(subject, call);
  } else {
    product_.set(subject, call, layout);
  }
  if (auto failure = faultOf(expected_, "the reference", reference_.memory())) return failure;
  setLevel(level);
  // The base level has two indices, 0 before any start-up call and 1 after it.
  if (level == Level::base && call.seed & 1) ippJumpIndexForMergedLibs = 0;
  const Outcome got = product_.call(subject, call);
  if (auto failure = faultOf(got, "the product", product_.memory())) return failure;
  if (got.result != expected_.result)
    return Failure{Kind::result,
                   fmt::format("result: got {}, expected {}", static_cast<int64_t>(got.result),
                               static_cast<int64_t>(expected_.result))};
  if (auto failure = findCorruption(reference_.memory(), reference_.canary(), "the reference"))
    return failure;
  if (auto failure = findCorruption(product_.memory(), product_.canary(), "the product"))
    return failure;
  if (auto failure = difference(layout, product_.memory(), reference_.memory())) return failure;
  product_.settle(layout.meaningless);
  reference_.settle(layout.meaningless);
  return std::nullopt;
}

std::optional<Failure> Checker::check(const Case& calls, Level level) {
  std::vector<Layout> layouts;
  for (const Call& call : calls) layouts.push_back(catalogue_.subject(call.subject).layout(call));
  product_.beginCase(calls, layouts);
  if (kept_ != calls) {
    kept_.clear();
    reference_.beginCase(calls, layouts);
  }
  for (size_t i = 0; i < calls.size(); ++i) {
    auto failure = checkCall(calls[i], layouts[i], level);
    if (!failure) {
      ++equalCalls_;
      continue;
    }
    if (calls.size() > 1) failure->text = fmt::format("call {}: {}", i + 1, failure->text);
    return failure;
  }
  if (calls.size() == 1) kept_ = calls;
  return std::nullopt;
}

}  // namespace vistrel::core::check
