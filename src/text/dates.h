#ifndef CUSTOMSCONV_TEXT_DATES_H_
#define CUSTOMSCONV_TEXT_DATES_H_

#include <optional>
#include <string>
#include <string_view>

#include "base/date_time.h"

namespace customsconv {

// Dates in the local short format, which is fixed here: day, month and year with "." between.
//
//   const std::optional<Date> day = ParseLocalDate(" 5.3.09", clock.ThisYear());
//   if (!day) return "no date";
//   return LocalDateText(*day);  // "05.03.2009"
//
// Other ways to write a date: text/date_format.h (by a format), text/date_forms.h (by the
// positions of the characters), text/date_finder.h (inside other text).

inline constexpr char kDateSeparator = '.';
inline constexpr std::string_view kDateSeparators = "-./";
[[nodiscard]] constexpr bool IsDateSeparator(char c) {
  return kDateSeparators.find(c) != std::string_view::npos;
}

// Day and month of one or two digits, the year of one, two or four, separated by ".", which
// the calendar holds; blanks around the whole do not count. A year of one or two digits falls
// into the hundred years that begin fifty years before `this_year`, so that a date read from a
// table ("31.12.95") is written back as the same date.
[[nodiscard]] std::optional<Date> ParseLocalDate(std::string_view text, int this_year);
// dd.mm.yyyy
[[nodiscard]] std::string LocalDateText(Date date);

// Short text. "-" and "/" count as the local separator, then ParseLocalDate;
// `default_value` when that fails.
[[nodiscard]] Date TextToDate(std::string_view text, Date default_value, int this_year);

// A declaration is registered between 1 January 1990 and 400 days after today. The rules that ask
// this differ: the header rule of the tables does not count the two end days, and its today is
// the date that the run keeps; a compact date is checked with them, by the clock.
enum class EndDays { kExcluded, kIncluded };
[[nodiscard]] bool MayBeRegistrationDay(Date day, Date today, EndDays end_days);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_DATES_H_
