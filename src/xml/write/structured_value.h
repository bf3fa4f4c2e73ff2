#ifndef CUSTOMSCONV_XML_WRITE_STRUCTURED_VALUE_H_
#define CUSTOMSCONV_XML_WRITE_STRUCTURED_VALUE_H_

#include <string>
#include <string_view>

#include "catalogue/field_info.h"

namespace customsconv {

// The parts of a composite value (document/composite_value.h) as elements of their own, each
// with its prefix as an attribute; a multi-line field gets a frame of "Line" elements around
// them.
[[nodiscard]] std::string StructuredValue(const TFieldInfo& field, std::string_view raw);

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_WRITE_STRUCTURED_VALUE_H_
