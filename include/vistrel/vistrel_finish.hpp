// Transfer curves in vectors. For C++17.
#ifndef VISTREL_FINISH_HPP
#define VISTREL_FINISH_HPP

#include <cstddef>
#include <cstdint>
#include <vector>

#include "vistrel/vistrel_finish.h"
#include "vistrel/vistrel_names.hpp"
#include "vistrel/vistrel_result.hpp"

namespace vistrel {
inline namespace v1 {

// The points of a transfer curve, as vistrel_make_transfer makes them.
inline Result<std::vector<uint16_t>> tryMakeTransfer(uint32_t kind, uint32_t parameter,
                                                     std::size_t count = 65536) noexcept {
  return detail::attempt<std::vector<uint16_t>>(
      [&](std::vector<uint16_t>& points, vistrel_error* error) {
        if (count <= 65536) points.resize(count);
        return vistrel_make_transfer(kind, parameter, points.data(), count, error);
      });
}
inline std::vector<uint16_t> makeTransfer(uint32_t kind, uint32_t parameter,
                                          std::size_t count = 65536) {
  return tryMakeTransfer(kind, parameter, count).value();
}

// Kinds of transfer curves by name, and the names.
inline Result<uint32_t> tryParseTransfer(const char* name) noexcept {
  return detail::parsed(vistrel_parse_transfer, name);
}
inline uint32_t parseTransfer(const char* name) { return tryParseTransfer(name).value(); }
inline const char* transferName(uint32_t kind) noexcept { return vistrel_transfer_name(kind); }

}  // namespace v1
}  // namespace vistrel

#endif
