// Dates and flags of XML take the form that tables want; bracket forms gather several values.

#include "mapping/value_store.h"

#include <cmath>

#include "base/characters.h"
#include "base/letter_case.h"
#include "text/date_format.h"
#include "text/date_forms.h"
#include "text/dates.h"
#include "text/numbers.h"

namespace customsconv {
namespace {

// Value of a date in one of the two XML orders; 0 when it is neither.
Date XmlDate(std::string_view value) {
  for (const std::string_view format : {"yyyy-mm-dd", "dd-mm-yyyy"}) {
    const DateTime date = TextToDateFmtDef(format, value, 0);
    if (date != 0) return static_cast<Date>(std::floor(date));
  }
  return 0;
}

ShortText ConvertDate(const ShortText& value, int this_year) {
  if (ParseLocalDate(value, this_year)) return value;
  const Date date = XmlDate(Trim(value));
  return date == 0 ? value : ShortText::Cut(LocalDateText(date));
}

bool StartsWithOneOf(std::string_view text, std::initializer_list<std::string_view> starts) {
  for (const std::string_view start : starts) {
    if (text.starts_with(start)) return true;
  }
  return false;
}

std::string_view BeforeBracket(std::string_view field CUSTOMSCONV_LIFETIME_BOUND) {
  return field.substr(0, field.find('['));
}

void AppendToField(RecordScope& record, std::string_view field, std::string_view value) {
  ShortText text = ShortText::Cut(record.target.GetField(field));
  text += value;
  record.Set(field, text);
}

void AddToList(RecordScope& record, std::string_view field, std::string_view value) {
  const ShortText reduced = SixDigitDate(value, record.run.environment.ThisYear());
  const ShortText present = ShortText::Cut(record.target.GetField(field));
  record.Set(field, present.empty() ? reduced : JoinShort({present, "/", reduced}));
}

}  // namespace

std::string_view LogicalValue(std::string_view value, std::string_view caption) {
  const std::size_t open = caption.find('[');
  const std::size_t close = open == std::string_view::npos ? open : caption.find(']', open);
  const std::string_view options =
      close == std::string_view::npos ? "" : caption.substr(open + 1, close - open - 1);
  if (options.empty()) return StrToBoolRu(value) ? "1" : "0";
  const std::size_t slash = options.find('/');
  const std::string_view yes =
      slash == std::string_view::npos ? options : options.substr(slash + 1);
  return SameTextRu(value, yes) ? "1" : "0";
}

ShortText ConvertBySourceType(const ShortText& value, const TFieldInfo* source_field,
                              const Environment& environment) {
  if (source_field == nullptr) return value;
  // Only a date asks the clock: it is asked often enough to show.
  if (source_field->type == FieldType::kDate) return ConvertDate(value, environment.ThisYear());
  if (source_field->type == FieldType::kLogical) {
    return ShortText::Cut(LogicalValue(value, source_field->caption));
  }
  return value;
}

ShortText SixDigitDate(std::string_view value, int this_year) {
  const std::string_view date = Trim(value);
  if (date.size() == 10 && date[4] == '-') return ShortText::Cut(SixDigitsFromYearFirst(date));
  if (ParseLocalDate(date, this_year)) return ShortText::Cut(SixDigitsFromDayFirst(date));
  return ShortText::Cut(value);
}

StoredIn StoreValue(RecordScope& record, MappingLine& line, const ShortText& value,
                    const TFieldInfo* source_field) {
  const int position = line.target_field.In(record.target.CurBasis(), line.field);
  if (position >= 0) {
    if (record.IsKeyOfParent(position)) return StoredIn::kField;
    record.target.SetFieldByNum(position,
                                ConvertBySourceType(value, source_field, record.run.environment));
    return StoredIn::kField;
  }
  if (StartsWithOneOf(line.field, {"G36[", "G37[", "K012["})) {
    AppendToField(record, BeforeBracket(line.field), value);
    return StoredIn::kBracketField;
  }
  if (StartsWithOneOf(line.field, {"PASP[", "NUMCARD[", "NUMZ["})) {
    AddToList(record, BeforeBracket(line.field), value);
    return StoredIn::kBracketField;
  }
  return StoredIn::kNowhere;
}

}  // namespace customsconv
