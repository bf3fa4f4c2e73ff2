#ifndef CUSTOMSCONV_XML_READ_XML_VALUE_LOOKUP_H_
#define CUSTOMSCONV_XML_READ_XML_VALUE_LOOKUP_H_

#include <string>
#include <string_view>

namespace customsconv {

// One value of an XML text, without the tree of a document:
//
//   GetXmlValue(text, "GTDNumber\\CustomsCode")         "10702020"
//   GetXmlValue(text, "GTDNumber\\RegistrationDate")    "11.06.2015"
//
// `path` names the elements on the way, in any letter case. The value comes back upper-cased;
// dates as DD.MM.YYYY. Empty when there is none.
[[nodiscard]] std::string GetXmlValue(std::string_view text, std::string_view path);

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_READ_XML_VALUE_LOOKUP_H_
