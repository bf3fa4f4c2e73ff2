#ifndef CUSTOMSCONV_VALIDATION_LIBXML_SENTENCE_H_
#define CUSTOMSCONV_VALIDATION_LIBXML_SENTENCE_H_

#include <libxml/xmlerror.h>

#include <string>

namespace customsconv {

// What an error of libxml2 says, as one line in code page 1251:
//
//   Element 'n': [facet 'maxLength'] The value has a length of '4'; this exceeds the …
//
// Elements, attributes and types stand there without their namespaces, values exactly as the
// document has them (line breaks become blanks). The pattern that a value does not match is
// left out: in a text for people its braces would be taken for namespaces.
[[nodiscard]] std::string SentenceOf(const xmlError& error);

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_LIBXML_SENTENCE_H_
