#ifndef CUSTOMSCONV_TABLES_ROWS_SET_CHECK_H_
#define CUSTOMSCONV_TABLES_ROWS_SET_CHECK_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"
#include "tables/rows/set_levels.h"

namespace customsconv {

// Something about a table that the workstation would stumble over. Texts are code page 1251.
struct SetFinding {
  enum class Kind : std::uint8_t {
    kUnreadable,  // cannot be opened as a table, or not be read to its end: `detail` says why
    kNoEndMark,   // the byte behind the records is another one
    kNoParent,    // rows that belong to none in the tables `detail`, which stand above
    kTwice,       // rows with a key, the fields `detail`, that an earlier row has
    kJournal,     // of a save that was interrupted and could not be undone
  };
  Kind kind;
  std::string table;  // file name
  std::string detail;
  std::int64_t rows = 0;   // how many it concerns
  std::int64_t first = 0;  // the first of them, from 1
};

struct SetCheck {
  struct Table {
    std::string name;
    std::int64_t rows;
  };
  std::vector<Table> tables;  // those that could be opened, in the order of their names
  std::vector<SetFinding> findings;
};

// Looks through the tables of a folder (with closing separator): their form, and of those that
// `levels` knows whether each row has the row it belongs to and no key stands there twice. Rows
// that are marked as deleted do not count. The work grows with the rows, the memory with the keys
// of those that have others below them. The caller keeps saves out.
[[nodiscard]] SetCheck CheckSet(Host& host, const std::string& folder, const SetLevels& levels);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_ROWS_SET_CHECK_H_
