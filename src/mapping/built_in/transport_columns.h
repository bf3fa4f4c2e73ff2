#ifndef CUSTOMSCONV_MAPPING_BUILT_IN_TRANSPORT_COLUMNS_H_
#define CUSTOMSCONV_MAPPING_BUILT_IN_TRANSPORT_COLUMNS_H_

#include "mapping/record_scope.h"

namespace customsconv {

// Which column of the declaration a record of the consignment belongs to: 18
// (means of transport at departure or arrival), 21 (at the border), 27 (place of loading), 29
// (border customs office).
void WriteTransportColumns(RecordScope& record);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_BUILT_IN_TRANSPORT_COLUMNS_H_
