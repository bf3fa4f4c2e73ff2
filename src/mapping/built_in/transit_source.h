#ifndef CUSTOMSCONV_MAPPING_BUILT_IN_TRANSIT_SOURCE_H_
#define CUSTOMSCONV_MAPPING_BUILT_IN_TRANSIT_SOURCE_H_

#include "mapping/record_scope.h"

namespace customsconv {

// A transit declaration (its procedure begins with В, М or Т) names its persons in
// other places than the table set expects: the principal's representative
// becomes the person who filled the declaration in, the declarant the
// responsible person, the carrier the declarant. Changes the source, marks the
// run as waiting for the guarantee and carrier records.
void ReshapeTransitDeclaration(RecordScope& record);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_BUILT_IN_TRANSIT_SOURCE_H_
