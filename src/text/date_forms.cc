#include "text/date_forms.h"

#include <algorithm>

#include "base/characters.h"
#include "base/lifetime.h"
#include "text/date_format.h"
#include "text/dates.h"
#include "text/words.h"

namespace customsconv {
namespace {

std::string Dotted(std::string_view day, std::string_view month, std::string_view year) {
  constexpr std::string_view kSeparator(&kDateSeparator, 1);
  return Join({day, kSeparator, month, kSeparator, year});
}

std::string_view LastTwo(std::string_view text CUSTOMSCONV_LIFETIME_BOUND) {
  return text.substr(text.size() - std::min<std::size_t>(text.size(), 2));
}

// Writes `number` into the places before `end`, where zeros stand.
void PutBefore(std::size_t end, int number, std::string& zeros) {
  for (; number > 0; number /= 10) zeros[--end] = static_cast<char>('0' + number % 10);
}

}  // namespace

std::string DottedFromYearFirst(std::string_view text) {
  return Dotted(text.substr(8, 2), text.substr(5, 2), text.substr(0, 4));
}

std::string SixDigitsFromYearFirst(std::string_view text) {
  return Join({text.substr(8, 2), text.substr(5, 2), text.substr(2, 2)});
}

std::string DottedFromDayFirst(std::string_view text) {
  return Dotted(text.substr(0, 2), text.substr(3, 2), text.substr(6));
}

std::string SixDigitsFromDayFirst(std::string_view text) {
  const std::string_view month = text.substr(std::min<std::size_t>(text.size(), 3), 2);
  return Join({text.substr(0, 2), month, LastTwo(text)});
}

std::string CompactDate(std::string_view text, bool four_digit_year) {
  std::string compact;
  for (std::size_t number = 1; number <= 3; ++number) {
    compact += LastTwo(ExtractWord(number, text, kDateSeparators));
  }
  if (four_digit_year && compact.size() == 6) compact.insert(4, "20");
  return compact;
}

std::string DottedFromDigits(std::string_view digits, char decade) {
  if (digits.size() != 5 && digits.size() != 6 && digits.size() != 8) return {};
  std::string dotted = Dotted(digits.substr(0, 2), digits.substr(2, 2), digits.substr(4));
  if (digits.size() == 5) dotted.insert(dotted.size() - 1, 1, decade);
  return dotted;
}

std::string WithoutCentury(std::string_view digits) {
  std::string text(digits);
  if (text.size() == 8) text.erase(4, 2);
  return text;
}

std::string SixDigitsFromTable(std::string_view digits) {
  return Join({digits.substr(6, 2), digits.substr(4, 2), digits.substr(2, 2)});
}

std::string DottedFromTable(std::string_view digits) {
  const auto part = [digits](std::size_t at) {
    return digits.substr(std::min(at, digits.size()), 2);
  };
  return Dotted(part(6), part(4), part(2));
}

std::optional<Date> DateOfTableDigits(std::string_view digits) {
  constexpr std::size_t kSize = 8;
  if (digits.size() != kSize || !AllDigits(digits)) return std::nullopt;
  int number = 0;
  for (const char c : digits) number = number * 10 + (c - '0');
  return DateOf({number / 10000, number / 100 % 100, number % 100});
}

std::string TableDigits(Date date) {
  const CalendarDay day = DayOf(date);
  std::string text = "00000000";
  PutBefore(8, day.year * 10000 + day.month * 100 + day.day, text);
  return text;
}

std::string XmlDateText(Date date) {
  const CalendarDay day = DayOf(date);
  std::string text = "0000-00-00";
  PutBefore(4, day.year, text);
  PutBefore(7, day.month, text);
  PutBefore(10, day.day, text);
  return text;
}

std::string CompactDateText(Date date, int year_digits) {
  if (year_digits == 4) return FormatDateTime("ddmmyyyy", date);
  std::string text = FormatDateTime("ddmmyy", date);
  if (year_digits == 1) text.erase(4, 1);
  return text;
}

}  // namespace customsconv
