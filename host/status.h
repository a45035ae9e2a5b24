// Refusals inside the layer, and the one place where they become status codes.
#pragma once

#include <fmt/format.h>

#include <new>
#include <string>
#include <utility>

#include "vistrel/vistrel_host.h"

namespace vistrel::host {

struct Refusal {
  int32_t status;
  std::string text;
};

template <class... Args>
[[noreturn]] void refuse(int32_t status, fmt::format_string<Args...> format, Args&&... args) {
  throw Refusal{status, fmt::format(format, std::forward<Args>(args)...)};
}

// Refuses a field of later versions that this one does not know.
template <size_t n>
void checkReserved(const char* name, const uint32_t (&fields)[n]) {
  for (size_t i = 0; i < n; ++i)
    if (fields[i])
      refuse(VISTREL_BAD_RESERVED, "{}[{}] {}: 0 is allowed, this version knows no other", name, i,
             fields[i]);
}

inline bool overlap(const void* a, size_t aBytes, const void* b, size_t bBytes) {
  const auto from = reinterpret_cast<uintptr_t>(a), to = reinterpret_cast<uintptr_t>(b);
  return from < to + bBytes && to < from + aBytes;
}

// Writes into the caller's error, if there is one, and returns the status.
int32_t report(vistrel_error* error, int32_t status, const char* text) noexcept;

// Runs the body of an entry; no exception leaves it.
template <class Body>
int32_t guarded(vistrel_error* error, Body body) noexcept {
  try {
    body();
    return report(error, VISTREL_OK, "");
  } catch (const Refusal& refusal) {
    return report(error, refusal.status, refusal.text.c_str());
  } catch (const std::bad_alloc&) {
    return report(error, VISTREL_NO_MEMORY, "out of memory");
  } catch (...) {
    return report(error, VISTREL_INTERNAL, "unexpected exception");
  }
}

}  // namespace vistrel::host
