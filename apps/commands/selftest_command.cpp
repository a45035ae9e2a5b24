#include "apps/commands/commands.h"

#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>

#include "apps/error.h"
#include "apps/tools/selftest/print.h"
#include "apps/tools/selftest/run.h"

namespace vistrel::app {
namespace {

constexpr const char* kSelftestExamples = R"(Example:
  vistrel selftest --json

Converts a built-in frame by every algorithm, in every depth and phase, with
binning, tone curves and finishing for the eye, at every instruction set level
of this machine, and compares hashes of the results with those of a reference
implementation.

Exit status: 0 all results are correct, 1 some differ.)";

void printJson(const selftest::Summary& v) {
  nlohmann::ordered_json json{{"ok", v.differences.empty()},
                              {"version", VISTREL_PROGRAM_VERSION},
                              {"levels", v.levels},
                              {"combinations", v.combinations},
                              {"differences", nlohmann::ordered_json::array()}};
  for (const selftest::Difference& d : v.differences)
    json["differences"].push_back({{"combination", d.combination},
                                   {"level", d.level},
                                   {"expected", fmt::format("{:016x}", d.expected)},
                                   {"got", fmt::format("{:016x}", d.got)}});
  fmt::print("{}\n", json.dump(2));
}

}  // namespace

void addSelftestCommand(CLI::App& program, int& status) {
  auto* command =
      program.add_subcommand("selftest", "Check that this machine computes the right pixels");
  const auto json = std::make_shared<bool>(false);
  command->add_flag("--json", *json, "Print JSON");
  command->footer(kSelftestExamples);
  command->callback([json, &status] {
    const selftest::Summary summary = selftest::run();
    *json ? printJson(summary) : selftest::print(summary);
    status = summary.differences.empty() ? kDone : kSomeFailed;
  });
}

}  // namespace vistrel::app
