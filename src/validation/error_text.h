#ifndef CUSTOMSCONV_VALIDATION_ERROR_TEXT_H_
#define CUSTOMSCONV_VALIDATION_ERROR_TEXT_H_

#include <string>
#include <string_view>

#include "validation/xml_services.h"

namespace customsconv {

// How a failed check is told to the user, in code page 1251:
//
//   REASON<br>Строка XML № 3 (от начала документа ESADout_CU)<BR> Текст: Proc40/Proc
//
// The display understands HTML, so the line of the document stands there without "<" and ">".
// `schema_file` is a name without folder. Short texts in braces are taken out of the whole:
// they are namespaces, such as some validators put before the names of elements.
[[nodiscard]] std::string ErrorText(const XmlParseReport& report, std::string_view schema_file);

// `reason` with "…" in the place of every text that ErrorText would take out for a namespace:
// the value "7{10}" is shown as "7…" and never as "7".
[[nodiscard]] std::string WithBracedTextsMarked(std::string_view reason);

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_ERROR_TEXT_H_
