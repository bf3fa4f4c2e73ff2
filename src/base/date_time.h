#ifndef CUSTOMSCONV_BASE_DATE_TIME_H_
#define CUSTOMSCONV_BASE_DATE_TIME_H_

#include <cstdint>
#include <optional>

namespace customsconv {

// Days as numbers, as tables of counters and the clock have them:
//
//   const std::optional<Date> day = DateOf({2024, 2, 30});   // empty: no such day
//   const bool new_year = DayOf(last).year != DayOf(today).year;
//
// Texts of dates are the matter of text/dates.h.

// Whole days since 30 December 1899.
using Date = std::int32_t;
// The same with the time of day as a fraction.
using DateTime = double;

struct CalendarDay {
  int year;
  int month;  // 1 to 12
  int day;    // 1 to 31
};

// The day number of a day of the Gregorian calendar (years 1 to 9999); empty
// when the calendar does not hold it.
[[nodiscard]] std::optional<Date> DateOf(CalendarDay day);
[[nodiscard]] CalendarDay DayOf(Date date);

}  // namespace customsconv

#endif  // CUSTOMSCONV_BASE_DATE_TIME_H_
