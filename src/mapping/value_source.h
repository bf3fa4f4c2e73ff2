#ifndef CUSTOMSCONV_MAPPING_VALUE_SOURCE_H_
#define CUSTOMSCONV_MAPPING_VALUE_SOURCE_H_

#include <optional>
#include <string_view>

#include "mapping/mapping_line.h"
#include "mapping/record_scope.h"

namespace customsconv {

// Value of a line's source expression over the current source record, uncut and
// uncleaned, and the field it comes from: a field or block of the current level, a path from the
// root, a path from the current record, or a field joined over all records of a block. Empty
// optional when the expression names nothing. A joined goods description that
// does not fit is shortened here, its rest goes into additional-information records.
[[nodiscard]] std::optional<FieldValue> SourceValueOf(RecordScope& record, MappingLine& line,
                                                      std::string_view expression);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_VALUE_SOURCE_H_
