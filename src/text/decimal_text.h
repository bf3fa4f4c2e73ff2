#ifndef CUSTOMSCONV_TEXT_DECIMAL_TEXT_H_
#define CUSTOMSCONV_TEXT_DECIMAL_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/lifetime.h"

namespace customsconv {

// Real numbers as texts of decimal digits, which binary floating point never touches:
//
//   RoundDecimalText("2.675", 2)          "2.68"
//   UpToSixDecimals("12.5000")            "12.5"
//   ParseDecimal("12.5kg").bad_position   5
//
// What text/numbers.h reads as a real number is a number here, too.

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

// A sign, digits with at most one point and at least one digit, an exponent. The blanks around
// it (bytes up to 32: a value may stand on a line of its own) do not count.
[[nodiscard]] DecimalText ParseDecimal(std::string_view text CUSTOMSCONV_LIFETIME_BOUND);

// Place of the leading digit that is not 0, counted from the point: 1 for units,
// 2 for tens, 0 for tenths. Zero has none and gives the lowest place there is.
[[nodiscard]] std::int64_t LeadingPlace(const DecimalText& decimal);

// Rounding on the digits, halves away from zero. Any text that is no number counts as 0.
// Always `decimals` digits behind the point; none and no point for 0 and less. A result of
// zero has no sign: "-0.001" gives "0.00".
[[nodiscard]] std::string RoundDecimalText(std::string_view text, int decimals);
// The pattern "0.######": as RoundDecimalText with six decimals, trailing zeros
// and a bare point removed.
[[nodiscard]] std::string UpToSixDecimals(std::string_view text);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_DECIMAL_TEXT_H_
