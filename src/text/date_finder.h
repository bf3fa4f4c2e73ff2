#ifndef CUSTOMSCONV_TEXT_DATE_FINDER_H_
#define CUSTOMSCONV_TEXT_DATE_FINDER_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "text/char_set.h"

namespace customsconv {

// Finds dates inside other text.
//
//   DateSearch search;
//   search.this_year = clock.ThisYear();
//   ExtractDate(1, "Счет от 01.02.2024г. №5", search).text    "01.02.2024"
//   RemoveDate(1, text, search)                               leaves "Счет№5"
//
// A date is day, month and year with the same separator between: one or two digits, one or two,
// two or four. The calendar must hold the day.
struct DateSearch {
  CharSet separators{"-./"};
  // How many characters of the text are looked at, 0 for all.
  std::size_t limit = 0;
  // The characters around the date must not be letters or signs that make it
  // part of a number or name.
  bool strict = false;
  int this_year = 0;  // for two-digit years
};

struct FoundDate {
  std::string text;          // as written; empty when there is no such date
  std::size_t position = 0;  // from 1; 0 when there is none
};

// The n-th date (from 1).
[[nodiscard]] FoundDate ExtractDate(std::size_t n, std::string_view text, const DateSearch& search);
// The same, and cuts the date out of `text` together with the blanks, the year mark and the
// preposition that belong to it.
[[nodiscard]] FoundDate RemoveDate(std::size_t n, std::string& text, const DateSearch& search);
[[nodiscard]] std::size_t CountDates(std::string_view text, const DateSearch& search);
// The last date of the text, strict off.
[[nodiscard]] FoundDate ExtractLastDate(std::string_view text, std::size_t limit, int this_year);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_DATE_FINDER_H_
