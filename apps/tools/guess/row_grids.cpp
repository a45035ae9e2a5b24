#include "apps/tools/guess/row_grids.h"

#include <algorithm>

#include "apps/names/pixel_format.h"
#include "apps/tools/guess/code_length.h"
#include "apps/tools/guess/row_periods.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr size_t kFewSamples = 2500, kManySamples = 30000;
constexpr size_t kFewPeriods = 5, kPeriods = 20, kGrids = 16;
constexpr size_t kSlimmest = 256;    // rows of all frames by their width
constexpr size_t kWidest = 64;       // bytes of a row by rows
constexpr double kTolerance = 1.15;  // of few samples

bool isShorter(const RowGrid& a, const RowGrid& b) { return a.rate < b.rate; }

// Rows that recur less than others count as longer ones.
void weighRecurrence(std::vector<RowGrid>& grids) {
  double most = 1;
  for (const RowGrid& g : grids) most = std::max(most, g.recurrence);
  for (RowGrid& g : grids) g.rate *= 1 + 0.1 * (1 - std::max(0.0, g.recurrence) / most);
}

// In GigE's packing of 10 bits, four bits of each group's middle byte are 0.
bool hasUnusedBits(const std::vector<uint8_t>& bytes, const Layout& l) {
  if (l.packing.code != VISTREL_PACKING_GIGE || l.packing.bits != 10) return false;
  const size_t row = rowBytesOf(l.packing, l.width), stride = l.stride ? l.stride : row;
  const size_t step = std::max<size_t>(1, bytes.size() / stride / 32) * stride;
  size_t set = 0, all = 0;
  for (size_t at = l.skip; at + row <= bytes.size(); at += step)
    for (size_t i = 1; i < row; i += 3, ++all) set += (bytes[at + i] & 0xCC) != 0;
  return set * 8 > all;
}

// How many of the bytes between the rows of a layout are constant padding.
size_t explainedBytes(const Layout& l, size_t row, const Padding& padding) {
  if (padding.noise || !l.stride) return 0;
  size_t count = 0;
  for (size_t i = 0; i < padding.count; ++i)
    count += (padding.begin + i + 2 * l.stride - l.skip % l.stride) % l.stride >= row;
  return count;
}

class Search {
 public:
  Search(const std::vector<uint8_t>& bytes, uint32_t width)
      : bytes_(bytes), width_(width), recurrence_(bytes), packings_(allPackings()) {}

  std::vector<RowGrid> run() {
    const std::vector<size_t> periods = periodsOf();
    const size_t few = std::min(periods.size(), kFewPeriods * (width_ ? 2 : 1));
    for (size_t i = 0; i < few; ++i) addPeriod(periods[i]);
    keepPackings();
    for (size_t i = few; i < periods.size(); ++i) addPeriod(periods[i]);
    return best();
  }

 private:
  // The distance of two rows in bytes may be that of several rows.
  std::vector<size_t> periodsOf() const {
    std::vector<size_t> periods;
    const auto add = [&](size_t period) {
      const size_t rows = bytes_.size() / period;
      if (period >= 16 && rows >= 8 && rows / period < kSlimmest && period / rows < kWidest &&
          !std::ranges::count(periods, period))
        periods.push_back(period);
    };
    for (const size_t distance : recurrence_.distances())
      for (const size_t rows : {1, 2, 3, 4})
        if (distance % rows == 0) add(distance / rows);
    std::ranges::stable_sort(periods, [this](size_t a, size_t b) {
      return recurrenceOf(2.0 * static_cast<double>(a)) >
             recurrenceOf(2.0 * static_cast<double>(b));
    });
    if (periods.size() > kPeriods) periods.resize(kPeriods);
    return width_ ? withRowsOf(width_, periods) : periods;
  }

  // First those of rows without padding.
  std::vector<size_t> withRowsOf(uint32_t width, const std::vector<size_t>& others) const {
    std::vector<size_t> periods;
    for (const Packing& p : packings_)
      if (const size_t row = rowBytesOf(p, width); !std::ranges::count(periods, row))
        periods.push_back(row);
    for (const size_t period : others)
      if (!std::ranges::count(periods, period)) periods.push_back(period);
    return periods;
  }

  void addPeriod(size_t period) {
    const std::vector<Padding> paddings = paddingsOf(bytes_, period);
    for (const Packing& p : packings_) {
      for (const Padding& padding : paddings) addPadded(p, period, padding);
      addFull(p, period, paddings);
      if (p.stored % 8) addContinuous(p, period);
    }
  }

  // Padding of zeros may go on into a picture's dark edge; a likely place to begin is better.
  void addPadded(const Packing& p, size_t period, const Padding& padding) {
    std::vector<size_t> skips{(padding.begin + padding.count) % period};
    if (const size_t rest = bytes_.size() % period; width_ && rest != skips[0])
      skips.push_back(rest);
    for (const size_t skip : likelySkips(bytes_.size(), period)) {
      const size_t into = (skip + period - padding.begin) % period;
      if (into > 0 && into <= padding.count && !std::ranges::count(skips, skip))
        skips.push_back(skip);
    }
    for (const size_t skip : skips)
      for (const uint32_t width : widthsOf(p, (padding.begin + period - skip) % period))
        if (rowBytesOf(p, width) <= period) add({p, width, period, skip}, padding);
  }

  // Padding seems to begin earlier if a row's last bytes never change either.
  std::vector<uint32_t> widthsOf(const Packing& p, size_t row) const {
    if (width_) return {width_};
    const uint32_t exact = widthOf(p, row), width = rowBytesOf(p, exact) == row ? exact : exact + 1;
    std::vector<uint32_t> widths{width};
    if (width % 2) widths.push_back(width + 1);
    if (p.code != VISTREL_PACKING_MIPI) return widths;
    const SampleGroup group = groupOf(p.code, p.bits);
    const auto rest = static_cast<uint32_t>(row % group.bytes);
    widths.push_back(static_cast<uint32_t>(row / group.bytes) * group.pixels +
                     std::min(rest, group.pixels));
    return widths;
  }

  // Rows that begin at the same place of a group are equally good.
  void addFull(const Packing& p, size_t period, const std::vector<Padding>& paddings) {
    const size_t group = groupOf(p.code, p.bits).bytes;
    std::vector<size_t> places;
    const uint32_t width = width_ ? width_ : widthOf(p, period);
    if (rowBytesOf(p, width) > period) return;
    for (const size_t skip : likelySkips(bytes_.size(), period)) {
      const size_t place = period % group ? skip : skip % group;
      if (std::ranges::count(places, place)) continue;
      places.push_back(place);
      add({p, width, period, skip}, {});
      if (!grids_.empty() && !paddings.empty()) grids_.back().unexplained = paddings[0].count;
    }
  }

  // Some rows together fill whole bytes.
  void addContinuous(const Packing& p, size_t period) {
    const size_t pixels = period * 8 / p.stored, group = groupOf(p.code, p.bits).bytes;
    if (period * 8 % p.stored) return;
    for (const size_t rows : {2, 4, 8}) {
      const size_t width = pixels / rows;
      if (pixels % rows || width * p.stored % 8 == 0 || (width_ && width != width_)) continue;
      std::vector<size_t> places;
      for (const size_t skip : likelySkips(bytes_.size(), period)) {
        if (std::ranges::count(places, skip % group)) continue;
        places.push_back(skip % group);
        add({p, static_cast<uint32_t>(width), 0, skip}, {});
      }
    }
  }

  void add(const Layout& layout, const Padding& padding) {
    RowGrid grid{layout};
    grid.padding = padding;
    grid.recurrence = recurrenceOf(2 * bytesPerRow(layout));
    measure(grid, kFewSamples);
    if (grid.rate < 99) grids_.push_back(grid);
  }

  // Of two rows, or of one if a mosaic's are no more alike.
  double recurrenceOf(double bytes) const {
    const auto two = static_cast<size_t>(bytes);
    return std::max(recurrence_.at(two), recurrence_.at(two / 2));
  }

  void measure(RowGrid& grid, size_t samples) const {
    const Layout& l = grid.layout;
    RowReader reader(bytes_, l);
    if (l.width < 8 || reader.rows() < 8 || reader.rows() / l.width > kSlimmest ||
        hasUnusedBits(bytes_, l))
      return;
    const CodeLength length = codeLengthOf(reader, l.width, samples);
    const size_t bytes = rowBytesOf(l.packing, l.width);
    const double row = bytesPerRow(l);
    const double gap = row - static_cast<double>(bytes + explainedBytes(l, bytes, grid.padding));
    grid.rate = (length.bits * l.width + 8 * std::max(0.0, gap)) / row + 0.01;
    grid.unit = length.unit;
  }

  void keepPackings() {
    std::vector<RowGrid> sorted = grids_;
    std::ranges::sort(sorted, isShorter);
    packings_.clear();
    for (const RowGrid& g : sorted) {
      if (g.rate > sorted[0].rate * kTolerance + 0.1) break;
      const auto isSame = [&g](const Packing& p) {
        return p.code == g.layout.packing.code && p.bits == g.layout.packing.bits;
      };
      if (std::ranges::none_of(packings_, isSame)) packings_.push_back(g.layout.packing);
    }
  }

  std::vector<RowGrid> best() {
    keepBest(2 * kGrids);
    for (RowGrid& g : grids_) measure(g, kManySamples);
    weighRecurrence(grids_);
    keepBest(kGrids);
    return grids_;
  }

  void keepBest(size_t count) {
    std::ranges::stable_sort(grids_, isShorter);
    if (grids_.size() > count) grids_.resize(count);
  }

  const std::vector<uint8_t>& bytes_;
  uint32_t width_;
  Recurrence recurrence_;
  std::vector<Packing> packings_;
  std::vector<RowGrid> grids_;
};

}  // namespace

std::vector<RowGrid> rowGrids(const std::vector<uint8_t>& bytes, uint32_t width) {
  return Search(bytes, width).run();
}

std::vector<size_t> likelySkips(size_t bytes, size_t period) {
  std::vector<size_t> skips{0, bytes % period};
  for (size_t skip = 16; skip <= 4096; skip *= 2) skips.push_back(skip % period);
  std::vector<size_t> all;
  for (const size_t skip : skips)
    if (!std::ranges::count(all, skip)) all.push_back(skip);
  return all;
}

}  // namespace vistrel::app
