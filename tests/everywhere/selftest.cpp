// The program's selftest alone.
#include "apps/tools/selftest/print.h"
#include "apps/tools/selftest/run.h"

int main() {
  const auto summary = vistrel::app::selftest::run();
  vistrel::app::selftest::print(summary);
  return summary.differences.empty() ? 0 : 1;
}
