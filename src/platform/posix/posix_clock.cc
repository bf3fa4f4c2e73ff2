// Local time as days since 30 December 1899, ticks and pauses.

#include "platform/posix/posix_clock.h"

#include <time.h>

#include <cerrno>
#include <cmath>

namespace customsconv::posix {
namespace {

constexpr long kNanosecondsInMillisecond = 1'000'000;
constexpr double kSecondsInDay = 24.0 * 60 * 60;

}  // namespace

DateTime PosixClock::Now() const {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  tm local{};
  ::localtime_r(&now.tv_sec, &local);
  const Date date = DateOf({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday}).value_or(0);
  const double seconds = local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec +
                         static_cast<double>(now.tv_nsec / kNanosecondsInMillisecond) / 1000.0;
  return date + seconds / kSecondsInDay;
}

Date PosixClock::Today() const { return static_cast<Date>(std::floor(Now())); }

std::uint64_t PosixClock::Ticks() const {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::uint64_t>(now.tv_sec) * 1000 +
         static_cast<std::uint64_t>(now.tv_nsec / kNanosecondsInMillisecond);
}

void PosixClock::Sleep(std::uint32_t milliseconds) {
  timespec left{static_cast<time_t>(milliseconds / 1000),
                static_cast<long>(milliseconds % 1000) * kNanosecondsInMillisecond};
  while (::clock_nanosleep(CLOCK_MONOTONIC, 0, &left, &left) == EINTR) {
  }
}

}  // namespace customsconv::posix
