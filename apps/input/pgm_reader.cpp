#include "apps/input/readers.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>
#include <vector>

#include "apps/error.h"
#include "apps/pictures/pgm_header.h"
#include "apps/pictures/pnm_words.h"

namespace vistrel::app {
namespace {

class PgmReader : public Reader {
 public:
  PgmReader(const Source& source, const InputOptions& o) : source_(source) {
    const PgmHeader header = readGrayHeader(source, 0);
    Description& d = description_;
    d.format = header.type == '7' ? "PAM" : "PGM";
    d.width = header.width;
    d.height = header.height;
    d.maxval = header.maxval;
    d.phase = header.phase;
    d.bytesPerSample = header.maxval > 255 ? 2 : 1;
    d.bits = bitsOfLargest(header.maxval, 8 * d.bytesPerSample);
    d.bitsKnown = header.maxval < 256 || d.bits < 16;
    // Larger samples than those of the bits are rejected anyway, or masked.
    isChecked_ = !o.bits && header.maxval + 1 != 1u << d.bits;
    const bool isPlain = header.type == '2';
    checkSize(d, source, isPlain ? 8 : 8 * d.bytesPerSample, source.size() - header.samplesAt);
    isPlain ? readPlain(header) : findImages(header);
  }

  void read(uint64_t n, void* to) override {
    if (!plain_.empty()) return copyPlain(to);
    source_.read(at_[n], to, imageBytes());
    if (description_.bytesPerSample == 1) return check(static_cast<const uint8_t*>(to));
    if (std::endian::native == std::endian::little) swapBytes(to, imageBytes() / 2);
    check(static_cast<const uint16_t*>(to));
  }

 private:
  size_t count() const { return size_t{description_.width} * description_.height; }
  size_t imageBytes() const { return count() * description_.bytesPerSample; }

  // One image, whose samples are text.
  void readPlain(const PgmHeader& header) {
    PnmWords in(source_, header.samplesAt);
    plain_.reserve(count());
    while (plain_.size() < count())
      plain_.push_back(static_cast<uint16_t>(in.number("sample", 0, header.maxval)));
    in.skipSpace();
    description_.trailing = source_.size() - in.at();
  }

  void copyPlain(void* to) const {
    if (description_.bytesPerSample == 2)
      std::memcpy(to, plain_.data(), imageBytes());
    else
      std::transform(plain_.begin(), plain_.end(), static_cast<uint8_t*>(to),
                     [](uint16_t sample) { return static_cast<uint8_t>(sample); });
  }

  void findImages(const PgmHeader& first) {
    at_.push_back(first.samplesAt);
    for (uint64_t end; beginsPnm(source_, end = at_.back() + imageBytes(), first.type);) {
      const PgmHeader next = readGrayHeader(source_, end);
      if (next.width != first.width || next.height != first.height || next.maxval != first.maxval)
        throwError(
            kRejected,
            "image {} of the stream is {}x{} with maxval {}: all have to be like the first one, "
            "{}x{} with maxval {}",
            at_.size(), next.width, next.height, next.maxval, first.width, first.height,
            first.maxval);
      if (source_.size() - next.samplesAt < imageBytes())
        throwError(kRejected, "the file is too short: it ends within image {} of the stream",
                   at_.size());
      at_.push_back(next.samplesAt);
    }
    description_.frames = at_.size();
    description_.trailing = source_.size() - at_.back() - imageBytes();
  }

  template <class Sample>
  void check(const Sample* samples) const {
    if (!isChecked_) return;
    const uint32_t maxval = *description_.maxval, width = description_.width;
    const auto above = [maxval](Sample sample) { return sample > maxval; };
    const auto n = static_cast<size_t>(std::find_if(samples, samples + count(), above) - samples);
    if (n < count())
      throwError(kRejected,
                 "sample {} at column {}, row {}: the maxval is {}; with --bits it is ignored",
                 samples[n], n % width, n / width, maxval);
  }

  const Source& source_;
  bool isChecked_;
  std::vector<uint64_t> at_;     // offset of each image's samples
  std::vector<uint16_t> plain_;  // of a plain PGM
};

bool recognisesPgm(const Source&, const std::string& head) {
  constexpr std::string_view kBehind = " \t\n\v\f\r#";
  return head.size() >= 2 && head[0] == 'P' && head[1] >= '1' && head[1] <= '7' &&
         (head.size() == 2 || kBehind.find(head[2]) != kBehind.npos);
}

std::unique_ptr<Reader> openPgm(const Source& source, const InputOptions& options) {
  return std::make_unique<PgmReader>(source, options);
}

}  // namespace

const ReaderType kPgm{"PNM (PGM)", recognisesPgm, openPgm};

}  // namespace vistrel::app
