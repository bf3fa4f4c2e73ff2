#include "tables/table_keys.h"

#include "dbf/dbf_file.h"
#include "text/blanks.h"
#include "text/char_set.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr CharSet kSeparators("+,");

std::string_view KeyListOf(const TBasis& level, std::string_view names) {
  if (names.empty()) return level.link_fields.empty() ? level.key_fields : level.link_fields;
  if (names.ends_with(',')) return names;
  const bool as_many = WordCount(names, kSeparators) == WordCount(level.key_fields, kSeparators);
  return as_many ? std::string_view(level.key_fields) : names;
}

// A record before it was filled has no texts.
std::string_view TextOf(const TDocFieldList& record, int position) {
  return position < record.Count() ? record.Text(position) : std::string_view();
}

}  // namespace

RecordKey::RecordKey(const TBasis& level, std::string_view names) {
  if (level.key_fields.empty()) return;
  for (const std::string_view name : Words(KeyListOf(level, names), kSeparators)) {
    const int position = level.IndexOfName(Trim(name));
    if (position >= 0) positions_.push_back(position);
  }
}

ShortText RecordKey::Of(const TDocFieldList& record) const {
  ShortText key;
  for (const int position : positions_) key += Trim(TextOf(record, position));
  return key;
}

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

KeyCopy::KeyCopy(const TBasis& child, const TBasis& parent) {
  const bool linked = !child.link_fields.empty();
  for (const std::string_view word : Words(child.key_fields, kSeparators)) {
    const std::string_view name = Trim(word);
    const int to = child.IndexOfName(name);
    if (to >= 0) pairs_.push_back({to, parent.IndexOfName(linked ? child.link_fields : name)});
  }
}

void KeyCopy::Copy(const TDocFieldList& parent, TDocFieldList& child) const {
  for (const Pair& pair : pairs_) {
    child.SetText(pair.to, pair.from < 0 ? std::string_view() : TextOf(parent, pair.from));
  }
}

}  // namespace customsconv
