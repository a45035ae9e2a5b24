#include "platform/clock.h"

#include <chrono>
#include <ctime>

#include "vistrel/platform.h"

uint32_t OS_GetTickCount() {
  using namespace std::chrono;
  const auto sinceStart = steady_clock::now().time_since_epoch();
  return vistrel::core::ticksOf(
      static_cast<uint64_t>(duration_cast<microseconds>(sinceStart).count()));
}

uint32_t OS_timeGetTime() { return OS_GetTickCount(); }

void OS_GetLocalTime(_OS_SYSTEMTIME* pTime) {
  const std::time_t now = std::time(nullptr);
  std::tm date{};
#ifdef _WIN32
  gmtime_s(&date, &now);
#else
  gmtime_r(&now, &date);
#endif
  *pTime = {};
  pTime->year = static_cast<uint16_t>(date.tm_year + 1900);
  pTime->month = static_cast<uint16_t>(date.tm_mon + 1);
  pTime->day = static_cast<uint16_t>(date.tm_mday);
  pTime->hour = static_cast<uint16_t>(date.tm_hour);
  pTime->minute = static_cast<uint16_t>(date.tm_min);
  pTime->second = static_cast<uint16_t>(date.tm_sec);
}
