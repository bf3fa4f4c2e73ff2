#ifndef CUSTOMSCONV_ENTRY_ROW_COUNT_H_
#define CUSTOMSCONV_ENTRY_ROW_COUNT_H_

#include <map>
#include <string>

#include "document/document.h"

namespace customsconv {

// Number of records by table file.
using RowCount = std::map<std::string, int>;

// The records of a table-set document that have no row yet.
[[nodiscard]] RowCount RecordsWithoutRow(const TDocument& document);

// What a save added: records that had no row before it and have one after it.
[[nodiscard]] RowCount RowsAdded(const RowCount& before, const RowCount& after);

}  // namespace customsconv

#endif  // CUSTOMSCONV_ENTRY_ROW_COUNT_H_
