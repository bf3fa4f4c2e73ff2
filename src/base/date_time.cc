// The calendar is the standard library's; what is added is the count from day zero.

#include "base/date_time.h"

#include <chrono>

namespace customsconv {
namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr sys_days kDayZero{std::chrono::year{1899} / 12 / 30};

}  // namespace

std::optional<Date> DateOf(CalendarDay day) {
  if (day.year < 1 || day.year > 9999 || day.month < 1 || day.day < 1) return std::nullopt;
  const year_month_day date{std::chrono::year{day.year},
                            std::chrono::month{static_cast<unsigned>(day.month)},
                            std::chrono::day{static_cast<unsigned>(day.day)}};
  if (!date.ok()) return std::nullopt;
  return static_cast<Date>((sys_days{date} - kDayZero).count());
}

CalendarDay DayOf(Date date) {
  const year_month_day day{kDayZero + std::chrono::days{date}};
  return {static_cast<int>(day.year()), static_cast<int>(static_cast<unsigned>(day.month())),
          static_cast<int>(static_cast<unsigned>(day.day()))};
}

}  // namespace customsconv
