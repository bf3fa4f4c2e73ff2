#ifndef CUSTOMSCONV_TEXT_DATE_FORMAT_H_
#define CUSTOMSCONV_TEXT_DATE_FORMAT_H_

#include <optional>
#include <string>
#include <string_view>

#include "base/date_time.h"
#include "base/error.h"

namespace customsconv {

// Moments read and written by a format:
//
//   TextToDateTimeFmt("yyyy-mm-dd", "2009-03-05")       that day; throws where there is none
//   TextToDateFmtDef("dd-mm-yyyy", "31-02-2009", 0)     0
//   FormatDateTime("dd.mm.yyyy hh:nn", clock.Now())     "05.03.2009 09:30"
//
// A format is made of runs of d, m, y, h, n (minutes) and s in either letter case, and of other
// characters between them.

class InvalidDateError : public Error {
 public:
  InvalidDateError() : Error("Invalid date/time") {}
};

// Reads position by position: a run takes its two characters (three of "mmm", four of "yyyy"),
// every other character of the format passes over one of the text, and what stands behind the last
// of the format does not matter. Numbers are digits, blanks before them allowed. Two digits of a
// year below 50 mean 2000 and more, others 1900 and more. Empty when that gives no date.
[[nodiscard]] std::optional<DateTime> ParseDateTimeFmt(std::string_view format,
                                                       std::string_view text);
// The same, throws InvalidDateError.
[[nodiscard]] DateTime TextToDateTimeFmt(std::string_view format, std::string_view text);
// The same, `default_value` instead of any error.
[[nodiscard]] DateTime TextToDateFmtDef(std::string_view format, std::string_view text,
                                        DateTime default_value);

// Writes d, dd, m, mm, yy, yyyy, h, hh, n, nn, s and ss runs; other characters stand for
// themselves. Seconds are cut, not rounded.
[[nodiscard]] std::string FormatDateTime(std::string_view format, DateTime moment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_DATE_FORMAT_H_
