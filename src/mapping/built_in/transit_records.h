#ifndef CUSTOMSCONV_MAPPING_BUILT_IN_TRANSIT_RECORDS_H_
#define CUSTOMSCONV_MAPPING_BUILT_IN_TRANSIT_RECORDS_H_

#include "mapping/record_scope.h"

namespace customsconv {

// Column 44 of a transit declaration: guarantee, transit office and vehicle, drivers, as technical
// records of the first goods record. Written at the first goods record after
// a transit header, once.
void ApplyTransitRecords(RecordScope& record);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_BUILT_IN_TRANSIT_RECORDS_H_
