#include <algorithm>

#include "base/letter_case.h"
#include "dbf/dbf_file.h"
#include "text/blanks.h"
#include "text/words.h"

// Search in one field, record by record: equal to a value or holding it, in any letter case.
namespace customsconv {
namespace {

constexpr char kContainsMark = '*';

}  // namespace

bool TFileDbfFile::FindFirst(std::string_view field, std::string_view value) {
  // What FindNext looks for is kept as short texts; this search takes its arguments whole.
  search_field_ = ShortText::Cut(field);
  search_value_ = ShortText::Cut(value);
  std::int64_t record = 1;
  const bool found = Search(field, value, record);
  search_position_ = current_record_;
  return found;
}

bool TFileDbfFile::FindNext() {
  std::int64_t record = search_position_ + 1;
  const bool found = Search(search_field_, search_value_, record);
  search_position_ = current_record_;
  return found;
}

bool TFileDbfFile::Search(std::string_view field, std::string_view value, std::int64_t& record) {
  const bool contains = !field.empty() && field.back() == kContainsMark;
  if (contains) field.remove_suffix(1);
  const int index = FieldIndex(field);
  if (index < 0) return false;
  const std::string wanted = UpperCaseRu(TrimBlanks(value));
  record = std::max<std::int64_t>(record, 1);
  while (record <= RecordCount()) {
    if (GoTo(record++) != DbfStatus::kOk) continue;
    const ShortText shown = GetField(index);
    if (contains ? ContainsNoCase(shown, wanted) : SameTextRu(shown, wanted)) return true;
  }
  return false;
}

}  // namespace customsconv
