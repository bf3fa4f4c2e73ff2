#ifndef CUSTOMSCONV_MAPPING_BUILT_IN_RECORD_RULES_H_
#define CUSTOMSCONV_MAPPING_BUILT_IN_RECORD_RULES_H_

#include "mapping/record_scope.h"

namespace customsconv {

// Codes that a target record gets because of the source block it comes from, before its
// mapping lines: each theme below looks at the source path and writes what applies.
void ApplyRecordRules(RecordScope& record);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_BUILT_IN_RECORD_RULES_H_
