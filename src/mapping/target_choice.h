#ifndef CUSTOMSCONV_MAPPING_TARGET_CHOICE_H_
#define CUSTOMSCONV_MAPPING_TARGET_CHOICE_H_

#include "mapping/record_scope.h"

namespace customsconv {

// Settles where in the target a record really goes: blocks that stand beside
// the goods table instead of under it, records of inventories, processing
// products, mechanism parts. Changes `target_block` and `flattened` of the record.
void AdjustTarget(RecordScope& record);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_TARGET_CHOICE_H_
