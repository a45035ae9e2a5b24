#include "apps/options/wording.h"

#include <algorithm>

namespace vistrel::app {

std::string textOf(const Error& error, const Wording& wording) {
  const auto word = std::find_if(wording.begin(), wording.end(), [&error](const Word& w) {
    return w.argument == error.argument();
  });
  if (word == wording.end()) return error.what();
  const std::string value = word->value.empty() ? error.value() : word->value;
  return fmt::format("{} {}: {}", word->option, value, error.reason());
}

}  // namespace vistrel::app
