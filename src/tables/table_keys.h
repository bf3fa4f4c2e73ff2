#ifndef CUSTOMSCONV_TABLES_TABLE_KEYS_H_
#define CUSTOMSCONV_TABLES_TABLE_KEYS_H_

#include <string>
#include <string_view>
#include <vector>

#include "base/short_text.h"
#include "document/record.h"

namespace customsconv {

class TFileDbfFile;

// The key of the current row of an open table: the values of its fields `names` (separated by "+"
// or ","), each trimmed, one behind the other without separators, cut at 255 bytes. The names are
// looked up once, on construction.
class RowKey {
 public:
  RowKey(const TFileDbfFile& table, std::string_view names);
  [[nodiscard]] ShortText Of(const TFileDbfFile& table) const;

 private:
  std::vector<int> fields_;
};

// What links the records of one level of a table set to their parents: its key fields.
//
// A key field belongs to the parent record. For the table DBRG44 [G073+G32] below the goods, a
// save gives every record the G073 and the G32 of its goods record, whatever a rule wrote there;
// a load finds the goods record of a row by them. All who deal with rows ask here:
//
//   const TableKeys keys(level);
//   keys.IsFromParent(level.IndexOfName("G32"))   // a rule's value would be lost at the save
//   keys.CopyFromParent(parent, record)           // the save
//   keys.OfParent(parent) == row_key.Of(table)    // the load: the row belongs to the parent
//
// Keys of records are joined and cut like those of rows. All names are looked up on construction.
class TableKeys {
 public:
  // `level` and the level above it must be complete.
  explicit TableKeys(const TBasis& level);

  // Whether a save fills the field at `position` of the level from the parent record. Never for a
  // head table, which has no parent.
  [[nodiscard]] bool IsFromParent(int position) const;
  // Gives the record its key values: each key field that of the same name in the parent, or, for
  // a level with a link field, that field of the parent. What the parent lacks comes as empty text.
  void CopyFromParent(const TDocFieldList& parent, TDocFieldList& record) const;

  // The record's own key: by the level's link field, without one by its key fields.
  [[nodiscard]] ShortText Of(const TDocFieldList& record) const;
  // The key by which rows of the level find `parent`, a record of the level above: of the link
  // field; without one of the fields that the rows' key fields name, or, where the level above
  // has as many key fields, of its own.
  [[nodiscard]] ShortText OfParent(const TDocFieldList& parent) const;

 private:
  struct Copy {
    int to;
    int from;  // -1: the parent has no such field
  };
  std::vector<int> own_;     // positions in the level
  std::vector<int> parent_;  // positions in the level above
  std::vector<Copy> copies_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_TABLE_KEYS_H_
