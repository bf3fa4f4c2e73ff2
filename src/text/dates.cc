#include "text/dates.h"

#include <algorithm>

#include "base/characters.h"
#include "base/short_text.h"
#include "text/char_set.h"
#include "text/date_format.h"

namespace customsconv {
namespace {

constexpr CharSet kLocalSeparator{"."};
constexpr CharSet kAllSeparators{kDateSeparators};

// Takes up to `most` digits off the front of `text`.
std::string_view TakeDigits(std::string_view& text, std::size_t most) {
  std::size_t size = 0;
  while (size < std::min(most, text.size()) && IsDigit(text[size])) ++size;
  const std::string_view digits = text.substr(0, size);
  text.remove_prefix(size);
  return digits;
}

bool TakeOne(std::string_view& text, const CharSet& set) {
  if (text.empty() || !set.Has(text.front())) return false;
  text.remove_prefix(1);
  return true;
}

int NumberOf(std::string_view digits) {
  int number = 0;
  for (const char c : digits) number = number * 10 + (c - '0');
  return number;
}

// The year that ends in `last_two` within the hundred years that begin fifty
// years before this one.
int FullYear(int last_two, int this_year) {
  const int first = this_year - 50;
  return first + ((last_two - first) % 100 + 100) % 100;
}

std::optional<Date> ParseDayMonthYear(std::string_view text, const CharSet& separators,
                                      int this_year) {
  text = Trim(text);
  const std::string_view day = TakeDigits(text, 2);
  if (day.empty() || !TakeOne(text, separators)) return std::nullopt;
  const std::string_view month = TakeDigits(text, 2);
  if (month.empty() || !TakeOne(text, separators)) return std::nullopt;
  const std::string_view year = TakeDigits(text, 4);
  if (year.empty() || year.size() == 3 || !text.empty()) return std::nullopt;
  const int number = NumberOf(year);
  return DateOf(
      {year.size() == 4 ? number : FullYear(number, this_year), NumberOf(month), NumberOf(day)});
}

}  // namespace

std::optional<Date> ParseLocalDate(std::string_view text, int this_year) {
  return ParseDayMonthYear(text, kLocalSeparator, this_year);
}

std::string LocalDateText(Date date) { return FormatDateTime("dd.mm.yyyy", date); }

Date TextToDate(std::string_view text, Date default_value, int this_year) {
  return ParseDayMonthYear(CutToShort(text), kAllSeparators, this_year).value_or(default_value);
}

bool MayBeRegistrationDay(Date day, Date today, EndDays end_days) {
  constexpr Date kDaysAhead = 400;
  const Date first = *DateOf({1990, 1, 1});
  const Date last = today + kDaysAhead;
  if (end_days == EndDays::kIncluded) return first <= day && day <= last;
  return first < day && day < last;
}

}  // namespace customsconv
