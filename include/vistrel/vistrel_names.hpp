// Names and codes. For C++17.
#ifndef VISTREL_NAMES_HPP
#define VISTREL_NAMES_HPP

#include <cstdint>

#include "vistrel/vistrel_host.h"
#include "vistrel/vistrel_result.hpp"

namespace vistrel {
inline namespace v1 {

namespace detail {

inline Result<uint32_t> parsed(int32_t (*parse)(const char*, uint32_t*, vistrel_error*),
                               const char* name) noexcept {
  return attempt<uint32_t>(
      [&](uint32_t& code, vistrel_error* error) { return parse(name, &code, error); });
}

}  // namespace detail

// Codes of phases, formats, algorithms and packings by name, in lower or upper case.
inline Result<uint32_t> tryParsePhase(const char* name) noexcept {
  return detail::parsed(vistrel_parse_phase, name);
}
inline uint32_t parsePhase(const char* name) { return tryParsePhase(name).value(); }
inline Result<uint32_t> tryParseFormat(const char* name) noexcept {
  return detail::parsed(vistrel_parse_format, name);
}
inline uint32_t parseFormat(const char* name) { return tryParseFormat(name).value(); }
inline Result<uint32_t> tryParseAlgorithm(const char* name) noexcept {
  return detail::parsed(vistrel_parse_algorithm, name);
}
inline uint32_t parseAlgorithm(const char* name) { return tryParseAlgorithm(name).value(); }
inline Result<uint32_t> tryParsePacking(const char* name) noexcept {
  return detail::parsed(vistrel_parse_packing, name);
}
inline uint32_t parsePacking(const char* name) { return tryParsePacking(name).value(); }

// The names of codes, null for unknown ones, and the tables, as in vistrel_host.h.
inline const char* phaseName(uint32_t phase) noexcept { return vistrel_phase_name(phase); }
inline const char* packingName(uint32_t packing) noexcept { return vistrel_packing_name(packing); }
inline const char* statusName(int32_t status) noexcept { return vistrel_status_name(status); }
inline const char* levelName(size_t level) noexcept { return vistrel_level_name(level); }
inline const vistrel_format* formatAt(size_t index) noexcept { return vistrel_format_at(index); }
inline const vistrel_algorithm* algorithmAt(size_t index) noexcept {
  return vistrel_algorithm_at(index);
}

// The phase of a crop, and the colour at a pixel.
inline uint32_t phaseAt(uint32_t phase, uint32_t x, uint32_t y) noexcept {
  return vistrel_phase_at(phase, x, y);
}
inline uint32_t colourAt(uint32_t phase, uint32_t x, uint32_t y) noexcept {
  return vistrel_colour_at(phase, x, y);
}

// VISTREL_VERSION of the loaded library.
inline uint32_t version() noexcept { return vistrel_version(); }

// The level in use.
inline size_t level() noexcept { return vistrel_level(); }

// Sets the level, as vistrel_set_level does. Returns the previous one.
inline Result<size_t> trySetLevel(size_t level) noexcept {
  return detail::attempt<size_t>([&](size_t& before, vistrel_error* error) {
    before = vistrel_level();
    return vistrel_set_level(level, error);
  });
}
inline size_t setLevel(size_t level) { return trySetLevel(level).value(); }

}  // namespace v1
}  // namespace vistrel

#endif
