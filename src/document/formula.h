#ifndef CUSTOMSCONV_DOCUMENT_FORMULA_H_
#define CUSTOMSCONV_DOCUMENT_FORMULA_H_

#include <string_view>

namespace customsconv {

// Computed in the extended floating point format (64 bits of mantissa), which keeps
// amounts of 15 digits free of binary noise.
struct FormulaResult {
  long double value = 0;
  bool percent = false;  // the value is a percentage: "18%"
  bool error = false;    // the formula is wrong somewhere; the value means nothing
};

// Value of a formula of numbers (decimal point "."), "+", "-", "*", "/", parentheses and "%";
// blanks are ignored. "*" and "/" bind tighter than "+" and "-", equal ones go left to right.
// There are no signs: "-1" is an error. Adding or subtracting a percentage takes it of the left
// side: 100+18% is 118.
//
// A parenthesised part takes part with five decimals, and as text: what stands against its
// closing parenthesis joins its digits, and its minus sign becomes an operator.
//
// Linear in the length of the formula.
[[nodiscard]] FormulaResult EvaluateFormula(std::string_view formula);

}  // namespace customsconv

#endif  // CUSTOMSCONV_DOCUMENT_FORMULA_H_
