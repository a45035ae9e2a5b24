#include "apps/pictures/pgm_header.h"

#include <array>
#include <cctype>
#include <charconv>
#include <limits>
#include <string>

#include "apps/error.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr int kEnd = std::char_traits<char>::eof();

// Buffered access, byte by byte.
class Cursor {
 public:
  Cursor(const Source& source, uint64_t at) : source_(source), partAt_(at) {}

  uint64_t at() const { return partAt_ + next_; }
  int peek() {
    if (next_ == count_) {
      partAt_ += count_;
      count_ = source_.readSome(partAt_, part_.data(), part_.size());
      next_ = 0;
    }
    return next_ == count_ ? kEnd : static_cast<unsigned char>(part_[next_]);
  }
  int get() {
    const int c = peek();
    if (c != kEnd) ++next_;
    return c;
  }

 private:
  const Source& source_;
  uint64_t partAt_;
  std::array<char, 256> part_;
  size_t count_ = 0, next_ = 0;
};

void checkMagic(Cursor& in, char expected) {
  const int p = in.get(), type = in.get();
  if (p == 'P' && type == expected) return;
  throwError(kRejected, "its type is P{}; of the PNM family this program reads binary PGM, P5",
             static_cast<char>(type));
}

bool isSpace(int c) { return c == '#' || (c != kEnd && std::isspace(c)); }

// The phase that a comment tells.
std::optional<uint32_t> phaseIn(const std::string& comment) {
  constexpr std::string_view kKey = " phase ";
  uint32_t phase = 0;
  const bool told = comment.starts_with(kKey) &&
                    vistrel_parse_phase(comment.c_str() + kKey.size(), &phase, nullptr) == 0 &&
                    phase <= VISTREL_MONO;
  return told ? std::optional(phase) : std::nullopt;
}

// Skips one white space character, or a comment, which counts as one.
void skipOne(Cursor& in, PgmHeader& header) {
  constexpr size_t kLongest = 24;  // of comments that tell something
  if (in.get() != '#') return;
  std::string comment;
  for (int c = in.get(); c != kEnd && c != '\n'; c = in.get())
    if (comment.size() < kLongest) comment += static_cast<char>(c);
  if (const auto phase = phaseIn(comment)) header.phase = phase;
}

std::string readWord(Cursor& in, const char* name, PgmHeader& header) {
  constexpr size_t kLongest = 24;
  while (isSpace(in.peek())) skipOne(in, header);
  if (in.peek() == kEnd) throwError(kRejected, "the header ends before the {}", name);
  std::string word;
  while (in.peek() != kEnd && !isSpace(in.peek()) && word.size() < kLongest)
    word += static_cast<char>(in.get());
  if (in.peek() == kEnd) throwError(kRejected, "the header ends with the {}", name);
  return word;
}

uint32_t readNumber(Cursor& in, const char* name, uint32_t max, PgmHeader& header) {
  const std::string word = readWord(in, name, header);
  uint32_t number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  const bool isNumber = *end == 0 && error != std::errc::invalid_argument;
  if (!isNumber) throwError(kRejected, "{} {:?}: a number is expected", name, word);
  if (error != std::errc{} || number < 1 || number > max)
    throwError(kRejected, "{} {}: 1 to {} are allowed", name, word, max);
  return number;
}

}  // namespace

bool beginsPgm(const Source& source, uint64_t at) {
  char magic[2];
  return source.readSome(at, magic, 2) == 2 && magic[0] == 'P' && magic[1] == '5';
}

PgmHeader readPgmHeader(const Source& source, uint64_t at, char type) {
  Cursor in(source, at);
  checkMagic(in, type);
  PgmHeader header{};
  header.width = readNumber(in, "width", std::numeric_limits<uint32_t>::max(), header);
  header.height = readNumber(in, "height", std::numeric_limits<uint32_t>::max(), header);
  header.maxval = readNumber(in, "maxval", 65535, header);
  skipOne(in, header);  // the next byte is a sample
  header.samplesAt = in.at();
  return header;
}

}  // namespace vistrel::app
