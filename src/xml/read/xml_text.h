#ifndef CUSTOMSCONV_XML_READ_XML_TEXT_H_
#define CUSTOMSCONV_XML_READ_XML_TEXT_H_

#include <string>
#include <string_view>

#include "platform/files.h"

namespace customsconv {

// What an XML file was before it became a text: where its lines were.
class FileLines {
 public:
  // Characters that became "?" as code page 1251 lacks them.
  [[nodiscard]] std::size_t replaced() const { return replaced_; }
  // The line of the file, from 1, in which the byte at `position` of `text` stands.
  [[nodiscard]] std::size_t LineOf(std::string_view text, std::size_t position) const;

 private:
  friend std::string XmlTextFromBytes(std::string text, std::string_view file_name,
                                      FileLines* lines);
  std::size_t in_front_ = 0;    // line ends that stood in front of the text
  std::size_t comment_at_ = 0;  // where in the text the comment was
  std::size_t in_comment_ = 0;
  std::size_t replaced_ = 0;
};

// XML files as texts:
//
//   const std::string text = LoadXmlText(host.files, "C:\\IN\\decl.xml");
//   const XmlTree tree(text);
//
// The text is in code page 1251, whatever the file was in (UTF-8, UTF-16 or 1251), and starts
// with its first "<"; its first comment is gone and "xs:" has become "xsd:". Throws FileError
// for a file that cannot be read, and Error naming the file when it does not decode.
//
// What goes takes line ends along; `lines` (null: nobody asks) becomes what finds the file's lines.
[[nodiscard]] std::string LoadXmlText(const Files& files, std::string_view file_name,
                                      FileLines* lines = nullptr);
// The same for what was read already; `file_name` serves the message.
[[nodiscard]] std::string XmlTextFromBytes(std::string text, std::string_view file_name,
                                           FileLines* lines = nullptr);

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_READ_XML_TEXT_H_
