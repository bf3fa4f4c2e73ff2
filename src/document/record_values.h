#ifndef CUSTOMSCONV_DOCUMENT_RECORD_VALUES_H_
#define CUSTOMSCONV_DOCUMENT_RECORD_VALUES_H_

#include <optional>
#include <string>
#include <string_view>

#include "document/composite_value.h"
#include "document/record.h"

namespace customsconv {

// Values of one record, read and stored as the types of their entries want it: an empty flag
// reads as "0", a part stands inside the composite value before it, long text can be
// read as one line.

// Which characters of a composite value the look-up of a part searches; empty: all.
using SearchedRange = std::optional<TextRange>;

// `position` is below the record's Count().
[[nodiscard]] std::string ReadRecordValue(const TDocFieldList& record, int position, bool flatten,
                                          const SearchedRange& searched);

// False when there is nowhere to store: no such entry, or a part without its composite value.
// Throws ListIndexError for a record that has no slots. A long text keeps its own line breaks.
bool StoreRecordValue(TDocFieldList& record, int position, std::string_view value,
                      const SearchedRange& searched);

// Position of the entry that stands before the choice at `position`, past other choices and
// groups; -1 when the level has none of its entries in front of it that is neither.
[[nodiscard]] int EntryBeforeChoice(const TBasis& basis, int position);

}  // namespace customsconv

#endif  // CUSTOMSCONV_DOCUMENT_RECORD_VALUES_H_
