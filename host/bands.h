// Splits work into bands of rows and shares them among threads.
#pragma once

#include <algorithm>
#include <atomic>
#include <optional>

#include "host/plan.h"
#include "host/team.h"

namespace vistrel::host {

// Bands of rows; each but the first begins with an even row.
class Bands {
 public:
  // Makes several bands per thread, so that no thread waits long for the others, but none that is
  // too small to be worth sharing. pixels: the number processed per row.
  Bands(ImageRows rows, uint64_t pixels, uint32_t threads);

  uint32_t count() const { return (rows_.end - origin() + height_ - 1) / height_; }
  ImageRows at(uint32_t band) const {
    const uint32_t first = origin() + band * height_;
    return {std::max(first, rows_.first), first + std::min(rows_.end - first, height_)};
  }

  // The number of threads that have work.
  uint32_t members() const { return std::min(threads_, count()); }

 private:
  uint32_t origin() const { return rows_.first & ~1u; }

  ImageRows rows_;
  uint32_t threads_;
  uint32_t height_;  // of a band, even
};

// The number of threads that a conversion may use.
inline uint32_t threadsOf(const Plan& plan, const vistrel_conversion& conversion) {
  return plan.throughBuffer ? 1 : std::max(conversion.threads, 1u);
}

// The bands of rows of its image.
inline Bands bandsOf(const Plan& plan, const vistrel_conversion& conversion, ImageRows rows) {
  return {rows, uint64_t{plan.width} * conversion.binning, threadsOf(plan, conversion)};
}

// The threads that the caller has chosen for a conversion.
class ThreadSource {
 public:
  // Throws Rejection.
  explicit ThreadSource(const vistrel_conversion& conversion);

  // Calls body(member, band) for all bands. No two calls at a time have the same member, which is
  // less than bands.members(). Throws Rejection if the caller's runner fails.
  template <class Body>
  void share(const Bands& bands, const Body& body) const {
    Work<Body> work{bands, body};
    if (bands.members() == 1) return work.join();
    run(
        bands.members(), [](void* data, uint32_t) { static_cast<Work<Body>*>(data)->join(); },
        &work);
    checkDone(work.made == bands.count());
  }

 private:
  template <class Body>
  struct Work {
    const Bands& bands;
    const Body& body;
    std::atomic<uint32_t> joined{0}, next{0}, made{0};

    // Runs on any thread, as often as the caller's runner calls it.
    void join() {
      const uint32_t member = joined++;
      if (member >= bands.members()) return;
      for (uint32_t band; (band = next++) < bands.count(); ++made) body(member, bands.at(band));
    }
  };

  void run(uint32_t members, Task task, void* data) const;
  static void checkDone(bool isDone);

  const vistrel_conversion& conversion_;
  std::optional<TeamLease> team_;
};

}  // namespace vistrel::host
