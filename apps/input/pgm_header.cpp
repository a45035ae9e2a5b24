#include "apps/input/pgm_header.h"

#include <cctype>
#include <charconv>
#include <limits>
#include <string>

#include "apps/failure.h"

namespace vistrel::app {
namespace {

constexpr int kEnd = std::char_traits<char>::eof();

void checkMagic(std::istream& in) {
  char magic[2] = {};
  in.read(magic, 2);
  if (in.gcount() == 0) fail(kRejected, "the file is empty");
  if (in.gcount() == 2 && magic[0] == 'P' && magic[1] == '5') return;
  if (in.gcount() == 2 && magic[0] == 'P' && magic[1] >= '1' && magic[1] <= '7')
    fail(kRejected, "its type is P{}; of the PNM family this program reads binary PGM, P5",
         magic[1]);
  fail(kRejected, "no binary PGM: it does not begin with P5; -s WxH reads header-less dumps");
}

bool isSpace(int c) { return c == '#' || (c != kEnd && std::isspace(c)); }

// One white space, or a comment and the end of its line, which count as much.
void skipOne(std::istream& in) {
  if (in.get() == '#') in.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
}

std::string readWord(std::istream& in, const char* name) {
  constexpr size_t kLongest = 24;
  while (isSpace(in.peek())) skipOne(in);
  if (in.peek() == kEnd) fail(kRejected, "the header ends before the {}", name);
  std::string word;
  while (in.peek() != kEnd && !isSpace(in.peek()) && word.size() < kLongest)
    word += static_cast<char>(in.get());
  if (in.peek() == kEnd) fail(kRejected, "the header ends with the {}", name);
  return word;
}

uint32_t readNumber(std::istream& in, const char* name, uint32_t most) {
  const std::string word = readWord(in, name);
  uint32_t number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  const bool isNumber = *end == 0 && error != std::errc::invalid_argument;
  if (!isNumber) fail(kRejected, "{} {:?}: a number is expected", name, word);
  if (error != std::errc{} || number < 1 || number > most)
    fail(kRejected, "{} {}: 1 to {} are allowed", name, word, most);
  return number;
}

}  // namespace

PgmHeader readPgmHeader(std::istream& in) {
  checkMagic(in);
  PgmHeader header{};
  header.width = readNumber(in, "width", std::numeric_limits<uint32_t>::max());
  header.height = readNumber(in, "height", std::numeric_limits<uint32_t>::max());
  header.maxval = readNumber(in, "maxval", 65535);
  skipOne(in);  // the next byte is a sample
  return header;
}

}  // namespace vistrel::app
