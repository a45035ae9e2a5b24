#include "host/text.h"

namespace vistrel::host {

std::string substituted(std::string_view pattern, std::initializer_list<std::string> values) {
  std::string text;
  for (const std::string& value : values) {
    const size_t place = pattern.find("{}");
    if (place == std::string_view::npos) break;
    text.append(pattern, 0, place).append(value);
    pattern.remove_prefix(place + 2);
  }
  return text.append(pattern);
}

}  // namespace vistrel::host
