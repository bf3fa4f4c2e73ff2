#ifndef CUSTOMSCONV_XML_READ_XML_VALUE_LOOKUP_H_
#define CUSTOMSCONV_XML_READ_XML_VALUE_LOOKUP_H_

#include <string>
#include <string_view>

namespace customsconv {

// Value of the element that `path` ("GTDNumber\CustomsCode") leads to, searched
// in the raw XML text. The value comes back upper-cased; dates as DD.MM.YYYY.
[[nodiscard]] std::string GetXmlValue(std::string_view text, std::string_view path);

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_READ_XML_VALUE_LOOKUP_H_
