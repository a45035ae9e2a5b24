#include "apps/options/wording.h"

#include <cctype>

namespace vistrel::app {
namespace {

bool isPartOfAWord(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

// Whether the part is whole words.
bool standsAlone(const std::string& text, size_t at, size_t length) {
  const auto cut = [&text](size_t i) {
    return i > 0 && i < text.size() && isPartOfAWord(text[i - 1]) && isPartOfAWord(text[i]);
  };
  return !cut(at) && !cut(at + length);
}

}  // namespace

std::string reworded(std::string text, const Wording& wording) {
  for (const auto& [host, typed] : wording)
    for (size_t at = 0; (at = text.find(host, at)) != text.npos;) {
      const bool matches = standsAlone(text, at, host.size());
      if (matches) text.replace(at, host.size(), typed);
      at += matches ? typed.size() : 1;
    }
  return text;
}

}  // namespace vistrel::app
