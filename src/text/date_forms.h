#ifndef CUSTOMSCONV_TEXT_DATE_FORMS_H_
#define CUSTOMSCONV_TEXT_DATE_FORMS_H_

#include <optional>
#include <string>
#include <string_view>

#include "base/date_time.h"

namespace customsconv {

// Texts of dates, brought from one form into another by the positions of their characters:
//
//   DottedFromYearFirst("2015-06-11")     "11.06.2015"
//   DottedFromDayFirst("11/06/15")        "11.06.15"
//   DottedFromDigits("110615")            "11.06.15"
//   SixDigitsFromYearFirst("2015-06-11")  "110615"
//   TableDigits(date)                     "20150611"
//
// What stands in the place of the day becomes the day, digits or not: whether the result is a
// date is for ParseLocalDate (text/dates.h) to say. No form takes blanks around the text.

// ---- with separators ("." in the results, anything in the arguments)

// YYYY?MM?DD: ten characters.
[[nodiscard]] std::string DottedFromYearFirst(std::string_view text);
[[nodiscard]] std::string SixDigitsFromYearFirst(std::string_view text);
// DD?MM? and whatever stands behind: six characters at least.
[[nodiscard]] std::string DottedFromDayFirst(std::string_view text);
// Characters 1 and 2, 4 and 5, and the last two of a text of two characters or more.
[[nodiscard]] std::string SixDigitsFromDayFirst(std::string_view text);
// The last two characters of each of the first three words of a date (split at "-", "."
// and "/"), joined: "17.03.2026" gives "170326"; with four-digit years "17032026".
[[nodiscard]] std::string CompactDate(std::string_view text, bool four_digit_year);

// ---- digits alone

// DDMMYY, DDMMYYYY, or DDMMY, whose year gets the digit `decade` in front; empty for
// other sizes.
[[nodiscard]] std::string DottedFromDigits(std::string_view digits, char decade = '0');
// DDMMYYYY without its century; what has another size stays as it is.
[[nodiscard]] std::string WithoutCentury(std::string_view digits);
// YYYYMMDD to DDMMYY: eight characters.
[[nodiscard]] std::string SixDigitsFromTable(std::string_view digits);
// YYYYMMDD to DD.MM.YY. What a shorter text lacks is missing in the result.
[[nodiscard]] std::string DottedFromTable(std::string_view digits);

// YYYYMMDD to the day; empty for anything else and for what the calendar does not hold.
[[nodiscard]] std::optional<Date> DateOfTableDigits(std::string_view digits);

// ---- of a date

// YYYYMMDD, as tables hold it.
[[nodiscard]] std::string TableDigits(Date date);
// YYYY-MM-DD, as XML writes it.
[[nodiscard]] std::string XmlDateText(Date date);
// DDMMYYYY, DDMMYY or DDMMY, by the digits (4, 2 or 1) that the year gets.
[[nodiscard]] std::string CompactDateText(Date date, int year_digits);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_DATE_FORMS_H_
