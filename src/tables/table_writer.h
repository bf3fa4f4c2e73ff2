#ifndef CUSTOMSCONV_TABLES_TABLE_WRITER_H_
#define CUSTOMSCONV_TABLES_TABLE_WRITER_H_

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/lifetime.h"
#include "catalogue/basis.h"
#include "dbf/dbf_file.h"
#include "document/record.h"
#include "tables/cell_losses.h"
#include "tables/table_keys.h"

namespace customsconv {

// The rows to delete at the next save, by table file name.
using DeletedRows = std::map<std::string, std::set<std::int32_t>, std::less<>>;
// Numbers of rows by table file name.
using RowCounts = std::map<std::string, std::int32_t>;

// Writes records as rows of their levels' tables, parents before their children.
// Each table is opened once, when its first record comes.
class TableWriter {
 public:
  // `folder` stands in front of the table names as it is. `deleted` are the rows that
  // will be gone after the save; it must outlive the writer.
  TableWriter(TDbfCache& cache, std::string_view folder, const DeletedRows& deleted)
      : cache_(cache), folder_(folder), deleted_(deleted) {}

  // Writes the record and all below it: posts the rows that exist, appends the others,
  // and gives the records the row numbers that they will have after the deletions. Throws
  // Error when a table cannot be opened; what was written stays in the table images.
  void Write(TDocFieldList& top);
  // From now on counts what the table fields of new rows do not keep of their values.
  void CountLosses() { counts_losses_ = true; }
  [[nodiscard]] const CellLosses& Losses() const CUSTOMSCONV_LIFETIME_BOUND { return losses_; }
  // Rows that were appended, by table file name.
  [[nodiscard]] RowCounts AppendedRows() const;

 private:
  struct Field {
    int position;  // in the level
    int column;    // in the table
  };
  // What is the same for all records of a level.
  struct Level {
    TFileDbfFile* table = nullptr;
    std::int32_t appended = 0;  // rows
    std::vector<Field> fields;
    bool columns_differ = true;  // no two fields go to one column
    std::vector<int> blocks;     // positions
    std::optional<TableKeys> keys;
    std::vector<std::int32_t> deleted;  // rows, ascending
  };

  Level& LevelOf(const TBasis& basis);
  TFileDbfFile& TableOf(const std::string& table_file);
  void WriteRecord(Level& level, TDocFieldList& record);
  // Fills the record buffer.
  void WriteFields(const Level& level, const TDocFieldList& record, bool is_new);
  void CountLong(const Level& level, int column, int parts, std::string_view text);

  TDbfCache& cache_;
  std::string folder_;
  const DeletedRows& deleted_;
  bool counts_losses_ = false;
  CellLosses losses_;
  std::unordered_map<const TBasis*, Level> levels_;
  std::unordered_map<std::string, std::unique_ptr<TFileDbfFile>> tables_;
};

// Removes the rows physically, table by table, the last rows first. Throws Error
// when a table cannot be opened.
void DeleteRows(TDbfCache& cache, std::string_view folder, const DeletedRows& rows);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_TABLE_WRITER_H_
