#ifndef CUSTOMSCONV_TEXT_DECIMAL_TEXT_H_
#define CUSTOMSCONV_TEXT_DECIMAL_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace customsconv {

// The parts of a real number as it is written, all views into the text. A part
// that is not written is empty.
struct DecimalText {
  std::string_view number;    // from the first digit or point on, exponent included
  std::string_view whole;     // digits before the point
  std::string_view fraction;  // digits behind it
  std::int64_t exponent = 0;  // beyond +-10^15: that bound
  bool negative = false;

  // 0 when the whole text is a number, else the position (from 1) of the first
  // character that is out of place.
  std::size_t bad_position = 0;
};

// Blanks, a sign, digits with at most one point and at least one digit, an
// exponent; trailing blanks do not count.
[[nodiscard]] DecimalText ParseDecimal(std::string_view text);

// Place of the leading digit that is not 0, counted from the point: 1 for units,
// 2 for tens, 0 for tenths. Zero has none and gives the lowest place there is.
[[nodiscard]] std::int64_t LeadingPlace(const DecimalText& decimal);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_DECIMAL_TEXT_H_
