#include "catalogue/field_line.h"

#include <cstdint>
#include <vector>

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "base/letter_case.h"
#include "base/lifetime.h"
#include "base/short_text.h"
#include "text/blanks.h"
#include "text/char_set.h"
#include "text/numbers.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr CharSet kNameDelimiters(" =");
constexpr CharSet kFormatDelimiters(" |");
constexpr CharSet kListDelimiters(",");
constexpr CharSet kPartDelimiters(";");
constexpr std::string_view kCaptionMark = " |";

constexpr std::int16_t kDateWidth = 10;
constexpr int kDefaultNumberWidth = 15;
constexpr int kDefaultWidth = 1;

std::string_view Before(std::string_view text CUSTOMSCONV_LIFETIME_BOUND, std::size_t position) {
  return text.substr(0, position);
}

std::string_view After(std::string_view text CUSTOMSCONV_LIFETIME_BOUND, std::size_t position) {
  return position == std::string_view::npos ? std::string_view{} : text.substr(position + 1);
}

// Numbers of the catalogue that do not fit keep their low bits.
std::uint8_t ByteOf(std::string_view number) { return static_cast<std::uint8_t>(IntOr(number, 0)); }
std::int16_t WidthOf(int number) { return static_cast<std::int16_t>(number); }

// Value of an attribute such as NAMESPACE="a:B", which is removed from `text`. Empty, and
// nothing is removed, when two quotes do not follow the key.
std::string TakeAttribute(std::string_view key, std::string& text) {
  const std::size_t start = text.find(key);
  if (start == std::string::npos) return {};
  const std::size_t open = text.find('"', start + key.size());
  if (open == std::string::npos) return {};
  const std::size_t close = text.find('"', open + 1);
  if (close == std::string::npos) return {};
  std::string value = text.substr(open + 1, close - open - 1);
  text.erase(start, close + 1 - start);
  return value;
}

void TakeFieldAttributes(std::string& caption, TFieldInfo& field) {
  field.pattern = TakeAttribute("PATTERN=", caption);
  field.xml_path = TakeAttribute("NAMESPACE=", caption);
  field.prnt = ByteOf(TakeAttribute("PRNT=", caption));
  field.seq = ByteOf(TakeAttribute("SEQ=", caption));
  field.choice = ByteOf(TakeAttribute("CHOICE=", caption));
  field.max = ByteOf(TakeAttribute("MAX=", caption));
}

// "10,20,30": a field of three lines.
void ApplyWidthList(std::string_view list, TFieldInfo& field) {
  for (const std::string_view word : Words(list, kListDelimiters)) {
    field.line_widths.push_back(static_cast<std::uint8_t>(IntOr(word, 1)));
  }
  field.lines = static_cast<std::int16_t>(field.line_widths.size());
  if (!field.line_widths.empty()) field.width = field.line_widths.back();
}

// "N15.2", "C20", "D", or a bare width.
void ApplyTypeAndWidth(std::string_view type_and_width, TFieldInfo& field) {
  if (const auto width = ParseInt(type_and_width)) {
    field.width = WidthOf(*width);
    return;
  }
  if (type_and_width.empty()) return;
  if (IsDigit(type_and_width[0])) {
    throw Error(std::string("Отсутствует пробел между длиной поля и описанием"_cp1251));
  }
  field.type = static_cast<FieldType>(type_and_width[0]);
  if (field.type == FieldType::kDate && field.xml_path.empty()) {
    field.width = kDateWidth;
    return;
  }
  const std::string_view sizes = type_and_width.substr(1);
  const std::size_t point = sizes.find('.');
  const int default_width = field.type == FieldType::kNumber ? kDefaultNumberWidth : kDefaultWidth;
  field.width = WidthOf(IntOr(Before(sizes, point), default_width));
  field.decimals = ByteOf(After(sizes, point));
  if (field.type == FieldType::kNumber && field.decimals > 0) {
    field.width = WidthOf(field.width + field.decimals + 1);
  }
}

std::string_view DigitsAtEnd(std::string_view text CUSTOMSCONV_LIFETIME_BOUND) {
  std::size_t start = text.size();
  while (start > 0 && IsDigit(text[start - 1])) --start;
  return text.substr(start);
}

}  // namespace

std::string NameInCase(std::string_view name, NameCase name_case) {
  return name_case == NameCase::kUpper ? UpperCaseLatin(name) : std::string(name);
}

FieldLine ParseFieldLine(std::string_view line, NameCase name_case) {
  FieldLine result;
  TFieldInfo& field = result.field;
  field.name = NameInCase(ExtractWord(1, line, kNameDelimiters), name_case);

  const std::size_t equals = line.find('=');
  std::string_view rest = equals == std::string_view::npos ? line : After(line, equals);
  std::string caption;
  std::size_t mark = rest.find(kCaptionMark);
  if (mark != std::string_view::npos) {
    ++mark;  // to the "|"
  } else if (!result.IsPart()) {
    mark = rest.find('|');
  }
  if (mark != std::string_view::npos) {
    caption = After(rest, mark);
    rest = Trim(Before(rest, mark));
  }
  TakeFieldAttributes(caption, field);
  field.caption = Trim(caption);

  // The blanks of a part's format belong to its prefix.
  if (!result.IsPart()) rest = TrimBlanks(rest);
  result.format = UpperCaseLatin(rest);
  return result;
}

TFieldInfo ParseBlockLine(std::string_view line) {
  TFieldInfo block;
  std::string text(line);
  block.pattern = TakeAttribute("PATTERN=", text);
  block.xml_path = TakeAttribute("NAMESPACE=", text);
  const std::size_t mark = text.find(kCaptionMark);
  if (mark != std::string::npos) block.caption = Trim(After(text, mark + 1));
  return block;
}

void ApplyFormat(std::string_view format, TFieldInfo& field) {
  const std::size_t times = format.find('X');
  if (times != std::string_view::npos) {
    const std::string_view lines = After(format, times);
    field.lines = WidthOf(IntOr(Before(lines, lines.find('X')), 1));
    format = Before(format, times);
  }
  if (format.find(',') != std::string_view::npos) {
    ApplyWidthList(format, field);
    return;
  }
  ApplyTypeAndWidth(ExtractWord(1, format, kFormatDelimiters), field);
  if (field.seq > 0 && field.decimals == 0) {
    field.decimals = ByteOf(ExtractWord(2, format, kFormatDelimiters));
  }
}

TSubField ParseSubField(std::string_view format, const TFieldInfo& field) {
  const auto number = ParseInt(ExtractWord(2, format, kPartDelimiters));
  if (!number) throw Error(std::string("Неверный формат префикса "_cp1251) + field.name);
  TSubField part;
  part.prefix = ReplaceChar(UpperCaseRu(ExtractWord(1, format, kPartDelimiters)), '#', '\r');
  part.number = static_cast<std::uint8_t>(*number);
  part.ref_name = UpperCaseRu(ExtractWord(3, format, kPartDelimiters));
  part.ref_number = ByteOf(DigitsAtEnd(part.ref_name));
  part.flag = !ExtractWord(4, format, kPartDelimiters).empty();
  part.full_name = field.name;
  part.caption = field.caption;
  return part;
}

}  // namespace customsconv
