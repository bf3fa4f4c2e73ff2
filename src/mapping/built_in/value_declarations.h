#ifndef CUSTOMSCONV_MAPPING_BUILT_IN_VALUE_DECLARATIONS_H_
#define CUSTOMSCONV_MAPPING_BUILT_IN_VALUE_DECLARATIONS_H_

#include "mapping/record_scope.h"

namespace customsconv {

// Customs value declarations: the position (column of the form) that a record belongs to.
// The delivery terms first, the other blocks later among the record rules.
void WriteDeliveryTermsPosition(RecordScope& record);
void WriteValueDeclarationPosition(RecordScope& record);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_BUILT_IN_VALUE_DECLARATIONS_H_
