#include "xml/write/value_format.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "base/characters.h"
#include "base/date_time.h"
#include "text/blanks.h"
#include "text/date_forms.h"
#include "text/dates.h"
#include "text/decimal_text.h"
#include "text/numbers.h"
#include "text/xml_escape.h"
#include "xml/write/structured_value.h"

namespace customsconv {
namespace {

constexpr std::size_t kMostDecimals = 6;
constexpr std::size_t kMostPlainDigits = 15;
// A point at this offset or behind it: the number has more digits than a
// floating point number is trusted with, so its text is handed on.
constexpr std::size_t kLongNumberPoint = 9;

std::size_t CountDigits(std::string_view text) {
  return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsDigit) -
                                  text.begin());
}

// The text without zeros behind its last decimal, when it is digits with at most six
// decimals and no needless zero in front: most numbers are, and need no more.
std::optional<std::string_view> PlainNumber(std::string_view text CUSTOMSCONV_LIFETIME_BOUND) {
  const std::size_t whole = CountDigits(text);
  if (whole == 0 || whole > kMostPlainDigits || (text[0] == '0' && whole > 1)) return std::nullopt;
  if (whole == text.size()) return text;
  if (whole >= kLongNumberPoint) return std::nullopt;
  const std::string_view fraction = text.substr(whole + 1);
  if (text[whole] != '.' || fraction.empty() || fraction.size() > kMostDecimals ||
      CountDigits(fraction) != fraction.size()) {
    return std::nullopt;
  }
  while (text.back() == '0') text.remove_suffix(1);
  if (text.back() == '.') text.remove_suffix(1);
  return text;
}

// The first of the accepted forms that the text's length allows.
std::optional<std::string> RebuiltDate(std::string_view text) {
  if (text.size() == 10) return DottedFromDayFirst(text);
  if (text.size() == 8 && IsDateSeparator(text[2]) && IsDateSeparator(text[5])) {
    return DottedFromDayFirst(text);
  }
  if (text.size() == 6 || text.size() == 8) return DottedFromDigits(text);
  return std::nullopt;
}

}  // namespace

std::string_view ValueFormatter::Keep(std::string text) {
  kept_ = std::move(text);
  return kept_;
}

std::string_view ValueFormatter::Format(const TFieldInfo& field, std::string_view raw) {
  if (raw.empty()) return {};
  switch (field.type) {
    case FieldType::kMarkup:
      return raw;
    case FieldType::kComposite:
      return Keep(StructuredValue(field, raw));
    case FieldType::kNumber:
      return Number(raw);
    case FieldType::kString:
    case FieldType::kCharacter:
    case FieldType::kText:
      return Escaped(raw);
    case FieldType::kLogical:
      return StrToBoolRu(raw) ? "true" : "false";
    case FieldType::kDate:
      return DateText(raw);
    default:
      return {};
  }
}

std::string_view ValueFormatter::Escaped(std::string_view raw) {
  const auto needs_escape = [](char c) {
    return (static_cast<unsigned char>(c) < 32 && c != '\r') || c == '<' || c == '>' || c == '&';
  };
  return std::none_of(raw.begin(), raw.end(), needs_escape) ? raw : Keep(XmlEscape(raw));
}

std::string_view ValueFormatter::Number(std::string_view raw) {
  if (const auto plain = PlainNumber(raw)) return *plain;
  std::string text = ReplaceChar(Trim(raw), ',', '.');
  double value = 0;
  if (!TextToFloat(text, value)) return "0";
  const std::size_t point = text.find('.');
  if (point == std::string::npos || point < kLongNumberPoint || value == 0) {
    return Keep(UpToSixDecimals(text));
  }
  std::size_t zeros = 0;
  while (text.size() - zeros >= 3 && text[zeros] == '0' && text[zeros + 1] != '.') ++zeros;
  text.erase(0, zeros);
  return Keep(std::move(text));
}

std::string_view ValueFormatter::DateText(std::string_view raw) {
  std::optional<Date> date = ParseLocalDate(raw, this_year_);
  if (!date) {
    const std::optional<std::string> rebuilt = RebuiltDate(Trim(raw));
    if (rebuilt) date = ParseLocalDate(*rebuilt, this_year_);
  }
  return date ? Keep(XmlDateText(*date)) : std::string_view();
}

}  // namespace customsconv
