// What may go on for hours. VISTREL_AMOUNT in the environment says how long.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <deque>
#include <set>
#include <thread>

#include "tests/amount.h"
#include "tests/host/random_case.h"
#include "tests/resident.h"

namespace vistrel {
namespace {

constexpr uint32_t kThreads = 16;

void onThreads(const std::function<void(uint32_t thread)>& work) {
  std::vector<std::thread> threads;
  for (uint32_t i = 0; i < kThreads; ++i) threads.emplace_back(work, i);
  for (auto& thread : threads) thread.join();
}

// Acquires and releases streams until all threads together have done so `amount` times.
void acquireAndRelease(uint64_t amount, uint32_t seed, std::atomic<uint64_t>& done,
                       std::atomic<uint64_t>& faults) {
  std::deque<vistrel_stream*> held;
  Choice choice(seed);
  while (done < amount) {
    vistrel_stream* stream = nullptr;
    if (held.size() < 8 && choice.oneIn(2)) {
      if (vistrel_stream_acquire(VISTREL_WAIT, &stream, nullptr)) ++faults;
      held.push_back(stream);
    } else if (!held.empty()) {
      stream = held.front();
      held.pop_front();
      if (vistrel_stream_release(stream, nullptr)) ++faults;
      if (vistrel_stream_release(stream, nullptr) != VISTREL_BAD_STREAM) ++faults;
      ++done;
    }
  }
  for (vistrel_stream* stream : held)
    if (vistrel_stream_release(stream, nullptr)) ++faults;
}

TEST(Endurance, StreamsAreAcquiredAndReleased) {
  const uint64_t amount = test::amount(100'000);
  std::atomic<uint64_t> done = 0, faults = 0;
  onThreads([&](uint32_t thread) { acquireAndRelease(amount, thread, done, faults); });
  EXPECT_EQ(faults, 0u);
  std::set<vistrel_stream*> all;
  vistrel_stream* stream = nullptr;
  while (!vistrel_stream_acquire(VISTREL_NO_WAIT, &stream, nullptr)) all.insert(stream);
  EXPECT_EQ(all.size(), size_t{VISTREL_MAX_STREAMS});
  for (vistrel_stream* each : all) EXPECT_EQ(vistrel_stream_release(each, nullptr), VISTREL_OK);
  std::printf("%llu streams acquired and released\n", static_cast<unsigned long long>(done.load()));
}

bool convertsInOneCall(const RandomCase& c, vistrel_stream* stream) {
  Canvas canvas(c);
  const vistrel_image image = canvas.image();
  return !vistrel_stream_convert(stream, &c.frame, &c.conversion, &image, nullptr) &&
         canvas.holds();
}

bool convertsInBands(const RandomCase& c, vistrel_stream* stream) {
  Canvas canvas(c);
  const vistrel_image image = canvas.image();
  const uint32_t half = c.layout.height / 2 & ~1u;
  if (half && vistrel_convert_rows(stream, &c.frame, &c.conversion, &image, 0, half, nullptr))
    return false;
  return !vistrel_convert_rows(stream, &c.frame, &c.conversion, &image, half,
                               c.layout.height - half, nullptr) &&
         canvas.holds();
}

bool convertsPushed(const RandomCase& c, vistrel_stream* stream) {
  Canvas canvas(c);
  const vistrel_image image = canvas.image();
  return !vistrel_stream_begin(stream, &c.frame, &c.conversion, &image, nullptr) &&
         !vistrel_stream_push(stream, c.samples.data(), c.samples.size(), c.frame.height, nullptr,
                              nullptr) &&
         canvas.holds();
}

// Every image is compared with the one that was made first.
void convertUntil(std::chrono::steady_clock::time_point end, const std::deque<RandomCase>& cases,
                  uint32_t seed, std::atomic<uint64_t>& done, std::atomic<uint64_t>& faults) {
  const std::array<OwnStream, VISTREL_MAX_STREAMS / kThreads> streams;
  Choice choice(seed);
  while (std::chrono::steady_clock::now() < end) {
    const RandomCase& c = cases[choice.below(static_cast<uint32_t>(cases.size()))];
    vistrel_stream* const stream = streams[choice.below(streams.size())];
    const uint32_t way = choice.below(3);
    const bool isRight = way == 1 && c.canBeSplit()   ? convertsInBands(c, stream)
                         : way == 2 && c.isPushable() ? convertsPushed(c, stream)
                                                      : convertsInOneCall(c, stream);
    if (!isRight) ++faults;
    ++done;
  }
}

TEST(Endurance, AllStreamsConvertAllTheTime) {
  const std::chrono::seconds length(test::amount(2));
  std::deque<RandomCase> cases;
  for (uint32_t seed = 0; seed < 300; ++seed) cases.emplace_back(seed, 400, 300);
  std::atomic<uint64_t> done = 0, faults = 0;
  long middle = 0;
  const auto end = std::chrono::steady_clock::now() + length;
  std::thread watch([&] {
    std::this_thread::sleep_for(length / 2);
    middle = test::residentKiB();
  });
  onThreads([&](uint32_t thread) { convertUntil(end, cases, thread, done, faults); });
  watch.join();
  EXPECT_EQ(faults, 0u);
  const long grown = test::residentKiB() - middle;
  if (!VISTREL_SANITIZED && length >= std::chrono::minutes(1)) {
    EXPECT_LT(grown, 16 * 1024) << "KiB in the second half";
  }
  std::printf("%lld seconds: %llu images right, memory %+ld KiB in the second half\n",
              static_cast<long long>(length.count()), static_cast<unsigned long long>(done.load()),
              grown);
}

}  // namespace
}  // namespace vistrel
