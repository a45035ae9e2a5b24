// FITS files for the program to read, byte by byte.
#pragma once

#include <string>
#include <vector>

namespace vistrel {

// One header unit of the cards, each like "NAXIS   =                    2", and END; then `data`.
inline std::string fits(const std::vector<std::string>& cards, const std::string& data) {
  constexpr size_t kBlock = 2880;
  const auto padded = [](std::string text, char with) {
    text.resize((text.size() + kBlock - 1) / kBlock * kBlock, with);
    return text;
  };
  std::string header;
  for (std::string card : cards) {
    card.resize(80, ' ');
    header += card;
  }
  return padded(header + "END", ' ') + padded(data, 0);
}

inline std::string card(std::string keyword, const std::string& value) {
  keyword.resize(8, ' ');
  const bool isText = value[0] == '\'';
  return keyword + "= " + (isText ? value : std::string(20 - value.size(), ' ') + value);
}

inline std::vector<std::string> cards(int bits, const std::vector<std::string>& axes) {
  std::vector<std::string> all;
  all.push_back(card("SIMPLE", "T"));
  all.push_back(card("BITPIX", std::to_string(bits)));
  all.push_back(card("NAXIS", std::to_string(axes.size())));
  for (size_t i = 0; i < axes.size(); ++i)
    all.push_back(card("NAXIS" + std::to_string(i + 1), axes[i]));
  return all;
}

}  // namespace vistrel
