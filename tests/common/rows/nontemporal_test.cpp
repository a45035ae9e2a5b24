// Copies past the caches, from and to every kind of address.
#include "common/rows/nontemporal.h"

#include <array>

#include "tests/frames.h"

namespace vistrel::core::test {
namespace {

constexpr size_t kBytes = 400;

// A source of kBytes and its copy, which begins so many bytes behind a cache line's begin.
class Copied {
 public:
  explicit Copied(size_t offset) : begin_(offset), copy_(destination(), source_.data()) {}

  char* destination() { return bytes_.data() + kCacheLine + begin_; }
  const char* upTo(size_t n) const { return source_.data() + n; }
  NonTemporalCopy& copy() { return copy_; }

  // How many bytes have arrived in order; nothing else has changed.
  size_t arrived() {
    storeFence();
    const auto differ = std::mismatch(source_.begin(), source_.end(), destination());
    EXPECT_EQ(std::count(bytes_.begin(), bytes_.begin() + kCacheLine + ptrdiff_t(begin_), 0),
              kCacheLine + ptrdiff_t(begin_));
    EXPECT_TRUE(std::all_of(differ.second, bytes_.end(), [](char c) { return c == 0; }));
    return static_cast<size_t>(differ.first - source_.begin());
  }

 private:
  std::vector<char> source_ =
      painted<char>(kBytes, 1, [](uint32_t x, uint32_t) { return 1 + x % 101; });
  alignas(kCacheLine) std::array<char, 640> bytes_{};
  size_t begin_;
  NonTemporalCopy copy_;
};

TEST(NonTemporalCopy, TakesWholeLinesOfTheDestination) {
#if defined(__SSE2__)
  for (size_t offset : {0, 1, 4, 31, 63}) {
    Copied copied(offset);
    const size_t firstLine = (kCacheLine - offset) % kCacheLine;
    size_t expected = 0;
    for (size_t n = 0; n <= kBytes; n += 13) {
      copied.copy().upTo(copied.upTo(n));
      if (n >= firstLine + kCacheLine) expected = n - (n - firstLine) % kCacheLine;
      EXPECT_EQ(copied.arrived(), expected) << offset << ' ' << n;
    }
  }
#else
  GTEST_SKIP() << "Here all bytes are copied at the end.";
#endif
}

TEST(NonTemporalCopy, FinishesWithTheRest) {
  for (size_t offset : {0, 1, 63})
    for (size_t before : {size_t{0}, size_t{100}, size_t{399}, kBytes})
      for (size_t n : {size_t{399}, kBytes}) {
        Copied copied(offset);
        copied.copy().upTo(copied.upTo(std::min(before, n)));
        copied.copy().finish(copied.upTo(n));
        EXPECT_EQ(copied.arrived(), n) << offset << ' ' << before;
      }
}

TEST(NonTemporalCopy, OfNothingCopiesNothing) {
  NonTemporalCopy nothing;
  const char byte = 1;
  nothing.upTo(&byte + 1);
  nothing.finish(&byte + 1);
}

// No address is too far away for a prefetch.
TEST(Prefetcher, ReadsNothing) {
  Prefetcher().fetch(0, 1000000);
  Prefetcher(reinterpret_cast<const void*>(1), 3).fetch(0, 1000);
}

}  // namespace
}  // namespace vistrel::core::test
