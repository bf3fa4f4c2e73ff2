#ifndef CUSTOMSCONV_TABLES_ROWS_SET_LEVELS_H_
#define CUSTOMSCONV_TABLES_ROWS_SET_LEVELS_H_

#include <string>
#include <string_view>
#include <vector>

#include "catalogue/doc_type_list.h"
#include "services/environment.h"

namespace customsconv {

// One table of a set at one place of the tree that the type's Files section draws. A table may
// stand at several places. All texts are code page 1251.
struct SetLevel {
  std::string type;   // code of the type
  std::string block;  // block names from the top joined by "\"; empty for the head
  std::string table;  // file name in upper case
  int parent = -1;    // position of the level above in the list; -1 for the head
  // Where a row finds its row above: its fields `keys` have the values that `parent_keys` have
  // there, in this order. For the head `keys` alone, what its rows are known by.
  std::vector<std::string> keys;
  std::vector<std::string> parent_keys;
};
using SetLevels = std::vector<SetLevel>;

// Adds the levels of a table-set type, each behind the one above it. Throws Error when the
// catalogue does not describe the type by tables.
void AppendLevels(TDocInfo& type, Environment& environment, SetLevels& levels);

// The levels of the types whose head table is among `tables` (file names, any letter case); of
// several types over one head the one that a conversion takes.
[[nodiscard]] SetLevels LevelsOfTables(const TDocTypeList& types,
                                       const std::vector<std::string>& tables,
                                       Environment& environment);

// What tells the rows of a table apart as far as the levels know: the longest list of its fields
// by which it finds the row above or is found from below. Empty when no level has the table.
[[nodiscard]] std::vector<std::string> RowKeyOf(const SetLevels& levels, std::string_view table);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_ROWS_SET_LEVELS_H_
