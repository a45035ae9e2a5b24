#include "apps/input/fits_gzip.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <string>

#include "apps/error.h"
#include "apps/input/gzip_stream.h"
#include "apps/pictures/png_input.h"

namespace vistrel::app {
namespace {

constexpr size_t kKeyword = 8;
constexpr size_t kMaxBlocks = 1000;  // of a header
constexpr size_t kPart = 1 << 20;

// The whole numbers of a header; a logical value counts as 1 if it is true.
using Numbers = std::map<std::string, uint64_t>;

uint64_t absoluteValue(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" -+"), text.size()));
  uint64_t value = text.starts_with("T");
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

uint64_t valueOf(const Numbers& numbers, const std::string& keyword, uint64_t otherwise) {
  const auto found = numbers.find(keyword);
  return found == numbers.end() ? otherwise : found->second;
}

uint64_t checkedProduct(uint64_t a, uint64_t b) {
  uint64_t result = 0;
  if (__builtin_mul_overflow(a, b, &result) || result > INT64_MAX)
    throwError(kRejected, "FITS: its header announces more than {} bytes", INT64_MAX);
  return result;
}

class Inflater {
 public:
  explicit Inflater(const Source& source) : in_(source), size_(source.size()) {}

  InflatedFits inflate() {
    if (!readHeader("SIMPLE  =")) throwOther();
    do readData();
    while (readHeader("XTENSION="));
    if (blockBytes_ > 0) throwRest();
    return {std::move(kept_), blockBytes_ + in_.trailing()};
  }

 private:
  // Reads the next header, which `begin` begins; false if there is none.
  bool readHeader(const char* begin) {
    numbers_.clear();
    if (!readBlock() || !std::string_view(block_, blockBytes_).starts_with(begin)) return false;
    isImage_ = begin[0] == 'S' || std::string_view(block_ + 10, 9) == "'IMAGE   ";
    for (size_t blocks = 1; !readCards(); ++blocks)
      if (blocks == kMaxBlocks || !readBlock()) throwError(kRejected, "FITS: a header has no end");
    return true;
  }

  bool readBlock() {
    blockBytes_ = in_.read(reinterpret_cast<uint8_t*>(block_), kFitsBlock);
    if (!isFound_) kept_.insert(kept_.end(), block_, block_ + blockBytes_);
    return blockBytes_ == kFitsBlock;
  }

  // Returns true if the header ends in this block.
  bool readCards() {
    for (size_t at = 0; at < kFitsBlock; at += kFitsCard) {
      const std::string_view card(block_ + at, kFitsCard);
      const std::string keyword(card.substr(0, card.find_first_of(" =")));
      if (keyword == "END" && card[3] == ' ') return true;
      if (keyword.size() <= kKeyword && card.substr(kKeyword, 2) == "= ")
        numbers_.emplace(keyword, absoluteValue(card.substr(kKeyword + 2)));
    }
    return false;
  }

  uint64_t dataBytes() const {
    const uint64_t axes = valueOf(numbers_, "NAXIS", 0);
    uint64_t count = axes > 0;
    for (uint64_t axis = 1; axis <= axes && count > 0; ++axis)
      count = checkedProduct(count, valueOf(numbers_, "NAXIS" + std::to_string(axis), 0));
    count += valueOf(numbers_, "PCOUNT", 0) & INT64_MAX;
    const uint64_t each =
        checkedProduct(valueOf(numbers_, "BITPIX", 8) / 8, valueOf(numbers_, "GCOUNT", 1));
    return checkedProduct(count, each);
  }

  // Memory is used as bytes arrive, whatever the header announces.
  void readData() {
    const uint64_t bytes = dataBytes(), blocks = bytes / kFitsBlock + (bytes % kFitsBlock != 0);
    if (bytes / kDeflateRatio > size_)
      throwError(kRejected, "the file is too short: {} bytes of samples do not fit its {}", bytes,
                 size_);
    if (!isFound_) kept_.reserve(kept_.size() + bytes + kFitsBlock);
    std::vector<uint8_t> part(kPart);
    for (uint64_t left = checkedProduct(blocks, kFitsBlock); left > 0;) {
      const size_t wanted = std::min<uint64_t>(left, part.size());
      const size_t n = in_.read(part.data(), wanted);
      if (!isFound_) kept_.insert(kept_.end(), part.begin(), part.begin() + static_cast<long>(n));
      left -= n;
      if (n < wanted) break;  // an end without padding, or too early, which the reader finds
    }
    isFound_ |= bytes > 0 && (isImage_ || valueOf(numbers_, "ZIMAGE", 0));
  }

  [[noreturn]] static void throwOther() {
    throwError(kRejected,
               "a gzip file of something other than FITS: `gzip -dc` and a pipe read those");
  }

  void throwRest() {
    if (blockBytes_ == kFitsBlock && in_.read(reinterpret_cast<uint8_t*>(block_), 1))
      throwError(kRejected, "gzip: it decodes to more than its FITS headers announce");
  }

  GzipStream in_;
  uint64_t size_;  // of the compressed file
  std::vector<uint8_t> kept_;
  char block_[kFitsBlock];
  size_t blockBytes_ = 0;
  Numbers numbers_;
  bool isImage_ = false, isFound_ = false;
};

}  // namespace

InflatedFits inflatedFits(const Source& source) { return Inflater(source).inflate(); }

}  // namespace vistrel::app
