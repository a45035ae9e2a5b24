#include "apps/pictures/png_coding.h"

#include <zlib.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <queue>
#include <span>

namespace vistrel::app {
namespace {

constexpr size_t kShortestRun = 3, kLongestRun = 258;

// A search for runs takes time, so it has to save this share.
constexpr double kGain = 0.01;

// With the codes that are best, Huffman's; one ends the block.
uint64_t bitsOf(std::span<const uint64_t> counts) {
  std::priority_queue<uint64_t, std::vector<uint64_t>, std::greater<>> nodes;
  nodes.push(1);
  for (const uint64_t count : counts)
    if (count > 0) nodes.push(count);
  uint64_t bits = 0;
  while (nodes.size() > 1) {
    uint64_t both = nodes.top();
    nodes.pop();
    both += nodes.top();
    nodes.pop();
    nodes.push(both);
    bits += both;
  }
  return bits;
}

size_t runAt(const std::vector<uint8_t>& bytes, size_t at) {
  if (at == 0) return 0;
  size_t end = at;
  while (end < bytes.size() && end < at + kLongestRun && bytes[end] == bytes[at - 1]) ++end;
  return end - at;
}

}  // namespace

void DeflatedSize::add(const std::vector<uint8_t>& bytes) {
  for (size_t at = 0; at < bytes.size();) {
    const size_t run = runAt(bytes, at);
    if (run < kShortestRun) {
      ++bytes_[bytes[at]];
      ++symbols_[bytes[at++]];
      continue;
    }
    bytes_[bytes[at]] += run;
    const size_t length = run - kShortestRun;
    const size_t open =
        std::max<size_t>(std::bit_width(length), 3) - 3;  // bits that follow the code
    ++symbols_[256 + 4 * open + (length >> open)];
    extra_ += open + 1;
    at += run;
  }
}

uint64_t DeflatedSize::bitsOfBytes() const { return bitsOf(bytes_); }

uint64_t DeflatedSize::bitsOfRuns() const { return bitsOf(symbols_) + extra_; }

PngCoding pngCodingOf(PictureRows& rows, size_t step) {
  constexpr uint32_t kSparse = 32, kFew = 16;
  const uint32_t every = std::clamp(rows.count() / kFew, 2u, kSparse);
  PngCoding best{PngFilter::kPaeth, Z_HUFFMAN_ONLY};
  double least = INFINITY;
  for (const PngFilter filter : {PngFilter::kPaeth, PngFilter::kMean, PngFilter::kAbove,
                                 PngFilter::kLeft, PngFilter::kNone}) {
    FilteredRows filtered(filter, rows.bytes(), step);
    DeflatedSize size;
    for (uint32_t y = 1; y < rows.count(); y += every) {
      filtered.next(rows.row(y - 1));
      size.add(filtered.next(rows.row(y)));
    }
    const auto runs = static_cast<double>(size.bitsOfRuns());
    const double bytes = static_cast<double>(size.bitsOfBytes()) * (1 - kGain);
    if (std::min(runs, bytes) >= least) continue;
    least = std::min(runs, bytes);
    best = {filter, runs < bytes ? Z_RLE : Z_HUFFMAN_ONLY};
  }
  return best;
}

}  // namespace vistrel::app
