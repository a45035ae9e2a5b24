// What the program uses of the standard library and Emscripten's libc++ lacks. Included before
// every source of the program that is compiled for WebAssembly.
#pragma once

#ifdef __EMSCRIPTEN__

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>

namespace std {

// Numbers as text has them: neither infinite nor hexadecimal.
inline from_chars_result from_chars(const char* first, const char* last, double& value,
                                    chars_format format = chars_format::general) {
  const string_view allowed = format == chars_format::fixed ? "-.0123456789" : "+-.0123456789eE";
  const string_view text(first, static_cast<size_t>(last - first));
  const string word(text.substr(0, text.find_first_not_of(allowed)));
  char* end = nullptr;
  const double number = word.empty() || word[0] == '+' ? 0 : strtod(word.c_str(), &end);
  if (!end || end == word.c_str()) return {first, errc::invalid_argument};
  value = number;
  return {first + (end - word.c_str()), errc{}};
}

}  // namespace std

namespace std::ranges {

#define VISTREL_WHOLE_RANGE(name)                                               \
  template <class R, class... A>                                                \
  auto name(R&& range, A&&... arguments) {                                      \
    return std::name(begin(range), end(range), static_cast<A&&>(arguments)...); \
  }
VISTREL_WHOLE_RANGE(all_of)
VISTREL_WHOLE_RANGE(any_of)
VISTREL_WHOLE_RANGE(none_of)
VISTREL_WHOLE_RANGE(copy)
VISTREL_WHOLE_RANGE(find_if)
VISTREL_WHOLE_RANGE(lower_bound)
VISTREL_WHOLE_RANGE(max_element)
VISTREL_WHOLE_RANGE(reverse)
VISTREL_WHOLE_RANGE(sort)
VISTREL_WHOLE_RANGE(stable_sort)
VISTREL_WHOLE_RANGE(transform)
#undef VISTREL_WHOLE_RANGE

template <class R, class T, class P = identity>
auto find(R&& range, const T& value, P projection = {}) {
  return std::find_if(begin(range), end(range),
                      [&](const auto& e) { return std::invoke(projection, e) == value; });
}

template <class R, class T, class P = identity>
auto count(R&& range, const T& value, P projection = {}) {
  return std::count_if(begin(range), end(range),
                       [&](const auto& e) { return std::invoke(projection, e) == value; });
}

template <class R, class S, class F>
bool equal(R&& one, S&& other, F areAlike) {
  return std::equal(begin(one), end(one), begin(other), end(other), areAlike);
}

template <class R>
auto max(R&& range) {
  return *std::max_element(begin(range), end(range));
}

template <class R>
auto min(R&& range) {
  return *std::min_element(begin(range), end(range));
}

template <class R, class I>
void nth_element(R&& range, I nth) {
  std::nth_element(begin(range), nth, end(range));
}

}  // namespace std::ranges

#endif
