// Rejections inside the host layer. Only toStatus() turns them into status codes and texts.
#pragma once

#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "host/text.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::host {

// The parts of a vistrel_error.
struct Rejection {
  int32_t status;
  std::string argument, value, reason;
};

// `argument` is a parameter or a field of one, such as "frame.stride"; `value` is what the caller
// passed, or "".
template <class Value, class... Args>
[[noreturn]] void reject(int32_t status, std::string_view argument, const Value& value,
                         std::string_view reason, Args&&... args) {
  throw Rejection{status, std::string(argument), textOf("{}", value),
                  textOf(reason, std::forward<Args>(args)...)};
}

// "1 row", "2 rows"
inline std::string countOf(uint64_t n, std::string_view unit) {
  return textOf("{} {}{}", n, unit, n == 1 ? "" : "s");
}

// For a short buffer: what it must hold.
template <class Stride>
std::string rowsIn(uint64_t bytes, uint64_t rows, Stride stride) {
  return textOf("{} of stride {} take{} {}", countOf(rows, "row"), stride, rows == 1 ? "s" : "",
                countOf(bytes, "byte"));
}

inline void checkPointer(const void* pointer, std::string_view argument) {
  if (!pointer) reject(VISTREL_NULL_POINTER, argument, "", "must not be null");
}

// Rejects a field of a later version, which this one does not know.
template <size_t n>
void checkReserved(std::string_view argument, const uint32_t (&fields)[n]) {
  for (size_t i = 0; i < n; ++i)
    if (fields[i])
      reject(VISTREL_BAD_RESERVED, textOf("{}[{}]", argument, i), fields[i],
             "only 0 is allowed in this version");
}

// Describes the outcome in the caller's error, unless that is null, and returns the status.
int32_t report(vistrel_error* error, int32_t status, std::string_view reason = "",
               std::string_view argument = "", std::string_view value = "") noexcept;

// Runs the body of an entry, and lets no exception escape.
template <class Body>
int32_t toStatus(vistrel_error* error, Body body) noexcept {
  try {
    body();
    return report(error, VISTREL_OK);
  } catch (const Rejection& r) {
    return report(error, r.status, r.reason, r.argument, r.value);
  } catch (const std::bad_alloc&) {
    return report(error, VISTREL_NO_MEMORY, "out of memory");
  } catch (...) {
    return report(error, VISTREL_INTERNAL, "unexpected exception");
  }
}

}  // namespace vistrel::host
