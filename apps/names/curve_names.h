// The names of the tone curves.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace vistrel::app {

struct CurveName {
  uint32_t number;  // 2 to 6
  const char* name;
  const char* effect;  // on the tones of a picture
};

std::span<const CurveName> curveNames();

// "light, lighter, lightest", with that text between two names.
std::string curveNameList(const std::string& between);

// The curve of that name or number; nothing for other texts.
std::optional<uint32_t> findCurve(const std::string& text);

}  // namespace vistrel::app
