// What a type letter means for reading and storing.

#include "document/record_values.h"

#include <algorithm>

#include "base/error.h"
#include "text/blanks.h"

namespace customsconv {
namespace {

// Position of the composite field that a part belongs to: the nearest one before it; -1
// when there is none.
int CompositeOf(const TBasis& basis, int part_position) {
  int position = part_position;
  while (position >= 0 && basis.Item(position).type != FieldType::kComposite) --position;
  return position;
}

std::string ReadPart(const TDocFieldList& record, int position, const SearchedRange& searched) {
  const int composite = CompositeOf(record.Basis(), position);
  if (composite < 0) return {};
  const std::string_view text = record.Text(composite);
  const TextRange range = searched.value_or(TextRange{0, text.size()});
  return std::string(PartValue(text, position - composite, range));
}

bool StorePart(TDocFieldList& record, int position, std::string_view value,
               const SearchedRange& searched) {
  const int composite = CompositeOf(record.Basis(), position);
  if (composite < 0) return false;
  if (composite >= record.Count()) throw ListIndexError(composite);
  const TSubFieldsList& parts = record.Basis().Item(composite).sub_fields;
  record.SetText(composite,
                 WithPart(record.Text(composite), parts, position - composite, value, searched));
  return true;
}

}  // namespace

std::string ReadRecordValue(const TDocFieldList& record, int position, bool flatten,
                            const SearchedRange& searched) {
  const TFieldInfo& entry = record.Basis().Item(position);
  if (entry.type == FieldType::kPart) return ReadPart(record, position, searched);
  const std::string_view text = record.Text(position);
  if (entry.type == FieldType::kLogical) return text.empty() ? "0" : std::string(text);
  if (flatten && entry.IsLongText()) return StripControls(text, /*trim_end=*/true);
  return std::string(text);
}

bool StoreRecordValue(TDocFieldList& record, int position, std::string_view value,
                      const SearchedRange& searched) {
  const TBasis& basis = record.Basis();
  if (position < 0 || position >= basis.Count()) return false;
  if (basis.Item(position).type == FieldType::kPart)
    return StorePart(record, position, value, searched);
  if (position >= record.Count()) throw ListIndexError(position);
  record.SetText(position, value);
  return true;
}

int EntryBeforeChoice(const TBasis& basis, int position) {
  const auto is_passed_over = [](const TFieldInfo& entry) {
    return entry.choice > 0 || entry.type == FieldType::kGroup;
  };
  int entry = std::min(position, basis.Count()) - 1;
  while (entry >= 0 && is_passed_over(basis.Item(entry))) --entry;
  return entry;
}

}  // namespace customsconv
