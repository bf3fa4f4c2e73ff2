#ifndef CUSTOMSCONV_TABLES_TABLE_LOADER_H_
#define CUSTOMSCONV_TABLES_TABLE_LOADER_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/basis.h"
#include "dbf/dbf_file.h"
#include "document/record.h"

namespace customsconv {

// Reads one head row of a table set and the rows that belong to it into records. The
// work grows with the rows plus the records.
class TableLoader {
 public:
  // `folder` stands in front of the table names as it is.
  TableLoader(TDbfCache& cache, std::string_view folder) : cache_(cache), folder_(folder) {}

  // Fills the top record from row `row` of the head table, from a blank row when the
  // table has none of that number. The result is the table's row count. Throws Error
  // when the table cannot be opened.
  std::int64_t LoadHead(TDocFieldList& top, std::int32_t row);
  // Loads the tables below the head, whose key is `doc_key`, level by level, up to five deep.
  // Throws Error when one cannot be opened.
  void LoadChildren(TDocFieldList& top, const ShortText& doc_key);

 private:
  struct Level {
    const TDbfBasis* basis;
    std::vector<TDocFieldList*> records;
  };

  void Open(TFileDbfFile& table, const TDbfBasis& level) const;
  // `position` is the level's entry in the one above.
  void LoadLevel(Level& level, const Level& parents, int position);

  TDbfCache& cache_;
  std::string folder_;
  ShortText doc_key_;  // of the head record
  std::string head_key_fields_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_TABLE_LOADER_H_
