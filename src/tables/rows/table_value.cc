// One form for what makers of tables store in several.

#include "tables/rows/table_value.h"

#include <algorithm>

#include "base/characters.h"
#include "base/dos_unicode.h"
#include "base/lifetime.h"
#include "text/date_forms.h"

namespace customsconv {
namespace {

using Kind = TableValue::Kind;

constexpr std::size_t kUtf8Size = 3;  // of a character of code page 866, at most

// What both UTF-8 and the stored bytes show alike.
bool IsPlain(char c) {
  return static_cast<unsigned char>(c) < 0x80 && c != '\x0F' && c != '\x14' && c != '\x15';
}

// What `write` adds to the end of `room`.
template <typename Write>
std::string_view Added(std::string& room CUSTOMSCONV_LIFETIME_BOUND, const Write& write) {
  const std::size_t start = room.size();
  write();
  return std::string_view(room).substr(start);
}

std::string_view Utf8Of(std::string_view dos, std::string& room) {
  if (std::all_of(dos.begin(), dos.end(), IsPlain)) return dos;
  return Added(room, [&] { AppendUtf8FromDos(room, dos); });
}

TableValue ReadText(std::string_view stored, std::string& room) {
  // Some programs pad with NUL.
  const std::size_t last = stored.find_last_not_of(std::string_view(" \0", 2));
  return {Kind::kText, Utf8Of(stored.substr(0, last + 1), room)};
}

TableValue Misfit(std::string_view trimmed, std::string& room) {
  return {Kind::kMisfit, Utf8Of(trimmed, room)};
}

struct Decimal {
  bool negative = false;
  std::string_view whole;  // without zeros in front
  std::string_view fraction;
};

// False for what is no number. No exponent: tables have fixed decimals.
bool ParseDecimal(std::string_view text, Decimal& decimal) {
  decimal.negative = text.front() == '-';
  if (text.front() == '-' || text.front() == '+') text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  decimal.whole = text.substr(0, point);
  decimal.fraction = text.substr(std::min(point + 1, text.size()));
  if (decimal.whole.empty() && decimal.fraction.empty()) return false;
  if (!AllDigits(decimal.whole) || !AllDigits(decimal.fraction)) return false;
  decimal.whole.remove_prefix(std::min(decimal.whole.find_first_not_of('0'), decimal.whole.size()));
  return true;
}

// It stands there in the form that is wanted.
bool IsCanonical(std::string_view text, const Decimal& decimal, std::size_t decimals) {
  const std::size_t size =
      std::max<std::size_t>(decimal.whole.size(), 1) + (decimals > 0 ? 1 + decimals : 0);
  return text.front() != '-' && decimal.fraction.size() == decimals && text.size() == size;
}

TableValue ReadDecimal(std::string_view stored, std::size_t decimals, std::string& room) {
  const std::string_view text = Trim(stored);
  if (text.empty()) return {};
  Decimal decimal;
  if (!ParseDecimal(text, decimal)) return Misfit(text, room);
  if (IsCanonical(text, decimal, decimals)) return {Kind::kDecimal, text};
  const bool is_zero =
      decimal.whole.empty() && decimal.fraction.find_first_not_of('0') == std::string_view::npos;
  return {Kind::kDecimal, Added(room, [&] {
            if (decimal.negative && !is_zero) room += '-';
            room += decimal.whole.empty() ? "0" : decimal.whole;
            const std::size_t digits = std::max(decimals, decimal.fraction.size());
            if (digits == 0) return;
            (room += '.') += decimal.fraction;
            room.append(digits - decimal.fraction.size(), '0');
          })};
}

TableValue ReadDate(std::string_view stored, std::string& room) {
  const std::string_view text = Trim(stored);
  if (text.find_first_not_of('0') == std::string_view::npos) return {};
  const std::optional<Date> day = DateOfTableDigits(text);
  if (!day) return Misfit(text, room);
  return {Kind::kDate, Added(room, [&] { room += XmlDateText(*day); })};
}

TableValue ReadLogical(std::string_view stored, std::string& room) {
  const std::string_view text = Trim(stored);
  if (text.empty() || text == "?") return {};
  if (text.size() > 1) return Misfit(text, room);
  if (std::string_view("TtYy").find(text[0]) != std::string_view::npos)
    return {Kind::kLogical, "1"};
  if (std::string_view("FfNn").find(text[0]) != std::string_view::npos)
    return {Kind::kLogical, "0"};
  return Misfit(text, room);
}

}  // namespace

ColumnKind KindOf(const FieldDescriptor& field) {
  switch (field.type) {
    case column_type::kNumber:
    case column_type::kFloat:
    case column_type::kMemo:  // the number of a block
      return ColumnKind::kDecimal;
    case column_type::kDate:
      return ColumnKind::kDate;
    case column_type::kLogical:
      return ColumnKind::kLogical;
    default:
      return ColumnKind::kText;
  }
}

TableValue ReadValue(const FieldDescriptor& field, std::string_view stored, std::string& room) {
  switch (KindOf(field)) {
    case ColumnKind::kDecimal:
      return ReadDecimal(stored, field.decimals, room);
    case ColumnKind::kDate:
      return ReadDate(stored, room);
    case ColumnKind::kLogical:
      return ReadLogical(stored, room);
    case ColumnKind::kText:
      break;
  }
  return ReadText(stored, room);
}

std::size_t RoomFor(const FieldDescriptor& field) {
  constexpr std::size_t kSigns = 4;  // "-0." or the "-" of a date
  return kUtf8Size * field.length + field.decimals + kSigns;
}

}  // namespace customsconv
