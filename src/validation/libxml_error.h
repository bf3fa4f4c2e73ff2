#ifndef CUSTOMSCONV_VALIDATION_LIBXML_ERROR_H_
#define CUSTOMSCONV_VALIDATION_LIBXML_ERROR_H_

#include <libxml/xmlerror.h>

#include <string>
#include <string_view>

#include "base/lifetime.h"

namespace customsconv {

// The first error that libxml2 reports while the object lives, on this thread.
// Warnings do not count.
class FirstXmlError {
 public:
  FirstXmlError();
  ~FirstXmlError();
  FirstXmlError(const FirstXmlError&) = delete;
  FirstXmlError& operator=(const FirstXmlError&) = delete;

  // To be handed to libxml2 with the object as its context.
  static void Take(void* self, xmlErrorPtr error);
  // An error of our own making; `sentence` as SentenceOf makes it.
  void Take(int code, int line, std::string_view sentence);

  [[nodiscard]] bool occurred() const { return code_ != 0; }
  [[nodiscard]] int code() const { return code_; }
  [[nodiscard]] int line() const { return line_; }
  // What it says, as SentenceOf tells it.
  [[nodiscard]] const std::string& sentence() const CUSTOMSCONV_LIFETIME_BOUND { return sentence_; }
  // Name of the file that it stands in, UTF-8; empty for the document itself.
  [[nodiscard]] const std::string& file() const CUSTOMSCONV_LIFETIME_BOUND { return file_; }

 private:
  xmlStructuredErrorFunc former_;
  void* former_context_;
  int code_ = 0;
  int line_ = 0;
  std::string sentence_;
  std::string file_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_LIBXML_ERROR_H_
