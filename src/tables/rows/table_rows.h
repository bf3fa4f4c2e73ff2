#ifndef CUSTOMSCONV_TABLES_ROWS_TABLE_ROWS_H_
#define CUSTOMSCONV_TABLES_ROWS_TABLE_ROWS_H_

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/letter_case.h"
#include "base/lifetime.h"
#include "dbf/dbf_cache.h"
#include "dbf/dbf_file.h"
#include "tables/rows/table_value.h"

namespace customsconv {

struct TableColumn {
  std::string name;  // UTF-8; no other column of the table has it in whatever letter case
  ColumnKind kind = ColumnKind::kText;
  int width = 0;  // bytes in the table, the point of a number among them
  int decimals = 0;
  char type = column_type::kCharacter;  // of the field
  int field = 0;                        // its index; -1 for the mark of deletion
};

// The rows of one table as typed values, one at a time, for programs that know nothing of dBase:
//
//   TableRows rows(host, "OUT\\DBRTOVAR.DBF");
//   while (rows.Next()) {
//     if (!rows.Deleted()) Write(rows.columns(), rows.Values());
//   }
//
// Reads what stands on the disk and holds one row of it (a small table as a whole).
class TableRows {
 public:
  // `host` must outlive the object. Throws DbfError or FileError, which name the table.
  TableRows(Host& host, std::string_view path);

  // Only these columns from now on, in this order; positions in columns().
  void Select(const std::vector<int>& positions);
  // One more column at the end, DELETED: whether the row is marked as deleted.
  void AddDeleted();
  [[nodiscard]] const std::vector<TableColumn>& columns() const CUSTOMSCONV_LIFETIME_BOUND {
    return columns_;
  }
  // Position of the column of that name (UTF-8), any letter case; -1 when there is none.
  [[nodiscard]] int Find(std::string_view name) const;

  [[nodiscard]] std::int64_t Count() const { return count_; }
  // Goes to the next row, at first to row 1. False behind the last one. Throws FileError when the
  // row cannot be read.
  bool Next();
  // Goes to that row, from 1.
  void GoTo(std::int64_t number);
  [[nodiscard]] std::int64_t Number() const { return table_.current_record(); }
  [[nodiscard]] bool Deleted() const { return table_.IsDeleted(); }
  // A value a column; valid until another row is gone to or the columns change.
  [[nodiscard]] std::span<const TableValue> Values() CUSTOMSCONV_LIFETIME_BOUND;

  // The table at the current row, for keys.
  [[nodiscard]] const TFileDbfFile& table() const CUSTOMSCONV_LIFETIME_BOUND { return table_; }

 private:
  void ColumnsChanged();
  [[nodiscard]] TableValue ValueOf(int field);

  std::string path_;
  TDbfCache cache_;
  TFileDbfFile table_;
  std::int64_t count_ = 0;
  std::vector<TableColumn> columns_;
  std::unordered_map<std::string, int, NoCaseHash, NoCaseEqual> positions_;  // by name, 1251
  std::vector<TableValue> values_;
  std::int64_t values_of_ = 0;  // row that values_ show
  std::string room_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_ROWS_TABLE_ROWS_H_
