#ifndef CUSTOMSCONV_MAPPING_BUILT_IN_PAYMENTS_H_
#define CUSTOMSCONV_MAPPING_BUILT_IN_PAYMENTS_H_

#include "mapping/record_scope.h"

namespace customsconv {

// The first payment document of a payment gets a record of its own among the
// payment documents of the header.
void WritePaymentDocument(RecordScope& record);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_BUILT_IN_PAYMENTS_H_
