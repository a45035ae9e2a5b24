#include "apps/tools/guess/arrangement.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "apps/names/pixel_format.h"
#include "apps/tools/guess/row_profile.h"
#include "apps/tools/guess/usual_sizes.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr size_t kMaxHeader = 8192, kMaxFrames = 64, kMinHeight = 8, kStarts = 4, kSeams = 12;

// Programs write headers of round sizes, and seldom long ones.
double priorOfSkip(size_t skip) {
  constexpr size_t kLong = 4096;
  if (skip == 0) return 0;
  const double prior = skip > kLong ? -3 : 0;
  if (std::has_single_bit(skip) && skip >= 16) return prior - 3;
  return prior - (skip % 512 == 0 ? 3.5 : skip % 16 == 0 ? 5 : skip % 2 == 0 ? 7 : 9);
}

// What it says that only this share of all places is as likely an edge, if it is one.
double oddsOfRank(double rank, size_t places) {
  return -0.6 * std::log2(std::max(1 - rank, 1.0 / static_cast<double>(places))) - 1.2;
}

class Arranger {
 public:
  Arranger(const std::vector<uint8_t>& bytes, const Layout& layout, const std::optional<Size>& size)
      : bytes_(bytes), layout_(layout), size_(size), reader_(bytes, layout),
        profile_(reader_, layout.width), row_(bytesPerRow(layout)) {}

  std::vector<Arrangement> run(double odds) {
    odds_ = odds;
    const size_t most = std::min(reader_.rows(), static_cast<size_t>(kMaxHeader / row_) + 1);
    for (size_t first = 0; first < most; ++first) {
      const auto skip = layout_.skip + static_cast<size_t>(static_cast<double>(first) * row_);
      if (skip <= kMaxHeader + layout_.stride) addHeights(first, skip);
    }
    return all_;
  }

 private:
  void addHeights(size_t first, size_t skip) {
    const size_t rows = reader_.rows() - first;
    if (rows < kMinHeight) return;
    if (size_) return add(first, skip, size_->height, rows / size_->height);
    for (size_t frames = 1; frames <= std::min(kMaxFrames, rows / kMinHeight); ++frames)
      if (rows % frames == 0) add(first, skip, rows / frames, frames);
    for (const Size& usual : usualSizes())
      if (usual.width == layout_.width && rows % usual.height)
        add(first, skip, usual.height, rows / usual.height);
    for (const size_t row : profile_.seams())
      if (row > first + kMinHeight && rows % (row - first))
        add(first, skip, row - first, rows / (row - first));
  }

  void add(size_t first, size_t skip, size_t height, size_t frames) {
    if (!frames || !height || frames > kMaxFrames) return;
    const auto bytes = static_cast<size_t>(static_cast<double>(height * frames) * row_);
    const size_t padding =
        layout_.stride ? layout_.stride - rowBytesOf(layout_.packing, layout_.width) : 0;
    const size_t left = bytes_.size() - skip;
    const size_t trailing = left > bytes ? left - bytes : 0;
    const bool isWhole = left == bytes || left + padding == bytes;
    Arrangement a{
        layout_, static_cast<uint32_t>(height), static_cast<uint32_t>(frames), trailing, 1, odds_};
    a.layout.skip = skip;
    const Size size{layout_.width, a.height};
    a.odds += priorOfSkip(skip);
    if (!size_) a.odds += priorOf(size);
    if (!isWhole) a.odds -= !size_ && isUsual(size) ? 14 : 26;
    if (padding && left + padding == bytes) a.odds -= 1;
    if (frames > 1)
      a.odds += oddsOfFrames(first, height, reader_.rows()) - 2 - std::log2(frames) / 2;
    if (first) a.odds += oddsOfHeader(first, skip);
    all_.push_back(a);
  }

  // Whether the first rows are no picture's. Of headers of round sizes there are few.
  double oddsOfHeader(size_t rows, size_t skip) const {
    const double edge = 2 * oddsOfRank(profile_.rankOfSeam(rows), reader_.rows());
    const double strength = 2 * std::log2(std::max(0.1, profile_.strengthOfSeam(rows)));
    const double choices = std::has_single_bit(skip) ? 0 : std::log2(kMaxHeader / row_ + 1);
    return std::clamp(edge, -6.0, 6.0) + strength - choices;
  }

  // Whether there are edges between frames, and whether frames are alike.
  double oddsOfFrames(size_t first, size_t height, size_t end) const {
    double odds = 0;
    size_t count = 0;
    for (size_t y = first + height; y < end && count < kSeams; y += height, ++count)
      odds += 2 * oddsOfRank(profile_.rankOfSeam(y), end);
    const double distance = std::max(0.05, profile_.distanceOfFrames(first, height));
    const double alike = std::clamp(3 * std::log2(0.6 / distance), -4.0, 8.0);
    if (count < 2) return alike + std::clamp(odds, -6.0, 5.0);
    const double mean = odds / static_cast<double>(count);
    return alike + std::max(mean * static_cast<double>(std::min<size_t>(count, 5)), -12.0);
  }

  const std::vector<uint8_t>& bytes_;
  Layout layout_;
  std::optional<Size> size_;
  RowReader reader_;
  RowProfile profile_;
  double row_, odds_ = 0;
  std::vector<Arrangement> all_;
};

// Bytes after which pixels of the same colour follow, whatever the mosaic.
size_t groupBytes(const Packing& p) {
  const SampleGroup group = groupOf(p.code, p.bits);
  return group.bytes * (group.pixels % 2 ? 2 : 1);
}

// That the first bytes of what seems to be padding are samples.
double oddsAgainstRounding(const RowGrid& grid) {
  const Layout& l = grid.layout;
  const size_t end = (grid.padding.begin + l.stride - l.skip) % l.stride;
  if (rowBytesOf(l.packing, l.width) <= end + (are16Bit(l.packing.code) ? 1 : 0)) return 0;
  const bool hasEmptyBytes =
      l.packing.code == VISTREL_PACKING_MIPI && grid.unit >= (1 << (l.packing.bits - 8));
  return hasEmptyBytes && l.width % 4 == 0 ? 0 : 5;
}

// Two rows side by side have an edge in the middle; two halves of a row have none between them.
class LeftEdges {
 public:
  LeftEdges(const std::vector<uint8_t>& bytes, size_t period, size_t group)
      : period_(period), rows_(bytes, period, group), pairs_(bytes, 2 * period, group) {}

  double oddsOf(size_t skip) const {
    const double rank = std::min(pairs_.rankOf(skip), pairs_.rankOf(skip + period_));
    const double ofDouble = 2 * oddsOfRank(rows_.rankOf(skip + period_ / 2), period_);
    return std::min(4.0, oddsOfRank(rank, 2 * period_)) - std::max(0.0, ofDouble);
  }

 private:
  size_t period_;
  Seams rows_, pairs_;
};

struct Start {
  size_t skip;
  double odds;
};

// Where the first row may begin, less than a row into the file.
std::vector<Start> startsOf(const std::vector<uint8_t>& bytes, const RowGrid& grid) {
  const Layout& l = grid.layout;
  const auto period = static_cast<size_t>(bytesPerRow(l));
  if (grid.padding.count)
    return {{l.skip, std::min(8.0, 2 + std::log2(static_cast<double>(grid.padding.count))) -
                         oddsAgainstRounding(grid)}};
  const size_t group = groupOf(l.packing.code, l.packing.bits).bytes;
  const double oddsOfChange =
      grid.unexplained < 8 ? 0 : 0.8 * std::log2(static_cast<double>(grid.unexplained));
  const LeftEdges edges(bytes, period, groupBytes(l.packing));
  std::vector<Start> starts;
  for (const size_t skip : likelySkips(bytes.size(), period))
    if (skip == l.skip || (l.stride && (period % group || skip % group == l.skip % group)))
      starts.push_back({skip, edges.oddsOf(skip) - oddsOfChange});
  const auto worth = [rest = bytes.size() % period](const Start& s) {
    return s.skip == rest ? 99 : s.odds + priorOfSkip(s.skip);
  };
  std::ranges::sort(starts,
                    [&worth](const Start& a, const Start& b) { return worth(a) > worth(b); });
  if (starts.size() > kStarts) starts.resize(kStarts);
  return starts;
}

}  // namespace

std::vector<Arrangement> arrangementsOf(const std::vector<uint8_t>& bytes, const RowGrid& grid,
                                        const std::optional<Size>& size) {
  std::vector<Arrangement> all;
  for (const Start& start : startsOf(bytes, grid)) {
    Layout layout = grid.layout;
    layout.skip = start.skip;
    const auto some = Arranger(bytes, layout, size).run(start.odds);
    all.insert(all.end(), some.begin(), some.end());
  }
  for (Arrangement& a : all) a.unit = grid.unit;
  return all;
}

}  // namespace vistrel::app
