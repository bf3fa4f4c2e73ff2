#ifndef CUSTOMSCONV_VALIDATION_XML_SERVICES_H_
#define CUSTOMSCONV_VALIDATION_XML_SERVICES_H_

#include <memory>
#include <string>
#include <string_view>

#include "base/lifetime.h"
#include "platform/files.h"

namespace customsconv {

// The XML services that a check drives: a document service that validates while it parses, and a
// cache of compiled schemas. They are created by versioned names, so that a check can fall back to
// an older version. This is the whole of it:
//
//   auto document = services.CreateDocument("Msxml2.DOMDocument.6.0");
//   auto schemas = services.CreateSchemaCache("Msxml2.XMLSchemaCache.6.0");
//   schemas->Add("urn:x", "C:\\XSD\\r.xsd");
//   document->SetSchemas(*schemas);
//   if (!document->LoadXml(text)) show(document->ParseError().reason);

// What the last load of a document found.
struct XmlParseReport {
  long error_code = 0;         // 0 when the load succeeded
  std::string reason{};        // one sentence for the user's line (ErrorText), code page 1251
  std::string exact_reason{};  // the same with every value as the document holds it
  int line = 0;                // of the loaded text, from 1
  std::string src_text{};      // the text of that line, as loaded
};

class XmlSchemaCache {
 public:
  virtual ~XmlSchemaCache() = default;
  // Registers the schema of a file for a namespace. Throws Error when the schema cannot be used.
  virtual void Add(std::string_view name_space, std::string_view schema_file) = 0;
};

class XmlDocumentService {
 public:
  virtual ~XmlDocumentService() = default;
  virtual void SetAsync(bool async) = 0;
  virtual void SetValidateOnParse(bool validate) = 0;
  // `schemas` must outlive the next load.
  virtual void SetSchemas(XmlSchemaCache& schemas) = 0;
  // Parses and validates; `text` is code page 1251, whatever encoding its declaration names.
  virtual bool LoadXml(std::string_view text) = 0;
  [[nodiscard]] virtual const XmlParseReport& ParseError() const CUSTOMSCONV_LIFETIME_BOUND = 0;
};

class XmlServices {
 public:
  virtual ~XmlServices() = default;
  // Null when no service of that name is there.
  [[nodiscard]] virtual std::unique_ptr<XmlDocumentService> CreateDocument(
      std::string_view name) = 0;
  [[nodiscard]] virtual std::unique_ptr<XmlSchemaCache> CreateSchemaCache(
      std::string_view name) = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_XML_SERVICES_H_
