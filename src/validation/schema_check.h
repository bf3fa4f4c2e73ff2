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
  enum class Outcome {
    kChecked,      // or could not be: `error_text` tells
    kNoSchema,     // the folder has no schema for the root element
    kSwitchedOff,  // [ED] CheckXSD=0
  };
  Outcome outcome = Outcome::kChecked;
  // For the user, in code page 1251; empty when the document is valid or was not checked.
  std::string error_text{};
  // Of an invalid document: the validator's reason with all values as they are, the line of the
  // checked text (from 1) and that line.
  std::string reason{};
  int line = 0;
  std::string line_text{};
  // Name of the schema's file, but for a text whose root is not known.
  std::string schema{};
};

// Checks XML texts against the schemas of the environment's auxiliary folder, the schema of a
// text being the file named after its root element:
//
//   LibXmlServices services(host.files);
//   SchemaCheck check(services);
//   const SchemaVerdict verdict = check.ValidateXml(writer.Text(document), environment);
//   if (!verdict.error_text.empty()) lines.Append(verdict.error_text);
//
// Keep both for all documents of a run: the services keep compiled schemas, the check remembers
// which version of the services was there.
class SchemaCheck {
 public:
  // `services` must outlive the object.
  explicit SchemaCheck(XmlServices& services) : services_(services) {}

  // `text` is in the encoding that the document writer chose. Never throws for a bad document or
  // schema: every failure becomes the error text.
  [[nodiscard]] SchemaVerdict ValidateXml(std::string_view text, const Environment& environment);

 private:
  SchemaVerdict Check(std::string_view text, const Environment& environment);
  std::unique_ptr<XmlDocumentService> CreateDocument();

  XmlServices& services_;
  char version_ = '6';
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_SCHEMA_CHECK_H_
