// What became of a batch, as JSON on standard output.
#pragma once

#include "apps/batch/batch.h"

namespace vistrel::app {

void printReport(const Batch& batch, ExitStatus status, double seconds);

}  // namespace vistrel::app
