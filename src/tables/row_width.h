#ifndef CUSTOMSCONV_TABLES_ROW_WIDTH_H_
#define CUSTOMSCONV_TABLES_ROW_WIDTH_H_

#include <cstddef>
#include <string_view>

#include "catalogue/field_info.h"

namespace customsconv {

// Bytes that a value takes in a row when the table field is wide enough for it; 0 for what
// the field's type cannot hold. `this_year` is the year that two-digit years are near to.
[[nodiscard]] std::size_t WidthInRow(const TFieldInfo& field, std::string_view value,
                                     int this_year);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_ROW_WIDTH_H_
