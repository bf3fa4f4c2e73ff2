#ifndef CUSTOMSCONV_XML_DOCUMENT_WRITER_H_
#define CUSTOMSCONV_XML_DOCUMENT_WRITER_H_

#include <string>
#include <vector>

#include "document/document.h"

namespace customsconv {

// The document as XML text lines (without line ends), values in the encoding
// that the first line names. Empty when no document is given.
[[nodiscard]] std::vector<std::string> ExportXml(const TDocument* document);

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_DOCUMENT_WRITER_H_
