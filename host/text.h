// Texts with values in them. A formatting library would take longer to compile than all the rest.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

namespace vistrel::host {

// The pattern with its "{}" replaced by the values, in order.
std::string substituted(std::string_view pattern, std::initializer_list<std::string> values);

template <class T>
std::string wordOf(const T& value) {
  if constexpr (std::is_arithmetic_v<T>)
    return std::to_string(value);
  else
    return std::string(value);
}

template <class... Values>
std::string textOf(std::string_view pattern, const Values&... values) {
  return substituted(pattern, {wordOf(values)...});
}

}  // namespace vistrel::host
