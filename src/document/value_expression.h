#ifndef CUSTOMSCONV_DOCUMENT_VALUE_EXPRESSION_H_
#define CUSTOMSCONV_DOCUMENT_VALUE_EXPRESSION_H_

#include <string>
#include <string_view>

namespace customsconv {

class TDocument;

// Mode 3 leaves out the blanks that are otherwise put between pieces.
inline constexpr int kNoBlanksBetweenPieces = 3;

// Value of an expression as declaration forms show it, over a document: a path,
// CALC(...) arithmetic, or a concatenation of fields and quoted texts in which a group
// whose fields are all empty disappears with its texts. Field names are looked for in
// the top level, then in the main-block record `goods_index` (from 0), then at the current
// position. Never throws; what cannot be evaluated is empty.
[[nodiscard]] std::string GetFieldValue(TDocument& document, std::string_view expression,
                                        int goods_index, int mode = 0);

}  // namespace customsconv

#endif  // CUSTOMSCONV_DOCUMENT_VALUE_EXPRESSION_H_
