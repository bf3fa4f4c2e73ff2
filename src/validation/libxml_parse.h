#ifndef CUSTOMSCONV_VALIDATION_LIBXML_PARSE_H_
#define CUSTOMSCONV_VALIDATION_LIBXML_PARSE_H_

#include <string_view>

#include "validation/xml_services.h"

namespace customsconv {

class CompiledSchema;

// Parses a text (code page 1251, the encoding that its declaration names is ignored) as a
// stream of events, watched by a schema unless that is null, up to the first error. Throws
// Error for a text too long for libxml2 (2 GB).
[[nodiscard]] XmlParseReport ParseXml(std::string_view text_1251, const CompiledSchema* schema);

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_LIBXML_PARSE_H_
