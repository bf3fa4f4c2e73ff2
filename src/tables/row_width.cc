// Stores the value in a row that has room for it, which is what a table does, and measures.

#include "tables/row_width.h"

#include "base/short_text.h"
#include "dbf/dbf_values.h"
#include "text/blanks.h"

namespace customsconv {

std::size_t WidthInRow(const TFieldInfo& field, std::string_view value, int this_year) {
  char row[ShortText::kMaxSize];
  FieldDescriptor wide;
  wide.type = static_cast<char>(field.type);
  wide.decimals = field.decimals;
  wide.length = sizeof row;
  dbf::StoreValue(row, wide, value, this_year);
  return field.type == FieldType::kNumber ? Trim({row, sizeof row}).size()
                                          : TrimRight({row, sizeof row}).size();
}

}  // namespace customsconv
