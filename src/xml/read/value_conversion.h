#ifndef CUSTOMSCONV_XML_READ_VALUE_CONVERSION_H_
#define CUSTOMSCONV_XML_READ_VALUE_CONVERSION_H_

#include <string>
#include <string_view>

namespace customsconv {

// A value of an XML file as a field of that type letter holds it: dates DD.MM.YYYY, "." in
// numbers, base64 content of type "Y" decoded and packed in zlib's format, all else as
// it is. Returns `value` itself or a view of `buffer`.
[[nodiscard]] std::string_view ConvertXmlValue(std::string_view value, char field_type,
                                               std::string& buffer);

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_READ_VALUE_CONVERSION_H_
