#include "tests/check/subject.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "tests/check/groups.h"

namespace vistrel::core::check {

void Catalogue::add(const std::string& group, Subject subject, std::function<Call(Draw&)> draw) {
  const std::string name = subject.name;
  subjects.push_back(std::move(subject));
  experiments.push_back({name, group, [name, draw = std::move(draw)](Draw& d) {
                           Call call = draw(d);
                           call.subject = name;
                           return Case{call};
                         }});
}

const Subject& Catalogue::subject(const std::string& name) const {
  const auto found = std::find_if(subjects.begin(), subjects.end(),
                                  [&](const Subject& s) { return s.name == name; });
  if (found == subjects.end())
    throw std::invalid_argument(fmt::format("'{}': no such function; see --list", name));
  return *found;
}

Catalogue catalogue() {
  Catalogue all;
  for (const auto add : {addCurves, addOutput, addMono, addSkip, addDemosaic, addCfa, addFilter,
                         addRegistry, addEngine, addSequence})
    add(all);
  return all;
}

}  // namespace vistrel::core::check
