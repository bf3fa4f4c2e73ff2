#ifndef CUSTOMSCONV_CATALOGUE_FIELD_LINE_H_
#define CUSTOMSCONV_CATALOGUE_FIELD_LINE_H_

#include <string>
#include <string_view>

#include "catalogue/field_info.h"

namespace customsconv {

// Whether field names stay as they are written: types that are bound to XML elements keep
// them, all others get them in upper case.
enum class NameCase { kAsWritten, kUpper };

// One field line of a Fields section: "name = format | caption".
struct FieldLine {
  TFieldInfo field;    // without the meaning of the format
  std::string format;  // Latin letters in upper case

  // The line defines a part of a composite field: its name holds ".".
  [[nodiscard]] bool IsPart() const { return field.name.find('.') != std::string::npos; }
};

// Takes a trimmed line apart: name, format, caption and the attributes in it.
[[nodiscard]] FieldLine ParseFieldLine(std::string_view line, NameCase name_case);

// The entry of a block that a trimmed line opens: caption and the attributes of a block.
[[nodiscard]] TFieldInfo ParseBlockLine(std::string_view line);

// Gives a field of no composite its type and sizes. Throws Error for a width that runs
// into a description. `format` is not empty.
void ApplyFormat(std::string_view format, TFieldInfo& field);

// The part that the format "prefix;number;reference;flag" of `field` defines.
// Throws Error for a number that is none.
[[nodiscard]] TSubField ParseSubField(std::string_view format, const TFieldInfo& field);

[[nodiscard]] std::string NameInCase(std::string_view name, NameCase name_case);

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_FIELD_LINE_H_
