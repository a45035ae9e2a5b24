#include "host/status.h"

#include <algorithm>
#include <iterator>

namespace vistrel::host {
namespace {

// No text is truncated: the longest parts fit, joined.
static_assert(sizeof(vistrel_error::text) >= sizeof(vistrel_error::argument) +
                                                 sizeof(vistrel_error::value) +
                                                 sizeof(vistrel_error::reason));

// Indexed by code.
constexpr const char* kNames[] = {
    "VISTREL_OK",
    "VISTREL_NULL_POINTER",
    "VISTREL_BAD_SIZE",
    "VISTREL_BAD_BITS",
    "VISTREL_BAD_STRIDE",
    "VISTREL_BAD_PHASE",
    "VISTREL_BAD_FORMAT",
    "VISTREL_BAD_ALGORITHM",
    "VISTREL_BAD_BINNING",
    "VISTREL_BAD_REGION",
    "VISTREL_REGION_TOO_SMALL",
    "VISTREL_BAD_REDUCTION",
    "VISTREL_BAD_EXCESS",
    "VISTREL_EXCESS_SAMPLE",
    "VISTREL_TOO_LARGE",
    "VISTREL_SHORT_BUFFER",
    "VISTREL_OVERLAP",
    "VISTREL_NO_MEMORY",
    "VISTREL_INTERNAL",
    "VISTREL_BAD_THRESHOLD",
    "VISTREL_BAD_TRUNCATION",
    "VISTREL_BAD_TABLE",
    "VISTREL_BAD_GRAY",
    "VISTREL_BAD_PACKING",
    "VISTREL_BAD_RESERVED",
    "VISTREL_BAD_ALIGNMENT",
    "VISTREL_BAD_LEVEL",
    "VISTREL_BAD_STREAM",
    "VISTREL_NO_STREAM",
    "VISTREL_BAD_WAIT",
    "VISTREL_BAD_BLACK",
    "VISTREL_BAD_BALANCE",
    "VISTREL_BAD_EDGES",
    "VISTREL_BUSY_STREAM",
    "VISTREL_BAD_CONTINUOUS",
    "VISTREL_BAD_WHITE",
    "VISTREL_BAD_THREADS",
    "VISTREL_BAD_TEAM",
    "VISTREL_NO_THREAD",
    "VISTREL_RUN_FAILED",
    "VISTREL_BAD_ROWS",
    "VISTREL_BAD_DESTINATION",
    "VISTREL_BAD_FILTER",
    "VISTREL_BAD_CALIBRATION",
    "VISTREL_BAD_FINISH",
    "VISTREL_BAD_ORIENTATION",
    "VISTREL_BAD_TRANSFER",
    "VISTREL_BAD_COUNT",
};

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

const char* vistrel_status_name(int32_t status) {
  const auto index = static_cast<uint32_t>(status);
  return index < std::size(vistrel::host::kNames) ? vistrel::host::kNames[index] : nullptr;
}
