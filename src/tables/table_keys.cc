// Key lists as the catalogue has them, and which fields of a level and of the level above they
// mean.

#include "tables/table_keys.h"

#include <algorithm>

#include "dbf/dbf_file.h"
#include "text/blanks.h"
#include "text/char_set.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr CharSet kSeparators("+,");

// The fields that `names` means in the level.
std::vector<int> PositionsOf(const TBasis& level, std::string_view names) {
  std::vector<int> positions;
  if (level.key_fields.empty()) return positions;
  for (const std::string_view name : Words(names, kSeparators)) {
    const int position = level.IndexOfName(Trim(name));
    if (position >= 0) positions.push_back(position);
  }
  return positions;
}

// The names in the level of the key that is asked for as `names`: as many as the level has key
// fields mean these.
std::string_view NamesIn(const TBasis& level, std::string_view names) {
  if (names.empty()) return level.link_fields.empty() ? level.key_fields : level.link_fields;
  if (names.ends_with(',')) return names;
  const bool as_many = WordCount(names, kSeparators) == WordCount(level.key_fields, kSeparators);
  return as_many ? std::string_view(level.key_fields) : names;
}

// A record before it was filled has no texts.
std::string_view TextOf(const TDocFieldList& record, int position) {
  return position < record.Count() ? record.Text(position) : std::string_view();
}

ShortText KeyOf(const TDocFieldList& record, const std::vector<int>& positions) {
  ShortText key;
  for (const int position : positions) key += Trim(TextOf(record, position));
  return key;
}

}  // namespace

RowKey::RowKey(const TFileDbfFile& table, std::string_view names) {
  for (const std::string_view name : Words(names, kSeparators)) {
    const int field = table.FieldIndex(name);
    if (field >= 0) fields_.push_back(field);
  }
}

ShortText RowKey::Of(const TFileDbfFile& table) const {
  ShortText key;
  for (const int field : fields_) key += Trim(table.GetField(field));
  return key;
}

TableKeys::TableKeys(const TBasis& level) : own_(PositionsOf(level, NamesIn(level, {}))) {
  if (level.parent == nullptr) return;
  const TBasis& above = *level.parent;
  const bool is_linked = !level.link_fields.empty();
  parent_ = PositionsOf(above, is_linked ? level.link_fields : NamesIn(above, level.key_fields));
  for (const std::string_view word : Words(level.key_fields, kSeparators)) {
    const std::string_view name = Trim(word);
    const int to = level.IndexOfName(name);
    if (to >= 0) copies_.push_back({to, above.IndexOfName(is_linked ? level.link_fields : name)});
  }
}

bool TableKeys::IsFromParent(int position) const {
  return std::any_of(copies_.begin(), copies_.end(),
                     [position](const Copy& copy) { return copy.to == position; });
}

void TableKeys::CopyFromParent(const TDocFieldList& parent, TDocFieldList& record) const {
  for (const Copy& copy : copies_) {
    record.SetText(copy.to, copy.from < 0 ? std::string_view() : TextOf(parent, copy.from));
  }
}

ShortText TableKeys::Of(const TDocFieldList& record) const { return KeyOf(record, own_); }

ShortText TableKeys::OfParent(const TDocFieldList& parent) const { return KeyOf(parent, parent_); }

}  // namespace customsconv
