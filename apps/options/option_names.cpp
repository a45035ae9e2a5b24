#include "apps/options/option_names.h"

#include <algorithm>

namespace vistrel::app {

std::string textOf(const Error& error, const OptionNames& names) {
  const auto name = std::find_if(names.begin(), names.end(), [&error](const OptionName& n) {
    return n.argument == error.argument();
  });
  if (name == names.end()) return error.what();
  const std::string value = name->value.empty() ? error.value() : name->value;
  return fmt::format("{} {}: {}", name->option, value, error.reason());
}

}  // namespace vistrel::app
