// Prints the result of the selftest as text.
#pragma once

#include "apps/tools/selftest/run.h"

namespace vistrel::app::selftest {

void print(const Summary& summary);

}  // namespace vistrel::app::selftest
