// Level by level, each table read once from its first row to its last: a row finds its parents by
// its key in a hash table, however many records and rows there are.

#include "tables/table_loader.h"

#include <algorithm>
#include <unordered_map>

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "tables/table_keys.h"

namespace customsconv {
namespace {

constexpr int kDeepestLevel = 5;

// Hashes views and texts alike, so that a look-up copies nothing.
struct KeyHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view key) const { return std::hash<std::string_view>()(key); }
};
using RecordsByKey =
    std::unordered_map<std::string, std::vector<TDocFieldList*>, KeyHash, std::equal_to<>>;

void TakeField(const TFileDbfFile& table, int field, TDocFieldList& record, int position) {
  if (table.FieldAt(field).length > ShortText::kMaxSize) {
    record.SetText(position, table.GetLongField(field));
  } else {
    record.SetText(position, table.GetField(field));
  }
}

// The current row's fields become the record's first entries.
void TakeRow(const TFileDbfFile& table, std::int64_t row, TDocFieldList& record) {
  const int fields = std::min(static_cast<int>(table.fields().size()), record.Count());
  for (int i = 0; i < fields && !record.Basis().Item(i).is_block; ++i) {
    TakeField(table, i, record, i);
  }
  record.RecNo = static_cast<std::int32_t>(row);
}

TDocFieldList& AppendRecord(TDocFieldList& parent, int position) {
  const bool first = parent.Records(position) == nullptr;
  RecordList& list = parent.EnsureRecords(position);
  return first ? list.Append("000") : list.Append(list.Count());
}

}  // namespace

void TableLoader::Open(TFileDbfFile& table, const TDbfBasis& level) const {
  const std::string name = folder_ + level.table_file;
  if (table.Open(name, kModeRead | kShareDenyNone, OnError::kReturn) != DbfStatus::kOk) {
    throw Error(std::string("Не могу открыть dbf для загрузки "_cp1251) + name);
  }
}

std::int64_t TableLoader::LoadHead(TDocFieldList& top, std::int32_t row) {
  const auto& level = static_cast<const TDbfBasis&>(top.Basis());
  TFileDbfFile table(cache_);
  Open(table, level);
  if (row > 0 && table.GoTo(row) != DbfStatus::kOk) table.BlankRecord();
  for (int i = 0; i < static_cast<int>(table.fields().size()); ++i) {
    const int position = level.IndexOfName(table.FieldAt(i).TrimmedName());
    if (position >= 0 && !level.Item(position).is_block) TakeField(table, i, top, position);
  }
  top.RecNo = row;
  return table.RecordCount();
}

void TableLoader::LoadChildren(TDocFieldList& top, const ShortText& doc_key) {
  doc_key_ = doc_key;
  head_key_fields_ = top.Basis().key_fields;
  std::vector<Level> levels;
  levels.push_back({static_cast<const TDbfBasis*>(&top.Basis()), {&top}});
  for (int depth = 1; depth <= kDeepestLevel && !levels.empty(); ++depth) {
    std::vector<Level> deeper;
    for (const Level& parents : levels) {
      for (int i = 0; i < parents.basis->Count(); ++i) {
        const TFieldInfo& entry = parents.basis->Item(i);
        if (!entry.is_block) continue;
        deeper.push_back({static_cast<const TDbfBasis*>(entry.block.get()), {}});
        LoadLevel(deeper.back(), parents, i);
      }
    }
    levels = std::move(deeper);
  }
}

// Each row becomes a record of every parent that has its key.
void TableLoader::LoadLevel(Level& level, const Level& parents, int position) {
  const TDbfBasis& basis = *level.basis;
  const TableKeys keys(basis);
  RecordsByKey parents_by_key;
  for (TDocFieldList* parent : parents.records) {
    parents_by_key[keys.OfParent(*parent).str()].push_back(parent);
  }

  TFileDbfFile table(cache_);
  Open(table, basis);
  const RowKey row_key(table, basis.key_fields);
  const bool under_head = basis.key_fields.starts_with(head_key_fields_);
  for (std::int64_t row = 1; row <= table.RecordCount(); ++row) {
    if (table.GoTo(row) != DbfStatus::kOk) break;
    const ShortText key = row_key.Of(table);
    if (under_head && !key.view().starts_with(doc_key_)) continue;  // another document's
    const auto found = parents_by_key.find(key.view());
    if (found == parents_by_key.end()) continue;
    for (TDocFieldList* parent : found->second) {
      TDocFieldList& record = AppendRecord(*parent, position);
      TakeRow(table, row, record);
      level.records.push_back(&record);
    }
  }
}

}  // namespace customsconv
