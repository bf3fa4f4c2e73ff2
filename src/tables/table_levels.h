#ifndef CUSTOMSCONV_TABLES_TABLE_LEVELS_H_
#define CUSTOMSCONV_TABLES_TABLE_LEVELS_H_

#include <string>
#include <string_view>
#include <vector>

#include "catalogue/doc_info.h"
#include "services/environment.h"

namespace customsconv {

class TDbfCache;

// A table of a set that cannot be opened.
struct MissingTable {
  std::string file;   // its name in the set
  std::string cause;  // names the file, code page 1251
};

// Rebuilds the levels of a table-set type from the headers of the tables in `folder` (with
// closing separator), by the lines of the type's Files section. A block whose table cannot
// be opened is left out with all below it; one warning lists such tables, and so does the result.
// The levels that were there are gone, and with them what documents of the type refer to. Throws
// Error when the catalogue does not describe the type by tables.
std::vector<MissingTable> LoadFromDbf(TDocInfo& type, std::string_view folder, TDbfCache& cache,
                                      Environment& environment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_TABLE_LEVELS_H_
