// The words and numbers in PNM files.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "apps/files/source.h"

namespace vistrel::app {

// The number that is all of the text; `name` says what it is. Throws ProgramError (rejected).
uint32_t parseNumber(const char* name, const std::string& text, uint32_t min, uint32_t max);

// Buffered access, byte by byte. White space separates words; a comment, from # to the end of the
// line, counts as white space. All members throw ProgramError (rejected).
class PnmWords {
 public:
  static constexpr int kEnd = -1;

  PnmWords(const Source& source, uint64_t at) : source_(source), partAt_(at) {}

  uint64_t at() const { return partAt_ + next_; }
  int peek();
  int get();

  void skipOne();    // one character of white space, or a comment
  void skipSpace();  // all of it

  // The next word, of at most 24 characters; empty at the end.
  std::string word();
  // The next word as a number.
  uint32_t number(const char* name, uint32_t min, uint32_t max);
  // That the last comment of the kind "# phase rggb" so far tells.
  std::optional<uint32_t> phase() const { return phase_; }
  // The rest of the line, of at most 255 characters.
  std::string line();

 private:
  const Source& source_;
  uint64_t partAt_;
  std::array<char, 4096> part_;
  size_t count_ = 0, next_ = 0;
  std::optional<uint32_t> phase_;
};

}  // namespace vistrel::app
