#ifndef CUSTOMSCONV_MAPPING_BUILT_IN_GOODS_GROUPS_H_
#define CUSTOMSCONV_MAPPING_BUILT_IN_GOODS_GROUPS_H_

#include "mapping/record_scope.h"

namespace customsconv {

// Groups of goods under one goods item (goods\i\GoodsGroupDescription\g): their
// descriptions as lines of additional information of column 31, their serial
// numbers as records of their own. True when the target is one of these tables and
// the record is done; false when the group's information records are to be
// mapped one by one.
[[nodiscard]] bool ApplyGoodsGroupRule(RecordScope& record);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_BUILT_IN_GOODS_GROUPS_H_
