#ifndef CUSTOMSCONV_MAPPING_BUILT_IN_DOCUMENTS_H_
#define CUSTOMSCONV_MAPPING_BUILT_IN_DOCUMENTS_H_

#include "mapping/record_scope.h"

namespace customsconv {

// Column 44: the kind codes of a presented document by the block it stands in,
// and records of their own for the store transfer codes, which are taken once a
// block.
void WriteDocumentCodes(RecordScope& record);

// The first payment document of a payment gets a record of its own among the
// payment documents of the header.
void WritePaymentDocument(RecordScope& record);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_BUILT_IN_DOCUMENTS_H_
