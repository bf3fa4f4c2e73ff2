#ifndef CUSTOMSCONV_TEXT_NUMBERS_H_
#define CUSTOMSCONV_TEXT_NUMBERS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace customsconv {

// Numbers and flags as texts, read and written without the C locale:
//
//   double price = 0;
//   if (!TextToFloat("\r\n  12.50\r\n", price)) return "no number";  // 12.5
//   const int row = IntOr(word, 1);                                   // 1 for what is none
//   if (StrToBoolRu(" да ")) ...
//
// The blanks around a number (bytes up to 32) do not count: a value may stand on a line of
// its own. To round what is written, see text/decimal_text.h.

// A platform integer literal: an optional sign, decimal digits or hexadecimal behind "$", "x" or
// "0x", within 32 bits (hexadecimal fills all 32, so "$FFFFFFFF" is -1). On failure `value` holds
// the position (from 1) of the first bad character, which is one past the end when the text stops
// too early.
[[nodiscard]] bool TextToInt(std::string_view text, std::int32_t& value);
// A real number with "." as decimal separator and an optional exponent; what `value` cannot
// hold is refused. `value` on failure as above.
[[nodiscard]] bool TextToFloat(std::string_view text, double& value);
[[nodiscard]] bool TextToFloat(std::string_view text, long double& value);
[[nodiscard]] std::optional<std::int32_t> ParseInt(std::string_view text);
[[nodiscard]] std::int32_t IntOr(std::string_view text, std::int32_t default_value);
// Throws ConversionError.
[[nodiscard]] std::int32_t StrictInt(std::string_view text);

// The first number found in the text (short text): from the first digit on (a "-" counts only as
// the first character of the text), digits and at most one ".". 0 when nothing can be read.
[[nodiscard]] double NumberFromText(std::string_view text);

// An optional leading "$" or "#", then hexadecimal digits of either case; 0 for anything else.
// Digits beyond 32 bits keep the low ones.
[[nodiscard]] std::uint32_t HexToInt(std::string_view text);

// Trimmed and upper-cased, true for exactly "1", "Y", "YES", "TRUE", "ДА", "-1".
[[nodiscard]] bool StrToBoolRu(std::string_view text);

// A computed number as text for RoundDecimalText and UpToSixDecimals, with an exponent. It is
// rounded to 18 digits, so that amounts show none of the binary noise of their computation.
// Infinities and not-a-numbers give texts that are no numbers.
[[nodiscard]] std::string NumberText(long double value);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_NUMBERS_H_
