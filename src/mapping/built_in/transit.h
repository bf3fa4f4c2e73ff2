#ifndef CUSTOMSCONV_MAPPING_BUILT_IN_TRANSIT_H_
#define CUSTOMSCONV_MAPPING_BUILT_IN_TRANSIT_H_

#include "mapping/record_scope.h"

namespace customsconv {

// A transit declaration (its procedure begins with В, М or Т) names its persons in
// other places than the table set expects: the principal's representative
// becomes the person who filled the declaration in, the declarant the
// responsible person, the carrier the declarant. Changes the source, and has the run wait for a
// goods record to write the transit records.
void ReshapeTransitDeclaration(RecordScope& record);

// Column 44 of a transit declaration: guarantee, transit office and vehicle, drivers, as technical
// records of the first goods record. Written at the first goods record after
// a transit header, once: if need be of a later document, with that document's values.
void ApplyTransitRecords(RecordScope& record);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_BUILT_IN_TRANSIT_H_
