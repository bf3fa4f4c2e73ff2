#ifndef CUSTOMSCONV_DBF_DBF_VALUES_H_
#define CUSTOMSCONV_DBF_DBF_VALUES_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/short_text.h"
#include "dbf/dbf_fields.h"

namespace customsconv::dbf {

// How the values of a field look outside (code page 1251 text) and in a record
// (code page 866 bytes of the field's width).

// The bytes of a field as they are shown: trimmed, a date as dd.mm.yy, a binary memo
// number (of tables of that version) in decimal. At most 255 bytes.
[[nodiscard]] ShortText ShownValue(char type, std::uint8_t version, std::string_view stored);
// The same for a text of any length.
[[nodiscard]] std::string ShownLongValue(char type, std::uint8_t version, std::string_view stored);

// Writes `value` (at most 255 bytes) by the rules of the field's type to its place `to`
// in a record, over the field's whole width: a date as yyyymmdd, a number with its
// decimals at the right, a logical as T or F. What the type cannot hold becomes blank
// ("0" for a number). `this_year` places dates with a short year.
void StoreValue(char* to, const FieldDescriptor& field, std::string_view value, int this_year);

// The first `width` bytes of `value` (at most 255) in code page 866 at `to`,
// blanks behind them up to the width.
void StoreText(char* to, std::size_t width, std::string_view value);

}  // namespace customsconv::dbf

#endif  // CUSTOMSCONV_DBF_DBF_VALUES_H_
