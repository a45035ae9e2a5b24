#include "apps/input/readers.h"

#include <bit>
#include <string_view>
#include <vector>

#include "apps/error.h"
#include "apps/pictures/pgm_header.h"

namespace vistrel::app {
namespace {

class PgmReader : public Reader {
 public:
  explicit PgmReader(const Source& source) : source_(source) {
    const PgmHeader header = readPgmHeader(source, 0);
    Description& d = description_;
    d.format = "PGM";
    d.width = header.width;
    d.height = header.height;
    d.maxval = header.maxval;
    d.phase = header.phase;
    d.phaseInText = d.phase.has_value();
    d.bytesPerSample = header.maxval > 255 ? 2 : 1;
    d.bits = bitsOfLargest(header.maxval, 8 * d.bytesPerSample);
    d.bitsKnown = header.maxval < 256 || d.bits < 16;
    checkSize(d, source, 8 * d.bytesPerSample, source.size() - header.samplesAt);
    findImages(header);
  }

  void read(uint64_t n, void* to) override {
    source_.read(at_[n], to, imageBytes());
    if (description_.bytesPerSample == 2 && std::endian::native == std::endian::little)
      swapBytes(to, imageBytes() / 2);
  }

 private:
  size_t imageBytes() const {
    return size_t{description_.width} * description_.height * description_.bytesPerSample;
  }

  void findImages(const PgmHeader& first) {
    at_.push_back(first.samplesAt);
    for (uint64_t end; beginsPgm(source_, end = at_.back() + imageBytes());) {
      const PgmHeader next = readPgmHeader(source_, end);
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

  const Source& source_;
  std::vector<uint64_t> at_;  // offset of each image's samples
};

bool recognisesPgm(const Source&, const std::string& head) {
  constexpr std::string_view kBehind = " \t\n\v\f\r#";
  return head.size() >= 2 && head[0] == 'P' && head[1] >= '1' && head[1] <= '7' &&
         (head.size() == 2 || kBehind.find(head[2]) != kBehind.npos);
}

std::unique_ptr<Reader> openPgm(const Source& source) {
  return std::make_unique<PgmReader>(source);
}

}  // namespace

const ReaderType kPgm{"PNM (PGM)", recognisesPgm, openPgm};

}  // namespace vistrel::app
