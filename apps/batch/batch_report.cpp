#include "apps/batch/batch.h"

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
  const auto& [l, warnings, gains, command, settings] = result.preview;
  if (!warnings.empty()) json["warnings"] = warnings;
  if (l.width) {
    json.update(
        {{"width", l.width}, {"height", l.height}, {"channels", l.channels}, {"bits", l.bits}});
  }
  if (!gains.empty()) json["gains"] = gains;
  if (!command.empty()) json["command"] = command;
  if (!settings.is_null()) json.update(settings);
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

}  // namespace

void printReport(const Batch& batch, ExitStatus status, double seconds) {
  const Json json{{"version", VISTREL_PROGRAM_VERSION},
                  {"exit_status", static_cast<int>(status)},
                  {"seconds", microseconds(seconds)},
                  {"warnings", batch.warnings()},
                  {"inputs", inputsOf(batch)}};
  const std::string text = json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
  fmt::print("{}", text);
}

}  // namespace vistrel::app
