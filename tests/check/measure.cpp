#include "tests/check/measure.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "tests/check/sandbox.h"

namespace vistrel::core::check {
namespace {

struct Times {
  double minimum, median;  // nanoseconds a pixel of the source
};

double nanoseconds(const std::function<void()>& function) {
  const auto start = std::chrono::steady_clock::now();
  function();
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
}

Times timesOf(const Catalogue& all, const Case& calls, Side side) {
  constexpr size_t kMinRuns = 5, kMaxRuns = 50;
  constexpr double kEnough = 2e8;
  const Call& call = calls.front();
  const Subject& subject = all.subject(call.subject);
  const Layout layout = subject.layout(call);
  Sandbox sandbox(side);
  sandbox.beginCase(calls, {layout});
  sandbox.set(subject, call, layout);
  if (sandbox.call(subject, call).fault)
    throw std::runtime_error("a fault; run the check to see where");
  std::vector<double> runs;
  double total = 0;
  while (runs.size() < kMinRuns || (runs.size() < kMaxRuns && total < kEnough)) {
    runs.push_back(nanoseconds([&] { sandbox.call(subject, call); }));
    total += runs.back();
  }
  std::sort(runs.begin(), runs.end());
  const double pixels = static_cast<double>(std::max<uint64_t>(layout.pixels, 1));
  return {runs.front() / pixels, runs[runs.size() / 2] / pixels};
}

}  // namespace

void measure(const Catalogue& all, const Case& calls, const std::vector<Level>& levels) {
  const Times reference = timesOf(all, calls, kReference);
  fmt::print("{}\n  {:<10}{:>9.3f}{:>9.3f}\n", text(calls), "reference", reference.minimum,
             reference.median);
  for (const Level level : levels) {
    setLevel(level);
    const Times product = timesOf(all, calls, kProduct);
    fmt::print("  {:<10}{:>9.3f}{:>9.3f}{:>8.1f}x\n", nameOf(level), product.minimum,
               product.median, reference.minimum / product.minimum);
  }
}

}  // namespace vistrel::core::check
