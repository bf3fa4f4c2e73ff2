#ifndef CUSTOMSCONV_VALIDATION_LIBXML_SERVICES_H_
#define CUSTOMSCONV_VALIDATION_LIBXML_SERVICES_H_

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/files.h"
#include "validation/xml_services.h"

namespace customsconv {

class CompiledSchema;

// The XML services of this platform, version 6.0, over libxml2.
//
// Compiled schemas are kept for the life of the object, as long as the stamps of the schema file
// and of all files that it includes or imports stay the same. No file outside a schema's folder
// and nothing from a network is ever read, and a document brings nothing of its own: a document
// type declaration is an error, hints where to find schemas are ignored. A text is read as a
// stream of events, so memory does not grow with it.
class LibXmlServices : public XmlServices {
 public:
  // `files` must outlive the services.
  explicit LibXmlServices(const Files& files);
  ~LibXmlServices() override;

  std::unique_ptr<XmlDocumentService> CreateDocument(std::string_view name) override;
  std::unique_ptr<XmlSchemaCache> CreateSchemaCache(std::string_view name) override;

  // The schema of a file, compiled now or earlier. Throws Error naming the file and the place.
  [[nodiscard]] std::shared_ptr<const CompiledSchema> Compiled(std::string_view schema_file);
  // How many schemas were compiled since the start.
  [[nodiscard]] int compilations() const { return compilations_; }

 private:
  const Files& files_;
  std::map<std::string, std::shared_ptr<const CompiledSchema>, std::less<>> compiled_;
  int compilations_ = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_LIBXML_SERVICES_H_
