#ifndef CUSTOMSCONV_VALIDATION_FORMATS_FIELD_FORM_H_
#define CUSTOMSCONV_VALIDATION_FORMATS_FIELD_FORM_H_

#include <string>
#include <vector>

#include "validation/schema/components.h"

namespace customsconv {

// How the values of a schema's type are kept in a field. Texts are code page 1251.
struct FieldForm {
  std::string format;               // what stands behind "=": "C20", "N20.2", "250"
  std::string pattern;              // for PATTERN; empty for none
  std::vector<std::string> losses;  // what the field cannot keep, for comments
};

// Of a value that stands alone.
[[nodiscard]] FieldForm FormOf(const schema::SimpleType& type);
// Of values gathered in one field, one a line; they are kept as they stand in the document.
[[nodiscard]] FieldForm GatheredFormOf(const schema::SimpleType& type, int most_values);
// A text of more than a line: line breaks may stand inside.
[[nodiscard]] bool IsLongText(const schema::SimpleType& type);

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_FORMATS_FIELD_FORM_H_
