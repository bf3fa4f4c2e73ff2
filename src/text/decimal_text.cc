#include "text/decimal_text.h"

#include <algorithm>
#include <limits>

#include "base/characters.h"

namespace customsconv {
namespace {

constexpr std::int64_t kExponentBound = 1'000'000'000'000'000;

class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  [[nodiscard]] std::size_t position() const { return position_; }
  [[nodiscard]] bool AtEnd() const { return position_ == text_.size(); }
  [[nodiscard]] std::string_view Rest() const { return text_.substr(position_); }
  bool Accept(char c) {
    if (AtEnd() || text_[position_] != c) return false;
    ++position_;
    return true;
  }
  void SkipBlanks() {
    while (!AtEnd() && IsBlank(text_[position_])) ++position_;
  }
  // Skips a sign; true for a minus.
  bool AcceptSign() {
    if (Accept('-')) return true;
    Accept('+');
    return false;
  }
  std::string_view Digits() {
    const std::size_t start = position_;
    while (!AtEnd() && IsDigit(text_[position_])) ++position_;
    return text_.substr(start, position_ - start);
  }

 private:
  std::string_view text_;
  std::size_t position_ = 0;
};

std::int64_t BoundedNumber(std::string_view digits) {
  std::int64_t number = 0;
  for (const char c : digits) {
    if (number < kExponentBound) number = number * 10 + (c - '0');
  }
  return number < kExponentBound ? number : kExponentBound;
}

// The digits of a number as one row, read by their place from the point: place 1 is
// the units, 0 the tenths. Places that are not written hold "0".
class DigitRow {
 public:
  explicit DigitRow(const DecimalText& decimal)
      : decimal_(decimal),
        top_(static_cast<std::int64_t>(decimal.whole.size()) + decimal.exponent) {}

  [[nodiscard]] char At(std::int64_t place) const {
    const std::int64_t index = top_ - place;
    if (index < 0) return '0';
    const auto offset = static_cast<std::size_t>(index);
    if (offset < decimal_.whole.size()) return decimal_.whole[offset];
    const std::size_t behind_point = offset - decimal_.whole.size();
    return behind_point < decimal_.fraction.size() ? decimal_.fraction[behind_point] : '0';
  }

 private:
  const DecimalText& decimal_;
  std::int64_t top_;  // place of the first written digit
};

// Adds one to the last of the `digits`, carrying to the left.
void Increment(std::string& digits) {
  std::size_t i = digits.size();
  while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
  if (i == 0) {
    digits.insert(digits.begin(), '1');
  } else {
    ++digits[i - 1];
  }
}

// The largest double has 309 digits before the point.
constexpr std::int64_t kMostPlaces = 309;

}  // namespace

DecimalText ParseDecimal(std::string_view text) {
  Scanner scanner(TrimRight(text));
  scanner.SkipBlanks();
  DecimalText decimal;
  decimal.negative = scanner.AcceptSign();
  decimal.number = scanner.Rest();
  decimal.whole = scanner.Digits();
  if (scanner.Accept('.')) decimal.fraction = scanner.Digits();
  bool complete = !decimal.whole.empty() || !decimal.fraction.empty();
  if (complete && (scanner.Accept('e') || scanner.Accept('E'))) {
    const bool below_one = scanner.AcceptSign();
    const std::string_view digits = scanner.Digits();
    complete = !digits.empty();
    decimal.exponent = below_one ? -BoundedNumber(digits) : BoundedNumber(digits);
  }
  if (!complete || !scanner.AtEnd()) decimal.bad_position = scanner.position() + 1;
  return decimal;
}

std::int64_t LeadingPlace(const DecimalText& decimal) {
  const auto size = [](std::string_view part) { return static_cast<std::int64_t>(part.size()); };
  if (const std::size_t zeros = decimal.whole.find_first_not_of('0');
      zeros != std::string_view::npos) {
    return size(decimal.whole.substr(zeros)) + decimal.exponent;
  }
  const std::size_t zeros = decimal.fraction.find_first_not_of('0');
  if (zeros == std::string_view::npos) return std::numeric_limits<std::int64_t>::min();
  return decimal.exponent - static_cast<std::int64_t>(zeros);
}

std::string RoundDecimalText(std::string_view text, int decimals) {
  const std::int64_t last_place = 1 - static_cast<std::int64_t>(std::max(decimals, 0));
  DecimalText decimal = ParseDecimal(text);
  if (decimal.bad_position != 0 || LeadingPlace(decimal) > kMostPlaces) decimal = {};
  const DigitRow row(decimal);
  const std::int64_t first_place = std::max<std::int64_t>(LeadingPlace(decimal), 1);

  std::string result;
  for (std::int64_t place = first_place; place >= last_place; --place) result += row.At(place);
  if (row.At(last_place - 1) >= '5') Increment(result);

  const bool zero = result.find_first_not_of('0') == std::string::npos;
  if (decimals > 0) result.insert(result.size() - static_cast<std::size_t>(decimals), 1, '.');
  if (decimal.negative && !zero) result.insert(result.begin(), '-');
  return result;
}

std::string UpToSixDecimals(std::string_view text) {
  std::string result = RoundDecimalText(text, 6);
  result.resize(result.find_last_not_of('0') + 1);
  if (result.back() == '.') result.pop_back();
  return result;
}

}  // namespace customsconv
