// Workstations store the day of a number in several forms; all are compared as digits.

#include "tables/rows/declaration_number.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/characters.h"
#include "text/blanks.h"
#include "text/char_set.h"
#include "text/date_forms.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr std::string_view kOffice = "G071", kDay = "G072", kSerial = "G073";

// A day as yymmdd or yyyymmdd, nothing for an empty text; no result for what is no day.
std::optional<std::string> DigitsOfDay(std::string_view text) {
  if (text.empty()) return std::string();
  const std::string dotted = AllDigits(text) ? DottedFromDigits(text) : std::string(text);
  const std::vector<std::string_view> parts = Words(dotted, CharSet(".-"));
  if (parts.size() != 3 || !std::all_of(parts.begin(), parts.end(), AllDigits)) return std::nullopt;
  const bool year_first = parts[0].size() == 4;
  const std::string_view year = parts[year_first ? 0 : 2], day = parts[year_first ? 2 : 0];
  if ((year.size() != 2 && year.size() != 4) || day.size() > 2 || parts[1].size() > 2) {
    return std::nullopt;
  }
  return std::string(year) + PadLeft(parts[1], '0', 2) + PadLeft(day, '0', 2);
}

// Of days with and without their centuries.
bool SameDay(std::string_view a, std::string_view b) {
  const std::size_t size = std::min(a.size(), b.size());
  return (size > 0 || a.size() == b.size()) &&
         a.substr(a.size() - size) == b.substr(b.size() - size);
}

// What a field of that width keeps of the text.
bool HoldsText(const TFileDbfFile& table, int field, std::string_view text) {
  return Trim(table.GetField(field)) == Trim(text.substr(0, table.FieldAt(field).length));
}

bool HoldsDay(const TFileDbfFile& table, int field, std::string_view day) {
  if (table.FieldAt(field).type == column_type::kDate)
    return SameDay(Trim(table.StoredField(field)), day);
  const auto digits = DigitsOfDay(table.GetField(field));
  return digits && SameDay(*digits, day);
}

}  // namespace

std::optional<DeclarationNumber> DeclarationNumber::Parse(std::string_view text) {
  std::array<std::string_view, 3> parts;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::size_t end = std::min(text.find('/'), text.size());
    if ((end == text.size()) != (i + 1 == parts.size())) return std::nullopt;
    parts[i] = Trim(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  auto day = DigitsOfDay(parts[1]);
  if (!day || parts[0].empty() || parts[2].empty()) return std::nullopt;
  DeclarationNumber number;
  number.office_ = parts[0];
  number.day_ = std::move(*day);
  number.serial_ = parts[2];
  return number;
}

bool DeclarationNumber::IsOf(const TFileDbfFile& head) const {
  const int office = head.FieldIndex(kOffice), day = head.FieldIndex(kDay);
  const int serial = head.FieldIndex(kSerial);
  if (office < 0 && day < 0 && serial < 0) return false;
  return (office < 0 || HoldsText(head, office, office_)) &&
         (serial < 0 || HoldsText(head, serial, serial_)) && (day < 0 || HoldsDay(head, day, day_));
}

}  // namespace customsconv
