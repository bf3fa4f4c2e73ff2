#ifndef CUSTOMSCONV_TEXT_DATES_H_
#define CUSTOMSCONV_TEXT_DATES_H_

#include <optional>
#include <string>
#include <string_view>

#include "base/date_time.h"
#include "base/error.h"

namespace customsconv {

// The local settings that the family runs under: day, month, year separated by ".".
inline constexpr char kDateSeparator = '.';
inline constexpr std::string_view kDateSeparators = "-./";

// A date in the local short format: day and month of one or two digits, the year
// of one, two or four, separated by "."; blanks allowed around the whole. Years of one
// or two digits fall into the hundred years that begin fifty years before `this_year`.
[[nodiscard]] std::optional<Date> ParseLocalDate(std::string_view text, int this_year);
// dd.mm.yyyy
[[nodiscard]] std::string LocalDateText(Date date);

// Short text. "-" and "/" count as the local separator, then ParseLocalDate;
// `default_value` when that fails.
[[nodiscard]] Date TextToDate(std::string_view text, Date default_value, int this_year);

class InvalidDateError : public Error {
 public:
  InvalidDateError() : Error("Invalid date/time") {}
};

// Reads `text` by a format of d, m, y, h, n and s runs ("yyyy-mm-dd"), letter case
// ignored; every other character of the format passes over one of the text, and what
// stands behind the last of the format does not matter. Numbers are digits, blanks before
// them allowed. Empty when that gives no date.
[[nodiscard]] std::optional<DateTime> ParseDateTimeFmt(std::string_view format,
                                                       std::string_view text);
// The same, throws InvalidDateError.
[[nodiscard]] DateTime TextToDateTimeFmt(std::string_view format, std::string_view text);
// The same, `default_value` instead of any error.
[[nodiscard]] DateTime TextToDateFmtDef(std::string_view format, std::string_view text,
                                        DateTime default_value);

// The moment by a format of d, dd, m, mm, yy, yyyy, h, hh, n, nn, s and ss runs (letter
// case ignored) and literal characters: what the run log, the numbering and DATE(...)
// write. Seconds are cut, not rounded.
[[nodiscard]] std::string FormatDateTime(std::string_view format, DateTime moment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_DATES_H_
