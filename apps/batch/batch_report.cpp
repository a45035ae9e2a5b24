#include "apps/batch/batch.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

namespace vistrel::app {
namespace {

using Json = nlohmann::ordered_json;

const char* nameOf(JobState state) {
  switch (state) {
    case JobState::kNotBegun: return "not begun";
    case JobState::kMade: return "made";
    case JobState::kUpToDate: return "up to date";
    case JobState::kPlanned: return "planned";
    case JobState::kFailed: return "failed";
  }
  return "";
}

double microseconds(double seconds) { return std::round(seconds * 1e6) / 1e6; }

Json outputOf(const Job& job, const JobResult& result) {
  Json json{{"output", job.to.string()}, {"status", nameOf(result.state)}};
  if (job.frame) json["frame"] = *job.frame;
  if (result.state == JobState::kFailed) json["error"] = result.outcome.text;
  const Preview& p = result.preview;
  const vistrel_layout& l = p.layout;
  if (!p.warnings.empty()) json["warnings"] = p.warnings;
  if (l.width) {
    json.update(
        {{"width", l.width}, {"height", l.height}, {"channels", l.channels}, {"bits", l.bits}});
    json["phase"] = p.phase;
    json["frame_bits"] = p.frameBits;
    if (!p.algorithm.empty()) json["algorithm"] = p.algorithm;
  }
  if (!p.gains.empty()) json["gains"] = p.gains;
  if (!p.command.empty()) json["command"] = p.command;
  if (!p.settings.is_null()) json.update(p.settings);
  json["seconds"] = microseconds(result.seconds);
  return json;
}

// The jobs of an input are adjacent.
Json inputsOf(const Batch& batch) {
  Json inputs = Json::array();
  for (size_t i = 0; i < batch.jobs().size(); ++i) {
    const Job& job = batch.jobs()[i];
    if (i == 0 || batch.jobs()[i - 1].from != job.from)
      inputs.push_back({{"input", job.from.string()}, {"outputs", Json::array()}});
    inputs.back()["outputs"].push_back(outputOf(job, batch.results()[i]));
  }
  return inputs;
}

// All of them, those about a frame with its name.
std::vector<std::string> warningsOf(const Batch& batch) {
  std::vector<std::string> all = batch.warnings();
  for (size_t i = 0; i < batch.jobs().size(); ++i)
    for (const std::string& warning : batch.results()[i].preview.warnings)
      all.push_back(fmt::format("{}: {}", batch.jobs()[i].from.string(), warning));
  return all;
}

}  // namespace

void printReport(const Batch& batch, ExitStatus status) {
  const ProgressStats& s = batch.stats();
  const auto count = [&batch](JobState state) {
    return std::ranges::count(batch.results(), state, &JobResult::state);
  };
  const Json json{{"version", VISTREL_PROGRAM_VERSION},
                  {"exit_status", static_cast<int>(status)},
                  {"seconds", microseconds(s.seconds)},
                  {"made", count(JobState::kMade)},
                  {"up_to_date", count(JobState::kUpToDate)},
                  {"planned", count(JobState::kPlanned)},
                  {"failed", count(JobState::kFailed)},
                  {"not_begun", count(JobState::kNotBegun)},
                  {"megabytes_per_second", microseconds(s.megabytesPerSecond())},
                  {"warnings", warningsOf(batch)},
                  {"inputs", inputsOf(batch)}};
  const std::string text = json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
  fmt::print("{}", text);
}

}  // namespace vistrel::app
