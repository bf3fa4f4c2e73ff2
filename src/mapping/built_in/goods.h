#ifndef CUSTOMSCONV_MAPPING_BUILT_IN_GOODS_H_
#define CUSTOMSCONV_MAPPING_BUILT_IN_GOODS_H_

#include "mapping/record_scope.h"

namespace customsconv {

// Groups of goods under one goods item (goods\i\GoodsGroupDescription\g): their
// descriptions as lines of additional information of column 31, their serial
// numbers as records of their own. True when the target is one of these tables and
// the record is done; false when the group's information records are to be
// mapped one by one.
[[nodiscard]] bool ApplyGoodsGroupRule(RecordScope& record);

// What a packaging record describes: the goods, a unit, the cargo, a pallet.
void WritePackagingKind(RecordScope& record);
// Number of the goods group that a record under it belongs to.
void WriteGoodsGroupNumber(RecordScope& record);
// Mechanisms delivered in parts: the numbers of the delivery and of the unit.
void WriteMechanismUnit(RecordScope& record);
// A record that stands beside the goods table names its goods item itself.
void WriteGoodsItemOfFlattened(RecordScope& record);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_BUILT_IN_GOODS_H_
