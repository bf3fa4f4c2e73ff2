#ifndef CUSTOMSCONV_MAPPING_BUILT_IN_CLOSING_HEADER_H_
#define CUSTOMSCONV_MAPPING_BUILT_IN_CLOSING_HEADER_H_

#include "mapping/record_scope.h"

namespace customsconv {

// What a header record gets behind its mapping lines: the container indicator as
// "1" or "0", and for a declaration adjustment a number of its own in place of the
// customs office.
void ApplyClosingHeaderRules(RecordScope& record);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_BUILT_IN_CLOSING_HEADER_H_
