#include "bench/report.h"

#include <fmt/format.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string_view>

#include "bench/levels.h"

namespace vistrel::core::bench {

namespace {

template <class... Args>
void line(fmt::format_string<Args...> text, Args&&... args) {
  fmt::print(text, std::forward<Args>(args)...);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

std::string processor() {
  std::ifstream info("/proc/cpuinfo");
  for (std::string text; std::getline(info, text);)
    if (text.starts_with("model name")) return text.substr(text.find(':') + 2);
  return "unknown processor";
}

nlohmann::ordered_json asJson(const Timing& t) {
  return {{"minimum", t.minimum}, {"median", t.median}};
}

}  // namespace

Report::Report(const std::string& filter, int rounds)
    : json_{{"processor", processor()},
            {"compiler", __VERSION__},
            {"filter", filter},
            {"rounds", rounds},
            {"unit", "nanoseconds of one thread per input pixel unless a section has its own"},
            {"rows", nlohmann::ordered_json::array()}} {
  line("{}; one thread; ns per input pixel, minimum and median of {} rounds", processor(), rounds);
}

void Report::beginSection(const std::string& section, const std::string& unit) {
  line("\n{:<46} {:<6} {:>8} {:>8}", fmt::format("{}, {}", section, unit), "frame", "min", "med");
  section_ = section;
  json_["units"][section] = unit;
}

void Report::add(const std::string& name, const std::string& frame, const Timing& t) {
  line("{:<46} {:<6} {:8.3f} {:8.3f}", name, frame, t.minimum, t.median);
  json_[section_].push_back({{"name", name}, {"frame", frame}, {"time", asJson(t)}});
}

void Report::addRelative(const std::string& name, const std::string& frame, const Timing& t,
                         double ratio, double limit) {
  const std::string allowed = limit > 0 ? fmt::format(" of {:.2f}", limit) : "";
  line("{:<46} {:<6} {:8.3f} {:8.3f}  x {:5.2f}{}", name, frame, t.minimum, t.median, ratio,
       allowed);
  json_[section_].push_back(
      {{"name", name}, {"frame", frame}, {"time", asJson(t)}, {"relative", ratio}});
  if (limit > 0) json_[section_].back()["limit"] = limit;
}

void Report::beginLevel(Level level) {
  line("\n{:<22} {:<6} {:>7} {:>7}  {:<23} {:>7} {:>7}  {:>6} {:>6}  {:>8} {:>5}", nameOf(level),
       "frame", "min", "med", "peer", "min", "med", "ratio", "(med)", "required", "goal");
}

void Report::add(const Result& r) {
  const std::string name = r.row.ours.name();
  const Target& target = r.row.target;
  const double goal = target.goalAt(r.level);
  const std::string targets = r.hasTarget() ? fmt::format("{:8.2f} {:5.2f}", target.required, goal)
                                            : fmt::format("{:>8} {:>5}", "-", "-");
  line("{:<22} {:<6} {:7.3f} {:7.3f}  {:<23} {:7.3f} {:7.3f}  {:6.2f} {:6.2f}  {}  {}", name,
       r.size.name, r.ours.minimum, r.ours.median, r.row.peer.name, r.peer.minimum, r.peer.median,
       r.ratio(), r.medianRatio(), targets, r.mark());
  const std::string_view mark = r.mark();
  met_ += mark == "met";
  acceptable_ += mark == "acceptable";
  missed_ += mark == "MISSED";
  nlohmann::ordered_json entry{{"name", name},
                               {"frame", r.size.name},
                               {"level", nameOf(r.level)},
                               {"ours", asJson(r.ours)},
                               {"peer_name", r.row.peer.name},
                               {"peer", asJson(r.peer)},
                               {"ratio", {{"minimum", r.ratio()}, {"median", r.medianRatio()}}}};
  if (r.hasTarget()) {
    entry["required"] = target.required;
    entry["goal"] = goal;
    entry["mark"] = r.mark();
  }
  json_["rows"].push_back(entry);
}

void Report::end() {
  if (!json_["rows"].empty())
    line("\n{} met, {} acceptable, {} missed", met_, acceptable_, missed_);
}

void Report::write(const std::string& jsonFile) const {
  std::ofstream file(jsonFile);
  file << json_.dump(2) << '\n';
  if (!file.flush()) throw std::runtime_error("--json: cannot write " + jsonFile);
}

}  // namespace vistrel::core::bench
