#ifndef CUSTOMSCONV_DOCUMENT_DOCUMENT_PATH_H_
#define CUSTOMSCONV_DOCUMENT_DOCUMENT_PATH_H_

#include <cstddef>
#include <string_view>

#include "base/lifetime.h"
#include "document/record.h"

namespace customsconv {

inline constexpr std::string_view kRootPrefix = "\\\\";    // a path from the top record
inline constexpr std::string_view kCurrentPrefix = ".\\";  // a path from the current record
inline constexpr std::size_t kLongestPathPart = 100;       // bytes; the rest is not looked at

// A place in the tree of records: a record, or the list of a block's records.
struct DocumentPlace {
  const TBasis* basis = nullptr;    // of the record, or of the list's records
  TDocFieldList* record = nullptr;  // null at a record list
  RecordList* list = nullptr;       // null at a record
};

// What a path finds under a block: the records at `position` of the record, null when there are
// none. Throws Error when the record lacks the slot.
[[nodiscard]] RecordList* BlockRecords(const TDocFieldList& record CUSTOMSCONV_LIFETIME_BOUND,
                                       int position);

// Walks `path` (block names and record numbers in turn; no root prefix) from `place`.
// An empty part ends the walk. False when the path leads nowhere; `place` is then as it
// was. Throws Error when a record lacks the slot of a block that its level has.
[[nodiscard]] bool WalkPath(std::string_view path, DocumentPlace& place);

// `path` split at its last "\": what stands before it, closing separators included, and
// the last part, cut to its longest size. Without a separator the parent is empty.
struct SplitPath {
  std::string_view parent;
  std::string_view last;
};
[[nodiscard]] SplitPath SplitLastPart(std::string_view path CUSTOMSCONV_LIFETIME_BOUND);

}  // namespace customsconv

#endif  // CUSTOMSCONV_DOCUMENT_DOCUMENT_PATH_H_
