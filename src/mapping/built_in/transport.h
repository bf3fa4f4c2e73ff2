#ifndef CUSTOMSCONV_MAPPING_BUILT_IN_TRANSPORT_H_
#define CUSTOMSCONV_MAPPING_BUILT_IN_TRANSPORT_H_

#include "mapping/record_scope.h"

namespace customsconv {

// Transport records of the header: the modes of columns 25 (border) and 26 (inland),
// and one record of column 30 for each vehicle at the goods' location.
// Leaves the target on its root.
void WriteTransportRecords(RecordScope& record);

// Which column of the declaration a record of the consignment belongs to: 18
// (means of transport at departure or arrival), 21 (at the border), 27 (place of loading), 29
// (border customs office).
void WriteTransportColumns(RecordScope& record);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_BUILT_IN_TRANSPORT_H_
