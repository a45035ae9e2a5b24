// Tables whose rows have a name and a code: lists of them for messages, and codes by name.
#pragma once

#include <algorithm>
#include <iterator>
#include <string>

#include "host/status.h"

namespace vistrel::host {

// Whether two names are equal except for the case of ASCII letters, in any locale.
inline bool equalNames(const char* a, const char* b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  while (*a && lower(*a) == lower(*b)) ++a, ++b;
  return lower(*a) == lower(*b);
}

// The rows that `lists` accepts: "MONO8 (0), MONO16 (1)".
template <class Table, class Lists>
std::string listOf(const Table& table, Lists lists) {
  std::string list;
  for (const auto& row : table)
    if (lists(row)) list += textOf("{}{} ({})", list.empty() ? "" : ", ", row.name, row.code);
  return list;
}

template <class Table>
std::string listOf(const Table& table) {
  return listOf(table, [](const auto&) { return true; });
}

// The body of a vistrel_parse_ function, whose parameter for the code is called `parameter`.
template <class Table>
int32_t parseName(const Table& table, const char* name, uint32_t* code, const char* parameter,
                  int32_t status, vistrel_error* error) {
  return toStatus(error, [&] {
    checkPointer(name, "name");
    checkPointer(code, parameter);
    const auto row = std::find_if(std::begin(table), std::end(table),
                                  [name](const auto& r) { return equalNames(r.name, name); });
    if (row == std::end(table)) reject(status, "name", name, "{} are allowed", listOf(table));
    *code = row->code;
  });
}

}  // namespace vistrel::host
