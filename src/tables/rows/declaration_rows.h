#ifndef CUSTOMSCONV_TABLES_ROWS_DECLARATION_ROWS_H_
#define CUSTOMSCONV_TABLES_ROWS_DECLARATION_ROWS_H_

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/host.h"
#include "tables/rows/declaration_number.h"
#include "tables/rows/set_levels.h"
#include "tables/rows/table_rows.h"
#include "tables/table_keys.h"

namespace customsconv {

// Which rows of a table set belong to one declaration: head rows of its number and what hangs on
// them, level by level. Holds the keys of these rows.
class DeclarationRows {
 public:
  // Looks the heads up and, of the tables that have others below them, the rows that belong to
  // them. Tables that are missing in `folder` (with closing separator) are left out. Throws
  // DbfError or FileError. Rows marked as deleted count only when `deleted`.
  DeclarationRows(Host& host, std::string_view folder, const SetLevels& levels,
                  const DeclarationNumber& number, bool deleted);

  [[nodiscard]] bool Found() const { return found_; }

  // Tells for one table after another which rows belong to the declaration.
  class Filter {
   public:
    [[nodiscard]] bool Wants(const TableRows& rows) const;

   private:
    friend class DeclarationRows;
    struct Place {
      RowKey key;
      const std::unordered_set<std::string>* keys;  // of the rows above
    };
    const DeclarationNumber* number_ = nullptr;  // for a head
    std::vector<Place> places_;
  };
  // `table` is the name of its file, any letter case. Must not outlive this object.
  [[nodiscard]] Filter FilterFor(std::string_view table, const TableRows& rows) const;

 private:
  [[nodiscard]] Filter FilterOf(const SetLevel& level, const TableRows& rows) const;
  void Gather(Host& host, const std::string& folder, std::size_t position, bool deleted);

  const SetLevels& levels_;
  DeclarationNumber number_;
  std::vector<std::unordered_set<std::string>> keys_;  // a level: what its rows must have
  bool found_ = false;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_ROWS_DECLARATION_ROWS_H_
