#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "apps/commands/commands.h"
#include "apps/error.h"
#include "apps/names/algorithm_guide.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr const char* kAlgorithmsExamples = R"(Examples:
  vistrel algorithms
  vistrel algorithms --json

CPSNR says how close pictures come to their originals, in decibels: the mean of
eight images of the Kodak set. ns/pixel is the time to convert 12 megapixels of
12 bits, or of 10 if that is the most, to BGR24 on one core with AVX2. From 13
bits on, directional takes 2.4 ns, the others as long as before. `vistrel
report` and `vistrel bench` measure both anew.

directional is the closest of all, but takes fine patterns of saturated colours,
such as woven cloth, for gray detail and sharpens them in wrong colours: there
bilinear or near is better. In very noisy frames bilinear is closer, and bins
average more noise. The larger the bins, the less the choice matters.)";

void printTable() {
  fmt::print("{:12}{:>8}{:>7}{:>7}{:>10}  {}\n", "", "bits", "size", "CPSNR", "ns/pixel", "for");
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
    fmt::print("{:12}{:>8}{:>7}", a->name, fmt::format("8 to {}", a->max_bits),
               fmt::format("{0}x{0}", a->min_size));
    if (const AlgorithmGuide* guide = guideTo(a->code))
      fmt::print("{:7.2f}{:10.3f}  {}", guide->cpsnr, guide->nanoseconds, guide->use);
    fmt::print("\n");
  }
}

void printAlgorithmsAsJson() {
  auto list = nlohmann::ordered_json::array();
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
    list.push_back({{"name", a->name}, {"max_bits", a->max_bits}, {"min_size", a->min_size}});
    if (const AlgorithmGuide* guide = guideTo(a->code))
      list.back().update(
          {{"cpsnr_db", guide->cpsnr}, {"ns_per_pixel", guide->nanoseconds}, {"use", guide->use}});
  }
  fmt::print("{}\n", list.dump(2));
}

}  // namespace

void addAlgorithmsCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("algorithms", "Say which algorithm is for what");
  const auto json = std::make_shared<bool>(false);
  command->add_flag("--json", *json, "Print JSON");
  command->footer(kAlgorithmsExamples);
  command->callback([json, &status] {
    *json ? printAlgorithmsAsJson() : printTable();
    status = kDone;
  });
}

}  // namespace vistrel::app
