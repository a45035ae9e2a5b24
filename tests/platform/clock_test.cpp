// Ticks and the calendar.
#include "platform/clock.h"

#include <gtest/gtest.h>
#include <time.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "vistrel/platform.h"

namespace vistrel::core::test {
namespace {

TEST(Ticks, AreMilliseconds) {
  EXPECT_EQ(ticksOf(0), 0u);
  EXPECT_EQ(ticksOf(999), 0u);
  EXPECT_EQ(ticksOf(1000), 1u);
  EXPECT_EQ(ticksOf(3600000000), 3600000u);
}

// quirk: early-tick-wrap
TEST(Ticks, BeginAgainAfter4294967) {
  EXPECT_EQ(ticksOf(0xFFFFFFFF), 4294967u);
  EXPECT_EQ(ticksOf(0x100000000), 0u);
  EXPECT_EQ(ticksOf(0x100000000 + 5000), 5u);
  EXPECT_EQ(ticksOf(0xFFFFFFFFFFFFFFFF), 4294967u);
}

constexpr uint32_t kTicksARound = 4294968;

// The time from one tick to another, if ticks wrap between them.
uint32_t passed(uint32_t from, uint32_t to) { return (to + kTicksARound - from) % kTicksARound; }

TEST(Ticks, PassWithTheTime) {
  for (auto ticks : {OS_GetTickCount, OS_timeGetTime}) {
    using namespace std::chrono;
    const auto start = steady_clock::now();
    const uint32_t from = ticks();
    std::this_thread::sleep_for(milliseconds(30));
    const uint32_t to = ticks();
    const auto most = duration_cast<milliseconds>(steady_clock::now() - start).count() + 2;
    EXPECT_GE(passed(from, to), 29u);
    EXPECT_LE(passed(from, to), static_cast<uint64_t>(most));
  }
}

TEST(Ticks, AreTheSameByBothNames) {
  const uint32_t from = OS_GetTickCount(), between = OS_timeGetTime(), to = OS_GetTickCount();
  EXPECT_LE(passed(from, between), passed(from, to));
}

time_t secondsOf(const _OS_SYSTEMTIME& t) {
  tm date{};
  date.tm_year = t.year - 1900;
  date.tm_mon = t.month - 1;
  date.tm_mday = t.day;
  date.tm_hour = t.hour;
  date.tm_min = t.minute;
  date.tm_sec = t.second;
  return timegm(&date);
}

TEST(LocalTime, IsGmt) {
  const char* before = std::getenv("TZ");
  const std::string zone = before ? before : "";
  setenv("TZ", "XYZ-9:30", 1);
  tzset();
  const time_t earliest = time(nullptr);
  _OS_SYSTEMTIME now;
  OS_GetLocalTime(&now);
  const time_t latest = time(nullptr);
  before ? setenv("TZ", zone.c_str(), 1) : unsetenv("TZ");
  tzset();
  EXPECT_GE(secondsOf(now), earliest);
  EXPECT_LE(secondsOf(now), latest);
}

TEST(LocalTime, HasNoDayOfWeekAndNoMilliseconds) {
  _OS_SYSTEMTIME now = {7, 7, 7, 7, 7, 7, 7, 7};
  OS_GetLocalTime(&now);
  EXPECT_EQ(now.dayOfWeek, 0);
  EXPECT_EQ(now.milliseconds, 0);
}

TEST(LocalTime, IsARecordOfEightWordsInOrder) {
  const _OS_SYSTEMTIME t = {2024, 2, 0, 29, 23, 59, 58, 0};
  const uint16_t* words = reinterpret_cast<const uint16_t*>(&t);
  static_assert(sizeof t == 16);
  EXPECT_EQ(words[0], t.year);
  EXPECT_EQ(words[1], t.month);
  EXPECT_EQ(words[2], t.dayOfWeek);
  EXPECT_EQ(words[3], t.day);
  EXPECT_EQ(words[4], t.hour);
  EXPECT_EQ(words[5], t.minute);
  EXPECT_EQ(words[6], t.second);
  EXPECT_EQ(words[7], t.milliseconds);
}

}  // namespace
}  // namespace vistrel::core::test
