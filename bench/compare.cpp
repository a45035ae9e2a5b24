#include "bench/compare.h"

#include <fmt/format.h>

#include <stdexcept>

#include "vistrel/vistrel_host.h"

namespace vistrel::core::bench {

namespace {

// Rejects results with a wrong phase, channel order or size. Some differences are allowed: where a
// peer rounds, truncation costs up to one code, which binning multiplies by its factor; blocks of
// 3 x 3 take one green and one red sample in nine from a neighbouring channel.
void checkSamePicture(const Row& row, const Task& ours, const Task& peer) {
  const unsigned factor = row.ours.factor;
  const bool mixes = factor == 3 && ours.picture.layout.channels > 1;
  const double allowed = 1.0 + factor + (mixes ? 12 : 0);
  const double difference = largestDifference(ours.picture, peer.picture, factor);
  if (difference > allowed)
    throw std::runtime_error(
        fmt::format("{}: ours and {} show different pictures: a mean differs by {:.1f} codes, "
                    "{:.0f} allowed",
                    row.ours.name(), row.peer.name, difference, allowed));
}

}  // namespace

const char* Result::mark() const {
  if (!hasTarget()) return "-";
  if (ratio() >= row.target.goalAt(level)) return "met";
  return ratio() >= row.target.required ? "acceptable" : "MISSED";
}

std::string rowName(const Row& row, const FrameSize& size) {
  return fmt::format("{}/{} {}", row.ours.name(), size.name, row.peer.name);
}

Timing perPixel(const Timing& t, const FrameSize& size) {
  const auto pixels = static_cast<double>(size.pixels());
  return {t.minimum / pixels, t.median / pixels};
}

Result compare(const Row& row, const FrameSize& size, Level level, int rounds) {
  const Frame frame = makeFrame(size, row.ours.factor, row.ours.significantBits);
  const Task ours = row.make(row.ours, frame), peer = row.peer.make(row.ours, frame);
  for (const Task* task : {&ours, &peer})
    if (!staysOnThisThread(task->run))
      throw std::runtime_error(rowName(row, size) + ": another thread is running");
  if (row.ours.reduction != VISTREL_TABLE || row.peer.hasTables) checkSamePicture(row, ours, peer);
  const auto times = measure({{"ours", ours.run}, {"peer", peer.run}}, rounds);
  return {row, size, level, perPixel(times[0], size), perPixel(times[1], size)};
}

}  // namespace vistrel::core::bench
