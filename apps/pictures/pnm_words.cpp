#include "apps/pictures/pnm_words.h"

#include <cctype>
#include <charconv>

#include "apps/error.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

bool isSpace(int c) { return c == '#' || (c != PnmWords::kEnd && std::isspace(c)); }

// The phase that a comment tells.
std::optional<uint32_t> phaseIn(const std::string& comment) {
  constexpr std::string_view kKey = " phase ";
  uint32_t phase = 0;
  const bool told = comment.starts_with(kKey) &&
                    vistrel_parse_phase(comment.c_str() + kKey.size(), &phase, nullptr) == 0 &&
                    phase <= VISTREL_MONO;
  return told ? std::optional(phase) : std::nullopt;
}

}  // namespace

uint32_t parseNumber(const char* name, const std::string& text, uint32_t min, uint32_t max) {
  uint32_t number = 0;
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, number);
  if (end != last || error == std::errc::invalid_argument)
    throwError(kRejected, "{} {:?}: a number is expected", name, text);
  if (error != std::errc{} || number < min || number > max)
    throwError(kRejected, "{} {}: {} to {} are allowed", name, text, min, max);
  return number;
}

int PnmWords::peek() {
  if (next_ == count_) {
    partAt_ += count_;
    count_ = source_.readSome(partAt_, part_.data(), part_.size());
    next_ = 0;
  }
  return next_ == count_ ? kEnd : static_cast<unsigned char>(part_[next_]);
}

int PnmWords::get() {
  const int c = peek();
  if (c != kEnd) ++next_;
  return c;
}

void PnmWords::skipOne() {
  constexpr size_t kLongest = 24;  // of comments that tell something
  if (get() != '#') return;
  std::string comment;
  for (int c = get(); c != kEnd && c != '\n'; c = get())
    if (comment.size() < kLongest) comment += static_cast<char>(c);
  if (const auto phase = phaseIn(comment)) phase_ = phase;
}

void PnmWords::skipSpace() {
  while (isSpace(peek())) skipOne();
}

std::string PnmWords::word() {
  constexpr size_t kLongest = 24;
  skipSpace();
  std::string word;
  while (peek() != kEnd && !isSpace(peek()) && word.size() < kLongest)
    word += static_cast<char>(get());
  return word;
}

uint32_t PnmWords::number(const char* name, uint32_t min, uint32_t max) {
  const std::string text = word();
  if (text.empty()) throwError(kRejected, "the file ends before the {}", name);
  return parseNumber(name, text, min, max);
}

std::string PnmWords::line() {
  constexpr size_t kLongest = 255;
  std::string line;
  int c = get();
  for (; c != kEnd && c != '\n'; c = get()) {
    if (line.size() == kLongest) throwError(kRejected, "a line of the header is too long");
    line += static_cast<char>(c);
  }
  if (c == kEnd) throwError(kRejected, "the file ends within the header");
  return line;
}

}  // namespace vistrel::app
