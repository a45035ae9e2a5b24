#include "tests/check/measure.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "tests/check/levels.h"
#include "tests/check/stage.h"

namespace vistrel::core::check {
namespace {

struct Times {
  double least, median;  // nanoseconds a pixel of the source
};

double nanoseconds(const std::function<void()>& function) {
  const auto start = std::chrono::steady_clock::now();
  function();
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
}

Times timesOf(const Catalogue& all, const Case& calls, Side side) {
  constexpr size_t kLeastRuns = 5, kMostRuns = 50;
  constexpr double kEnough = 2e8;
  const Call& call = calls.front();
  const Subject& subject = all.subject(call.subject);
  const Layout layout = subject.layout(call);
  Stage stage(side);
  stage.beginCase(calls, {layout});
  stage.set(subject, call, layout);
  if (stage.play(subject, call).fault) throw std::runtime_error("a fault; the check tells where");
  std::vector<double> runs;
  double total = 0;
  while (runs.size() < kLeastRuns || (runs.size() < kMostRuns && total < kEnough)) {
    runs.push_back(nanoseconds([&] { stage.play(subject, call); }));
    total += runs.back();
  }
  std::sort(runs.begin(), runs.end());
  const double pixels = static_cast<double>(std::max<uint64_t>(layout.pixels, 1));
  return {runs.front() / pixels, runs[runs.size() / 2] / pixels};
}

}  // namespace

void measure(const Catalogue& all, const Case& calls, const std::vector<Level>& levels) {
  const Times reference = timesOf(all, calls, kReference);
  fmt::print("{}\n  {:<10}{:>9.3f}{:>9.3f}\n", text(calls), "reference", reference.least,
             reference.median);
  for (const Level level : levels) {
    setLevel(level);
    const Times product = timesOf(all, calls, kProduct);
    fmt::print("  {:<10}{:>9.3f}{:>9.3f}{:>8.1f}x\n", nameOf(level), product.least, product.median,
               reference.least / product.least);
  }
}

}  // namespace vistrel::core::check
