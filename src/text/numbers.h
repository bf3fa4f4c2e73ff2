#ifndef CUSTOMSCONV_TEXT_NUMBERS_H_
#define CUSTOMSCONV_TEXT_NUMBERS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace customsconv {

// The first number found in the text (short text): from the first digit on (a
// "-" counts only as the first character of the text), digits and at most one ".".
// 0 when nothing can be read.
[[nodiscard]] double NumberFromText(std::string_view text);

// A platform integer literal: blanks before it, an optional sign, decimal digits
// or hexadecimal behind "$", "x" or "0x", within 32 bits (hexadecimal fills all 32, so
// "$FFFFFFFF" is -1); trailing blanks are removed first.
// On failure `value` holds the position (from 1) of the first bad character, which is
// one past the end when the text stops too early.
[[nodiscard]] bool TextToInt(std::string_view text, std::int32_t& value);
// A real number with "." as decimal separator, blanks before it and an optional
// exponent; what a double cannot hold is refused. `value` on failure as above.
[[nodiscard]] bool TextToFloat(std::string_view text, double& value);
[[nodiscard]] std::optional<std::int32_t> ParseInt(std::string_view text);
[[nodiscard]] std::int32_t IntOr(std::string_view text, std::int32_t default_value);
// Throws ConversionError.
[[nodiscard]] std::int32_t StrictInt(std::string_view text);

// An optional leading "$" or "#", then hexadecimal digits of either case; 0 for anything else.
// Digits beyond 32 bits keep the low ones.
[[nodiscard]] std::uint32_t HexToInt(std::string_view text);

// Trimmed and upper-cased, true for exactly "1", "Y", "YES", "TRUE", "ДА", "-1".
[[nodiscard]] bool StrToBoolRu(std::string_view text);

// Rounding of a decimal text on its digits, halves away from zero, never
// through binary floating point: "2.675" with 2 decimals gives "2.68". Takes what
// TextToFloat accepts (an exponent included), any other text counts as 0. Always
// `decimals` digits behind the point; none and no point for 0 and less. A result of
// zero has no sign: "-0.001" gives "0.00".
[[nodiscard]] std::string RoundDecimalText(std::string_view text, int decimals);
// The pattern "0.######": as RoundDecimalText with six decimals, trailing zeros
// and a bare point removed.
[[nodiscard]] std::string UpToSixDecimals(std::string_view text);
// A computed number as text for the two functions above: the shortest text that
// reads back as the same number, with an exponent only below 0.00001 and from
// 1000000000000000 on. Infinities and not-a-numbers give texts that are no numbers.
[[nodiscard]] std::string NumberText(double value);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_NUMBERS_H_
