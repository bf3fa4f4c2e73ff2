#include "entry/row_count.h"

#include <vector>

namespace customsconv {
namespace {

void CountRecord(const TDocFieldList& record, RowCount& rows) {
  const auto* level = dynamic_cast<const TDbfBasis*>(&record.Basis());
  if (level != nullptr && record.RecNo == 0) ++rows[level->table_file];
}

}  // namespace

RowCount RecordsWithoutRow(const TDocument& document) {
  RowCount rows;
  std::vector<const TDocFieldList*> open{&document.RootRecord()};
  while (!open.empty()) {
    const TDocFieldList& record = *open.back();
    open.pop_back();
    CountRecord(record, rows);
    for (int i = 0; i < record.Count(); ++i) {
      const RecordList* list = record.Records(i);
      for (int k = 1; list != nullptr && k <= list->Count(); ++k) open.push_back(&list->Record(k));
    }
  }
  return rows;
}

RowCount RowsAdded(const RowCount& before, const RowCount& after) {
  RowCount added;
  for (const auto& [table, count] : before) {
    const auto left = after.find(table);
    const int rows = count - (left == after.end() ? 0 : left->second);
    if (rows > 0) added[table] = rows;
  }
  return added;
}

}  // namespace customsconv
