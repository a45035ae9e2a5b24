// The groups of functions, each with the cases to try them with.
#pragma once

#include "tests/check/subject.h"

namespace vistrel::core::check {

void addCurves(Catalogue& all);
void addOutput(Catalogue& all);
void addMono(Catalogue& all);
void addSkip(Catalogue& all);
void addDemosaic(Catalogue& all);
void addCfa(Catalogue& all);
void addFilter(Catalogue& all);
void addRegistry(Catalogue& all);
void addEngine(Catalogue& all);
void addSequence(Catalogue& all);  // after all those that it draws from

}  // namespace vistrel::core::check
