#ifndef CUSTOMSCONV_CATALOGUE_HEADER_KEYS_H_
#define CUSTOMSCONV_CATALOGUE_HEADER_KEYS_H_

#include <string_view>

#include "catalogue/doc_info.h"

namespace customsconv {

// Keys of a HEADER section that have consequences beyond the value they store.
enum class HeaderKey { kPlain, kDocFileLabel, kBlocksOnExtraPage };

// Stores a line of a type's HEADER section in `info`. The keys are tried in a fixed order: a line's
// key is the first one that it begins with, in any letter case. A line without a key is kept in the
// extra lines. Throws ConversionError where an integer is demanded.
HeaderKey StoreHeaderLine(std::string_view line, TDocInfo& info);

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_HEADER_KEYS_H_
