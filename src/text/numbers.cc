#include "text/numbers.h"

#include <array>
#include <charconv>
#include <limits>

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "base/letter_case.h"
#include "base/short_text.h"
#include "text/blanks.h"
#include "text/decimal_text.h"

namespace customsconv {
namespace {

// Value of a hexadecimal digit of either case, 16 for any other character.
constexpr unsigned HexDigit(char c) {
  if (IsDigit(c)) return static_cast<unsigned>(c - '0');
  const char upper = UpperCaseLatinChar(c);
  return upper >= 'A' && upper <= 'F' ? static_cast<unsigned>(upper - 'A' + 10) : 16;
}

// Length of the prefix that announces hexadecimal digits, 0 for decimal ones.
std::size_t HexPrefixSize(std::string_view digits) {
  const auto is_x = [](char c) { return c == 'x' || c == 'X'; };
  if (digits.empty()) return 0;
  if (digits[0] == '$' || is_x(digits[0])) return 1;
  return digits[0] == '0' && digits.size() > 1 && is_x(digits[1]) ? 2 : 0;
}

struct IntResult {
  std::int64_t magnitude = 0;
  std::size_t bad_offset = std::string_view::npos;
};

// The digits of `text` from `offset` on, up to a magnitude of `largest`.
IntResult ReadDigits(std::string_view text, std::size_t offset, unsigned base,
                     std::int64_t largest) {
  IntResult result;
  if (offset == text.size()) result.bad_offset = offset;
  for (; offset < text.size(); ++offset) {
    const unsigned digit = HexDigit(text[offset]);
    if (digit >= base || result.magnitude * base + digit > largest) {
      result.bad_offset = offset;
      break;
    }
    result.magnitude = result.magnitude * base + digit;
  }
  return result;
}

double DoubleOf(std::string_view digits) {
  double value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

template <typename Float>
bool ReadFloat(std::string_view text, Float& value) {
  const DecimalText decimal = ParseDecimal(text);
  if (decimal.bad_position != 0) {
    value = static_cast<Float>(decimal.bad_position);
    return false;
  }
  const std::string_view number = decimal.number;
  Float magnitude = 0;
  const auto [end, error] =
      std::from_chars(number.data(), number.data() + number.size(), magnitude);
  if (error == std::errc::result_out_of_range) {
    if (LeadingPlace(decimal) > 0) {
      value = static_cast<Float>(TrimRight(text).size());
      return false;
    }
    magnitude = 0;
  }
  value = decimal.negative ? -magnitude : magnitude;
  return true;
}

}  // namespace

double NumberFromText(std::string_view text) {
  text = CutToShort(text);
  std::size_t start = 0;
  while (start < text.size() && !IsDigit(text[start])) ++start;
  std::size_t end = start;
  for (bool point = false; end < text.size(); ++end) {
    if (text[end] == '.' && !point) {
      point = true;
    } else if (!IsDigit(text[end])) {
      break;
    }
  }
  const double value = DoubleOf(text.substr(start, end - start));
  return start == 1 && text[0] == '-' ? -value : value;
}

bool TextToInt(std::string_view text, std::int32_t& value) {
  text = TrimRight(text);
  std::size_t offset = 0;
  while (offset < text.size() && IsBlank(text[offset])) ++offset;
  const bool negative = offset < text.size() && text[offset] == '-';
  if (negative || (offset < text.size() && text[offset] == '+')) ++offset;
  IntResult result;
  if (const std::size_t prefix = HexPrefixSize(text.substr(offset)); prefix > 0) {
    result = ReadDigits(text, offset + prefix, 16, std::numeric_limits<std::uint32_t>::max());
  } else {
    const std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    result = ReadDigits(text, offset, 10, negative ? largest + 1 : largest);
  }
  if (result.bad_offset != std::string_view::npos) {
    value = static_cast<std::int32_t>(result.bad_offset + 1);
    return false;
  }
  value = static_cast<std::int32_t>(negative ? -result.magnitude : result.magnitude);
  return true;
}

bool TextToFloat(std::string_view text, double& value) { return ReadFloat(text, value); }
bool TextToFloat(std::string_view text, long double& value) { return ReadFloat(text, value); }

std::optional<std::int32_t> ParseInt(std::string_view text) {
  std::int32_t value = 0;
  if (!TextToInt(text, value)) return std::nullopt;
  return value;
}

std::int32_t IntOr(std::string_view text, std::int32_t default_value) {
  return ParseInt(text).value_or(default_value);
}

std::int32_t StrictInt(std::string_view text) {
  if (const auto value = ParseInt(text)) return *value;
  throw ConversionError(text);
}

std::uint32_t HexToInt(std::string_view text) {
  text = CutToShort(text);
  if (!text.empty() && (text.front() == '$' || text.front() == '#')) text.remove_prefix(1);
  std::uint32_t value = 0;
  for (const char c : text) {
    const unsigned digit = HexDigit(c);
    if (digit == 16) return 0;
    value = value << 4 | digit;
  }
  return value;
}

bool StrToBoolRu(std::string_view text) {
  text = TrimBlanks(text);
  for (const std::string_view word :
       {std::string_view("1"), std::string_view("Y"), std::string_view("YES"),
        std::string_view("TRUE"), "ДА"_cp1251, std::string_view("-1")}) {
    if (SameTextRu(text, word)) return true;
  }
  return false;
}

std::string NumberText(long double value) {
  // As many digits as the extended format of 64 bits keeps for sure.
  constexpr int kDigits = 18;
  static_assert(std::numeric_limits<long double>::digits10 >= kDigits);
  std::array<char, 64> buffer;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                    std::chars_format::scientific, kDigits - 1);
  return {buffer.data(), result.ptr};
}

}  // namespace customsconv
