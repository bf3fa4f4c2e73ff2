#ifndef CUSTOMSCONV_TABLES_TABLE_KEYS_H_
#define CUSTOMSCONV_TABLES_TABLE_KEYS_H_

#include <string>
#include <string_view>
#include <vector>

#include "base/short_text.h"
#include "document/record.h"

namespace customsconv {

class TFileDbfFile;

// The keys that link the rows of a table set: the values of a level's key fields, each
// trimmed, one behind the other without separators, cut at 255 bytes. Key lists
// hold field names separated by "+" or ",". All names are looked up once, on construction.

// The key of the records of one level.
class RecordKey {
 public:
  // `names` is the list to use; empty for the level's own one (its LinkFields, else its
  // KeyFields). As many names as the level has KeyFields mean those instead, unless
  // the list ends with ",".
  explicit RecordKey(const TBasis& level, std::string_view names = {});
  [[nodiscard]] ShortText Of(const TDocFieldList& record) const;

 private:
  std::vector<int> positions_;
};

// The key of the current row of an open table.
class RowKey {
 public:
  RowKey(const TFileDbfFile& table, std::string_view names);
  [[nodiscard]] ShortText Of(const TFileDbfFile& table) const;

 private:
  std::vector<int> fields_;
};

// Gives the child records of a level the key values of their parents: each key field
// that of the same name, or all of them the field that the level's LinkFields
// names. What the parent lacks comes as empty text.
class KeyCopy {
 public:
  KeyCopy(const TBasis& child, const TBasis& parent);
  void Copy(const TDocFieldList& parent, TDocFieldList& child) const;

 private:
  struct Pair {
    int to;
    int from;  // -1: no such field
  };
  std::vector<Pair> pairs_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_TABLE_KEYS_H_
