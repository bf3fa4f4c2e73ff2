#ifndef CUSTOMSCONV_XML_READ_XML_TEXT_H_
#define CUSTOMSCONV_XML_READ_XML_TEXT_H_

#include <string>
#include <string_view>

#include "platform/files.h"

namespace customsconv {

// XML files as texts:
//
//   const std::string text = LoadXmlText(host.files, "C:\\IN\\decl.xml");
//   const XmlTree tree(text);
//
// The text is in code page 1251, whatever the file was in (UTF-8, UTF-16 or 1251), and starts
// with its first "<"; its first comment is gone and "xs:" has become "xsd:". Throws FileError
// for a file that cannot be read, and Error naming the file when it does not decode.
[[nodiscard]] std::string LoadXmlText(const Files& files, std::string_view file_name);
// The same for what was read already; `file_name` serves the message.
[[nodiscard]] std::string XmlTextFromBytes(std::string text, std::string_view file_name);

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_READ_XML_TEXT_H_
