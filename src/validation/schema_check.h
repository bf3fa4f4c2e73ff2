#ifndef CUSTOMSCONV_VALIDATION_SCHEMA_CHECK_H_
#define CUSTOMSCONV_VALIDATION_SCHEMA_CHECK_H_

#include <memory>
#include <string>
#include <string_view>

#include "services/environment.h"
#include "validation/xml_services.h"

namespace customsconv {

// What the check of one document found.
struct SchemaVerdict {
  // For the user, in code page 1251; empty when the document is valid or was not checked.
  std::string error_text;
  // A schema for the root element was found and the check was made.
  bool checked = false;
  // Of an invalid document: the validator's reason, the line of the checked text
  // (from 1) and that line.
  std::string reason;
  int line = 0;
  std::string line_text;
};

// Checks XML texts against the schemas of the environment's auxiliary folder, the
// schema of a text being the file named after its root element. Remembers which
// version of the XML services was there.
class SchemaCheck {
 public:
  // `services` must outlive the object.
  explicit SchemaCheck(XmlServices& services) : services_(services) {}

  // `text` is in the encoding that the document writer chose. Never throws for a bad
  // document or schema: every failure becomes the error text.
  [[nodiscard]] SchemaVerdict ValidateXml(std::string_view text, const Environment& environment);

 private:
  void Check(std::string_view text, const Environment& environment, SchemaVerdict& verdict);
  std::unique_ptr<XmlDocumentService> CreateDocument();

  XmlServices& services_;
  char version_ = '6';
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_SCHEMA_CHECK_H_
