#ifndef CUSTOMSCONV_TABLES_ROWS_TABLE_VALUE_H_
#define CUSTOMSCONV_TABLES_ROWS_TABLE_VALUE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "dbf/dbf_fields.h"

namespace customsconv {

// What a column of a table holds, as other programs ask.
enum class ColumnKind : std::uint8_t { kText, kDecimal, kDate, kLogical };
[[nodiscard]] ColumnKind KindOf(const FieldDescriptor& field);

// The value of a cell, as text in one form whatever way it is stored in. Views into the row.
struct TableValue {
  enum class Kind : std::uint8_t {
    kEmpty,    // no number, date or truth value is stored; a text is never kEmpty
    kText,     // UTF-8 without the padding; blanks in front stay
    kDecimal,  // "-1234.50": no needless sign or zeros in front, all decimals of its column
    kDate,     // "2026-03-17", a day of the calendar
    kLogical,  // "1" or "0"
    kMisfit,   // UTF-8 text that is not what its column should hold
  };
  Kind kind = Kind::kEmpty;
  std::string_view text;

  friend bool operator==(const TableValue&, const TableValue&) = default;
};

// Reads stored bytes (code page 866, padded) by the type of their field. What the bytes do not
// show as it is goes to the end of `room`, which must not have to grow: RoomFor bytes a field.
[[nodiscard]] TableValue ReadValue(const FieldDescriptor& field, std::string_view stored,
                                   std::string& room);
[[nodiscard]] std::size_t RoomFor(const FieldDescriptor& field);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_ROWS_TABLE_VALUE_H_
