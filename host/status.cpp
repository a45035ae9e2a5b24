#include "host/status.h"

#include <algorithm>
#include <iterator>

namespace vistrel::host {
namespace {

// No text is cut: the longest parts and what joins them fit.
static_assert(sizeof(vistrel_error::text) >= sizeof(vistrel_error::argument) +
                                                 sizeof(vistrel_error::value) +
                                                 sizeof(vistrel_error::reason));

// Texts of printable ASCII are valid in every encoding and harmless on every terminal.
char printable(char c) { return c < ' ' || c > '~' ? '?' : c; }

template <size_t n>
void append(char (&text)[n], std::string_view more) {
  char* const end = text + std::char_traits<char>::length(text);
  const auto capacity = static_cast<size_t>(std::end(text) - end) - 1;
  more = more.substr(0, capacity);
  *std::transform(more.begin(), more.end(), end, printable) = 0;
}

}  // namespace

int32_t report(vistrel_error* error, int32_t status, std::string_view reason,
               std::string_view argument, std::string_view value) noexcept {
  if (!error) return status;
  error->status = status;
  std::fill(std::begin(error->reserved), std::end(error->reserved), 0u);
  for (char* text : {error->argument, error->value, error->reason, error->text}) *text = 0;
  append(error->argument, argument);
  append(error->value, value);
  append(error->reason, reason);
  append(error->text, error->argument);
  if (*error->value) append(error->text, " ");
  append(error->text, error->value);
  if (*error->argument) append(error->text, ": ");
  append(error->text, error->reason);
  return status;
}

}  // namespace vistrel::host
