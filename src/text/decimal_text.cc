#include "text/decimal_text.h"

#include <limits>

#include "text/blanks.h"

namespace customsconv {
namespace {

constexpr std::int64_t kExponentBound = 1'000'000'000'000'000;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

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

}  // namespace

DecimalText ParseDecimal(std::string_view text) {
  Scanner scanner(TrimRight(text));
  while (scanner.Accept(' ')) {
  }
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
  if (const std::size_t zeros = decimal.whole.find_first_not_of('0'); zeros != std::string::npos) {
    return size(decimal.whole.substr(zeros)) + decimal.exponent;
  }
  const std::size_t zeros = decimal.fraction.find_first_not_of('0');
  if (zeros == std::string::npos) return std::numeric_limits<std::int64_t>::min();
  return decimal.exponent - static_cast<std::int64_t>(zeros);
}

}  // namespace customsconv
