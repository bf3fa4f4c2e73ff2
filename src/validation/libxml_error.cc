// Keeps the first error of what libxml2 does while an object of the class lives.

#include "validation/libxml_error.h"

#include <libxml/globals.h>

#include "validation/libxml_sentence.h"

namespace customsconv {
FirstXmlError::FirstXmlError()
    : former_(xmlStructuredError), former_context_(xmlStructuredErrorContext) {
  xmlSetStructuredErrorFunc(this, &FirstXmlError::Take);
}

FirstXmlError::~FirstXmlError() { xmlSetStructuredErrorFunc(former_context_, former_); }

void FirstXmlError::Take(void* self, xmlErrorPtr error) {
  auto* first = static_cast<FirstXmlError*>(self);
  if (error->level < XML_ERR_ERROR || first->occurred()) return;
  if (error->file != nullptr) first->file_ = error->file;
  first->Take(error->code, error->line, SentenceOf(*error));
}

void FirstXmlError::Take(int code, int line, std::string_view sentence) {
  if (occurred()) return;
  code_ = code;
  line_ = line;
  sentence_ = sentence;
}

}  // namespace customsconv
