#include "validation/formats/field_form.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "base/code_pages.h"
#include "base/cp1251_literal.h"
#include "validation/schema/facets.h"
#include "validation/schema/value_pattern.h"

namespace customsconv {
namespace {

using schema::SimpleType;

// Up to this many characters a text is a line: a name, a number, a code.
constexpr int kLine = 50;
constexpr int kWidthOfUnlimited = 250;
constexpr int kMostWidth = 32767;
constexpr int kLinesOfUnlimited = 99;
constexpr int kUsualDigits = 15;
// Numbers are written back to XML with at most so many decimals.
constexpr int kMostDecimals = 6;

constexpr std::pair<std::string_view, int> kDigitsOfIntegers[] = {
    {"byte", 3}, {"unsignedByte", 3}, {"short", 5}, {"unsignedShort", 5},
    {"int", 10}, {"unsignedInt", 10}, {"long", 19}, {"unsignedLong", 20}};

// Nothing but its length limits the text.
bool IsFreeText(const SimpleType& type) {
  const bool text = type.built_in == "string" || type.built_in == "normalizedString" ||
                    type.built_in == "token" || type.variety != SimpleType::Variety::kAtomic;
  return text && type.patterns.empty() && type.enumeration.empty();
}

// Digits in front of the point of the largest number.
std::optional<int> DigitsOf(const std::optional<std::string>& limit) {
  if (!limit) return std::nullopt;
  const std::string_view text = *limit;
  const std::size_t start = text.find_first_of("123456789");
  if (start == text.npos) return 1;
  return static_cast<int>(std::min(text.find('.'), text.size()) - start);
}

int DigitsOf(const SimpleType& type) {
  if (type.total_digits) return *type.total_digits;
  const std::optional<int> most =
      type.max_inclusive ? DigitsOf(type.max_inclusive) : DigitsOf(type.max_exclusive);
  if (most) return std::max(*most, 1);
  for (const auto& [name, digits] : kDigitsOfIntegers) {
    if (type.built_in == name) return digits;
  }
  return kUsualDigits;
}

FieldForm NumberForm(const SimpleType& type) {
  FieldForm form;
  form.format = "N" + std::to_string(DigitsOf(type));
  if (IsInteger(type)) return form;
  const int decimals = type.fraction_digits.value_or(kMostDecimals);
  if (decimals > 0) form.format += "." + std::to_string(std::min(decimals, kMostDecimals));
  if (!type.fraction_digits || decimals > kMostDecimals) {
    form.losses.emplace_back("больше шести знаков после запятой не выгружается"_cp1251);
  }
  return form;
}

// The patterns as one expression: every group of them must match.
std::optional<std::string> ExpressionOf(const SimpleType& type) {
  std::vector<std::string> groups;
  for (const std::vector<std::string>& group : type.patterns) {
    std::string expression;
    std::size_t branches = group.size();
    for (const std::string& text : group) {
      const auto pattern = schema::ValuePattern::Parse(text);
      if (!pattern) return std::nullopt;
      if (!expression.empty()) expression += '|';
      expression += pattern->PerlExpression();
      branches = std::max(branches, pattern->At(pattern->root()).parts.size());
    }
    groups.push_back(branches > 1 ? "(" + expression + ")" : expression);
  }
  std::string all = "^";
  for (std::size_t i = 0; i + 1 < groups.size(); ++i) all.append("(?=" + groups[i] + "$)");
  return all + groups.back() + "$";
}

void AddPattern(const SimpleType& type, FieldForm& form) {
  if (type.patterns.empty()) return;
  if (const auto expression = ExpressionOf(type)) {
    form.pattern = *expression;
    return;
  }
  std::string loss("шаблон схемы не перенесен: "_cp1251);
  for (const std::string& text : type.patterns.back()) {
    loss.append(ToWindows(text, CodePage::kUtf8)).append(" ");
  }
  loss.pop_back();
  form.losses.push_back(std::move(loss));
}

void AddEnumeration(const SimpleType& type, FieldForm& form) {
  constexpr std::size_t kMostShown = 20;
  if (type.enumeration.empty()) return;
  std::string values("значения: "_cp1251);
  for (std::size_t i = 0; i < type.enumeration.size(); ++i) {
    if (i > 0) values += ", ";
    if (i == kMostShown) {
      values.append("... (всего "_cp1251).append(std::to_string(type.enumeration.size())) += ')';
      break;
    }
    values += ToWindows(type.enumeration[i], CodePage::kUtf8);
  }
  form.losses.push_back(std::move(values));
}

int WidthOf(const SimpleType& type, FieldForm& form) {
  const std::optional<int> most = MostCharacters(type);
  if (!most) {
    form.losses.emplace_back("длина схемой не ограничена"_cp1251);
    return kWidthOfUnlimited;
  }
  return std::clamp(*most, 1, kMostWidth);
}

}  // namespace

bool IsLongText(const SimpleType& type) {
  return IsFreeText(type) && MostCharacters(type).value_or(kMostWidth) > kLine;
}

FieldForm FormOf(const SimpleType& type) {
  FieldForm form;
  if (IsNumber(type) && type.patterns.empty()) {  // else its zeros in front may count
    form = NumberForm(type);
  } else if (IsLogical(type)) {
    form.format = "L";
  } else if (IsDate(type)) {
    form.format = "D";
  } else if (IsBinary(type)) {
    form.format = "Y";
    form.losses.emplace_back("вложение (base64) не выгружается"_cp1251);
  } else {
    form.format = (IsLongText(type) ? "" : "C") + std::to_string(WidthOf(type, form));
    AddPattern(type, form);
  }
  AddEnumeration(type, form);
  return form;
}

FieldForm GatheredFormOf(const SimpleType& type, int most_values) {
  FieldForm form;
  const int width = WidthOf(type, form);
  const int lines = std::min({most_values, kLinesOfUnlimited, kMostWidth / width});
  form.format = "C" + std::to_string(width) + "X" + std::to_string(std::max(lines, 1));
  AddEnumeration(type, form);
  return form;
}

}  // namespace customsconv
