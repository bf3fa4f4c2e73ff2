#ifndef CUSTOMSCONV_CLI_TABLE_DESCRIPTION_H_
#define CUSTOMSCONV_CLI_TABLE_DESCRIPTION_H_

#include <string>
#include <string_view>
#include <vector>

#include "dbf/dbf_fields.h"

namespace customsconv::cli {

// One table of a description.
struct DescribedTable {
  std::string name;  // upper case, with ".DBF"
  TDescrs fields;
};

// Tables described one field a line, in words separated by blanks:
//
//   ; comment
//   DBRTOV  G33   C  10
//   DBRTOV  G42   N  15 2
//
// Tables and fields come in the order in which they first stand. Throws UsageError naming
// `file_name`, the line and what is wrong with it: a field that cannot be (unknown type, width
// out of range, a name given twice or longer than 10 bytes) or a table whose record would be
// longer than 65,535 bytes. `text` is code page 1251 or UTF-8.
[[nodiscard]] std::vector<DescribedTable> ReadTableDescription(std::string_view text,
                                                               std::string_view file_name);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_TABLE_DESCRIPTION_H_
