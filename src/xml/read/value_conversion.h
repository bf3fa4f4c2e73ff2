#ifndef CUSTOMSCONV_XML_READ_VALUE_CONVERSION_H_
#define CUSTOMSCONV_XML_READ_VALUE_CONVERSION_H_

#include <string>
#include <string_view>

#include "base/lifetime.h"
#include "catalogue/field_type.h"

namespace customsconv {

// A value of an XML file as a field of that type holds it:
//
//   ConvertXmlValue("2015-06-11", FieldType::kDate, buffer)   "11.06.2015"
//   ConvertXmlValue("12,5", FieldType::kNumber, buffer)         "12.5"
//
// Base64 content of a binary field is decoded and packed in zlib's format; all else stays as it is.
// Returns `value` itself or a view of `buffer`.
[[nodiscard]] std::string_view ConvertXmlValue(std::string_view value CUSTOMSCONV_LIFETIME_BOUND,
                                               FieldType field_type,
                                               std::string& buffer CUSTOMSCONV_LIFETIME_BOUND);

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_READ_VALUE_CONVERSION_H_
