// Several calls on one stream: what one call leaves behind can affect a later one.
#include <algorithm>
#include <utility>

#include "tests/check/groups.h"

namespace vistrel::core::check {
namespace {

Case drawSequence(Draw& draw, const std::vector<Experiment>& steps) {
  Case calls;
  const uint32_t count = 2 + draw.below(3);
  while (calls.size() < count) {
    const Experiment& step = steps[draw.below(static_cast<uint32_t>(steps.size()))];
    const uint64_t seed = draw.next();
    Draw own(seed, draw.below(Draw::kComplete));
    calls.push_back(step.draw(own).front());
  }
  return calls;
}

}  // namespace

void addSequence(Catalogue& all) {
  std::vector<Experiment> steps;
  std::copy_if(all.experiments.begin(), all.experiments.end(), std::back_inserter(steps),
               [](const Experiment& experiment) {
                 return experiment.portable &&
                        (experiment.group == "demosaic" || experiment.group == "skip");
               });
  all.experiments.push_back(
      {"sequence", "sequence", [steps](Draw& draw) { return drawSequence(draw, steps); }});
}

}  // namespace vistrel::core::check
