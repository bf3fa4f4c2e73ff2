#ifndef CUSTOMSCONV_XML_READ_XML_TEXT_H_
#define CUSTOMSCONV_XML_READ_XML_TEXT_H_

#include <string>
#include <string_view>

#include "platform/files.h"

namespace customsconv {

// The text of an XML file in code page 1251, from its first "<" on, without its
// first comment; "xs:" has become "xsd:". Throws FileError for a file that cannot be read, and
// Error naming the file when it does not decode.
[[nodiscard]] std::string LoadXmlText(const Files& files, std::string_view file_name);
// The same for what was read already; `file_name` serves the message.
[[nodiscard]] std::string XmlTextFromBytes(std::string text, std::string_view file_name);

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_READ_XML_TEXT_H_
