#ifndef CUSTOMSCONV_TEXT_XML_ESCAPE_H_
#define CUSTOMSCONV_TEXT_XML_ESCAPE_H_

#include <string>
#include <string_view>

#include "base/short_text.h"

namespace customsconv {

// Texts as XML can hold them:
//
//   "<Name>" + XmlEscape("a<b & \"c\"") + "</Name>"    <Name>a&lt;b &amp; "c"</Name>

// "<", ">" and "&" become entities, every byte below 32 except CR a blank; quotes
// stay. The short form cuts its result at 255 bytes.
[[nodiscard]] std::string XmlEscape(std::string_view text);
[[nodiscard]] ShortText XmlEscapeShort(std::string_view text);

// 36 hexadecimal digits and "-" with a "-" in ninth place, after enclosing pairs of braces
// are taken off.
[[nodiscard]] bool IsGuid(std::string_view text);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_XML_ESCAPE_H_
