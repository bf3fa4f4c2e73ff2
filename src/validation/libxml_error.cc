#include "validation/libxml_error.h"

#include <libxml/globals.h>

#include "base/code_pages.h"
#include "text/blanks.h"
#include "text/words.h"

namespace customsconv {
namespace {

// "{urn:x:y}Name" becomes "Name". A brace in a value has a quote or a blank
// before its closing one, or no name behind it, and stays.
std::string WithoutNamespaces(std::string_view message) {
  std::string result;
  for (std::size_t i = 0; i < message.size();) {
    const std::size_t close =
        message[i] == '{' ? message.find_first_of("}' {", i + 1) : std::string_view::npos;
    const bool name_follows = close != std::string_view::npos && message[close] == '}' &&
                              close + 1 < message.size() &&
                              (IsLetterOrDigit(message[close + 1]) || message[close + 1] == '_' ||
                               message[close + 1] == '*');
    if (name_follows) {
      i = close + 1;
    } else {
      result += message[i++];
    }
  }
  return result;
}

}  // namespace

FirstXmlError::FirstXmlError()
    : former_(xmlStructuredError), former_context_(xmlStructuredErrorContext) {
  xmlSetStructuredErrorFunc(this, &FirstXmlError::Take);
}

FirstXmlError::~FirstXmlError() { xmlSetStructuredErrorFunc(former_context_, former_); }

void FirstXmlError::Take(void* self, xmlErrorPtr error) {
  auto* first = static_cast<FirstXmlError*>(self);
  if (error->level < XML_ERR_ERROR || first->occurred()) return;
  if (error->file != nullptr) first->file_ = error->file;
  first->Take(error->code, error->line, error->message == nullptr ? "" : error->message);
}

void FirstXmlError::Take(int code, int line, std::string_view message) {
  if (occurred()) return;
  code_ = code;
  line_ = line;
  message_ = message;
}

std::string FirstXmlError::Message() const {
  const std::string text = WinFromUtf8(message_).value_or(message_);
  return WithoutNamespaces(
      TrimRight(CollapseBlanks(ReplaceChar(ReplaceChar(text, '\n', ' '), '\r', ' '))));
}

}  // namespace customsconv
