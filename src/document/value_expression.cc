// A concatenation is split into groups, a group into terms; CALC puts values in place of names and
// has the formula evaluated.

#include "document/value_expression.h"

#include <array>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "document/document.h"
#include "document/formula.h"
#include "text/blanks.h"
#include "text/date_format.h"
#include "text/dates.h"
#include "text/decimal_text.h"
#include "text/numbers.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr char kCr = '\r';
constexpr CharSet kGroupSeparators("\\{}");
constexpr CharSet kTermSeparators("+");
constexpr CharSet kArgumentSeparators("(,)");
constexpr CharSet kFormulaSigns("%()*+-/");

constexpr std::array<std::string_view, 12> kMonthNames = {
    "ЯНВАРЯ"_cp1251,   "ФЕВРАЛЯ"_cp1251, "МАРТА"_cp1251,  "АПРЕЛЯ"_cp1251,
    "МАЯ"_cp1251,      "ИЮНЯ"_cp1251,    "ИЮЛЯ"_cp1251,   "АВГУСТА"_cp1251,
    "СЕНТЯБРЯ"_cp1251, "ОКТЯБРЯ"_cp1251, "НОЯБРЯ"_cp1251, "ДЕКАБРЯ"_cp1251};

bool IsNumberFromZero(std::string_view text) {
  long double value = 0;
  return TextToFloat(text, value) && value >= 0;
}

// The text of a literal without its quotes, "#" become CR; empty for another term.
std::optional<std::string> LiteralText(std::string_view term) {
  constexpr std::string_view kQuotes = "\"'`";
  if (term.back() != term.front() || kQuotes.find(term.front()) == std::string_view::npos) {
    return std::nullopt;
  }
  term.remove_prefix(1);
  if (!term.empty()) term.remove_suffix(1);
  return ReplaceChar(term, '#', kCr);
}

// A day, month or year as documents write them out.
std::string DatePart(std::string_view date, std::string_view part) {
  const std::vector<std::string_view> words = Words(Trim(date), kDateSeparators);
  if (words.size() != 3) return {};
  if (part == "DD") return words[0].size() < 3 ? std::string(words[0]) : std::string();
  if (part == "MM") {
    const std::int32_t month = IntOr(words[1], 0);
    if (month < 1 || month > 12) return {};
    return std::string(kMonthNames[static_cast<std::size_t>(month) - 1]);
  }
  if (part == "YY") return (words[2].size() == 2 ? "20" : "") + std::string(words[2]);
  return {};
}

// One evaluation over one document.
class Evaluation {
 public:
  Evaluation(TDocument& document, int goods_index, int mode)
      : document_(document), goods_index_(goods_index), mode_(mode) {}

  std::string Concatenation(std::string_view expression);
  std::string Calculation(std::string_view formula);

 private:
  enum class GroupStatus { kNoFields, kEmptyFields, kFilledFields };

  std::string Group(std::string_view group);
  std::string FieldTerm(std::string_view term);
  std::string ArgumentTerm(std::string_view term);
  std::optional<std::string> ValueOf(std::string_view name);
  std::string DateTerm(std::string_view term);
  std::string CopyTerm(std::string_view term);
  std::optional<std::string> PageTerm(std::string_view term) const;
  [[nodiscard]] std::string PageOf(long long goods) const;
  [[nodiscard]] std::string_view SeparatorBehind(std::string_view text) const {
    return text.empty() || text.ends_with(kCr) || mode_ == kNoBlanksBetweenPieces ? "" : " ";
  }

  TDocument& document_;
  int goods_index_;
  int mode_;
};

std::string Evaluation::Concatenation(std::string_view expression) {
  std::string result;
  for (const std::string_view group : WordsQuoted(expression, kGroupSeparators)) {
    // A group that is dropped still leaves its separator.
    const std::string text = Group(group);
    result += SeparatorBehind(result);
    result += text;
  }
  return result;
}

std::string Evaluation::Group(std::string_view group) {
  std::string text;
  GroupStatus status = GroupStatus::kNoFields;
  for (std::string_view term : WordsQuoted(group, kTermSeparators)) {
    term = Trim(term);
    if (term.empty()) continue;
    if (term == "#") {
      text += kCr;
      continue;
    }
    text += SeparatorBehind(text);
    if (const std::optional<std::string> literal = LiteralText(term)) {
      text += *literal;
      continue;
    }
    const std::string value = FieldTerm(term);
    text += value;
    if (!value.empty()) {
      status = GroupStatus::kFilledFields;
    } else if (status == GroupStatus::kNoFields) {
      status = GroupStatus::kEmptyFields;
    }
  }
  if (status == GroupStatus::kEmptyFields) text.clear();
  return text;
}

std::string Evaluation::FieldTerm(std::string_view term) {
  // What only the printed form could answer is empty: references and conditions.
  if (StartsWithRu(term, "REF(") || StartsWithRu(term, "IIF(")) return {};
  if (StartsWithRu(term, "DATE(")) return DateTerm(term);
  if (StartsWithRu(term, "COPY(")) return CopyTerm(term);
  if (std::optional<std::string> value = ValueOf(term)) return *value;
  if (std::optional<std::string> page = PageTerm(term)) return *page;
  const std::size_t point = term.find('.');
  if (point == std::string_view::npos || term.find('+') != std::string_view::npos) return {};
  const std::string date = ValueOf(term.substr(0, point)).value_or(std::string());
  return DatePart(date, UpperCaseRu(term.substr(point + 1)));
}

std::optional<std::string> Evaluation::ValueOf(std::string_view name) {
  const bool flatten = document_.FlattenLongText;
  document_.FlattenLongText = false;
  FieldValue value = document_.ReadFieldByName(name, goods_index_);
  if (value.field == nullptr) value = document_.ReadField(name);
  document_.FlattenLongText = flatten;
  if (value.field == nullptr) return std::nullopt;
  return StripControls(value.text, /*trim_end=*/true);
}

// A term inside DATE or COPY: a literal or a field.
std::string Evaluation::ArgumentTerm(std::string_view term) {
  term = Trim(term);
  if (term.empty()) return {};
  if (std::optional<std::string> literal = LiteralText(term)) return *literal;
  return FieldTerm(term);
}

// DATE(format,term)
std::string Evaluation::DateTerm(std::string_view term) {
  const std::vector<std::string_view> words = Words(term, kArgumentSeparators);
  if (words.size() < 3) return {};
  const std::string value = ArgumentTerm(words[2]);
  const std::optional<Date> date = ParseLocalDate(value, document_.environment().ThisYear());
  return date ? FormatDateTime(words[1], *date) : std::string();
}

// COPY(term,start,length)
std::string Evaluation::CopyTerm(std::string_view term) {
  const std::vector<std::string_view> words = Words(term, kArgumentSeparators);
  if (words.size() < 4) return {};
  const std::string value = ArgumentTerm(words[1]);
  const auto start = static_cast<std::size_t>(std::max(IntOr(words[2], 0), 1)) - 1;
  const auto length = static_cast<std::size_t>(std::max(IntOr(words[3], 0), 0));
  return start < value.size() ? value.substr(start, length) : std::string();
}

// Page numbers of the printed form, counted from how many goods a page takes.
std::optional<std::string> Evaluation::PageTerm(std::string_view term) const {
  if (SameTextRu(term, "&&PAGE")) return PageOf(goods_index_);
  if (SameTextRu(term, "&&ALLPAGE")) return PageOf(document_.MainRecordCount());
  return std::nullopt;
}

std::string Evaluation::PageOf(long long goods) const {
  const TDocInfo& info = document_.DocInfo();
  const long long on_extra_page = info.BlocksOnExtraPage;
  if (on_extra_page == 0) return "1";
  return std::to_string((on_extra_page + goods - info.BlocksOnMainPage) / on_extra_page + 1);
}

// A field's value replaces the first place in the formula that reads like its name.
// That is the name's own place, unless the name could be a piece of a number.
void ReplaceName(std::string& formula, std::string_view name, std::string_view value) {
  const bool like_a_number = name.find_first_not_of("0123456789.eE ") == std::string_view::npos;
  const std::size_t earlier = like_a_number ? formula.find(name) : std::string::npos;
  if (earlier == std::string::npos) {
    formula += value;
  } else {
    formula.replace(earlier, name.size(), value);
    formula += name;
  }
}

std::string Evaluation::Calculation(std::string_view formula) {
  std::string numbers;  // the formula with values in place of names
  for (std::size_t i = 0; i < formula.size();) {
    if (kFormulaSigns.Has(formula[i])) {
      numbers += formula[i++];
      continue;
    }
    const std::size_t start = i;
    while (i < formula.size() && !kFormulaSigns.Has(formula[i])) ++i;
    const std::string_view token = formula.substr(start, i - start);
    if (Trim(token).empty() || IsNumberFromZero(token)) {
      numbers += token;
      continue;
    }
    const std::string value = FieldTerm(Trim(token));
    if (!IsNumberFromZero(value)) return {};
    ReplaceName(numbers, token, value);
  }
  const FormulaResult result = EvaluateFormula(numbers);
  if (result.error || result.value == 0) return {};
  return UpToSixDecimals(NumberText(result.value));
}

}  // namespace

std::string GetFieldValue(TDocument& document, std::string_view expression, int goods_index,
                          int mode) {
  constexpr std::string_view kCalculation = "CALC(";
  const auto holds = [expression](char c) { return expression.find(c) != std::string_view::npos; };
  if (holds('\\') && !holds('+')) {
    FieldValue value = document.ReadFieldEx(expression);
    if (value.field != nullptr) return std::move(value.text);
  }
  Evaluation evaluation(document, goods_index, mode);
  if (!StartsWithRu(expression, kCalculation)) return evaluation.Concatenation(expression);
  expression.remove_prefix(kCalculation.size());
  return evaluation.Calculation(
      expression.substr(0, expression.size() - (expression.empty() ? 0 : 1)));
}

}  // namespace customsconv
