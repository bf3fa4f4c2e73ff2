// Innermost parentheses first, each replaced by its value as text; what is left is flat.

#include "document/formula.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "text/blanks.h"
#include "text/decimal_text.h"
#include "text/numbers.h"

namespace customsconv {
namespace {

// How the value of a parenthesised part is written in its place.
constexpr std::size_t kPartWidth = 11;
constexpr int kPartDecimals = 5;
// Larger values are errors.
constexpr long double kLargest = std::numeric_limits<double>::max();

// A formula without parentheses is evaluated from its left to its right end.
class FlatFormula {
 public:
  explicit FlatFormula(std::string_view text) : text_(text) {}

  FormulaResult Evaluate() {
    FormulaResult sum = Product();
    while (position_ < text_.size()) {
      const char sign = text_[position_++];
      sum = Sum(sum, Product(), sign == '+' ? 1 : -1);
    }
    sum.error = error_ || !(std::fabs(sum.value) <= kLargest);
    return sum;
  }

 private:
  FormulaResult Product() {
    FormulaResult product = Number();
    while (position_ < text_.size() && (text_[position_] == '*' || text_[position_] == '/')) {
      const char sign = text_[position_++];
      FormulaResult factor = Number();
      if (factor.percent) factor.value /= 100;
      if (sign == '*') {
        product.value *= factor.value;
      } else if (factor.value == 0) {
        error_ = true;
      } else {
        product.value /= factor.value;
      }
    }
    return product;
  }

  FormulaResult Sum(const FormulaResult& left, const FormulaResult& right, int sign) {
    if (right.percent && !left.percent) return {left.value * (1 + sign * right.value / 100)};
    if (left.percent && !right.percent) error_ = true;
    return {left.value + sign * right.value, right.percent};
  }

  FormulaResult Number() {
    const std::size_t end = std::min(text_.find_first_of("+-*/", position_), text_.size());
    std::string_view number = Trim(text_.substr(position_, end - position_));
    position_ = end;
    FormulaResult result;
    if (number.ends_with('%')) {
      result.percent = true;
      number.remove_suffix(1);
    }
    if (!TextToFloat(number, result.value)) error_ = true;
    return result;
  }

  std::string_view text_;
  std::size_t position_ = 0;
  bool error_ = false;
};

// The text that stands for a parenthesised part.
std::string PartText(const FormulaResult& part) {
  std::string text = RoundDecimalText(NumberText(part.value), kPartDecimals);
  if (text.size() < kPartWidth) text.insert(0, kPartWidth - text.size(), ' ');
  if (part.percent) text += '%';
  return text;
}

constexpr FormulaResult kWrong{0, false, true};

}  // namespace

FormulaResult EvaluateFormula(std::string_view formula) {
  std::vector<std::string> levels(1);  // the text so far of each parenthesis that is open
  for (const char c : formula) {
    if (c == ' ') continue;
    if (c == '(') {
      levels.emplace_back();
    } else if (c == ')') {
      if (levels.size() == 1) return kWrong;
      const FormulaResult part = FlatFormula(levels.back()).Evaluate();
      if (part.error) return kWrong;
      levels.pop_back();
      levels.back() += PartText(part);
    } else {
      levels.back() += c;
    }
  }
  return levels.size() == 1 ? FlatFormula(levels.back()).Evaluate() : kWrong;
}

}  // namespace customsconv
