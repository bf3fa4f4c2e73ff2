// The services are thin: ParseXml does the work of a document, CompiledSchema that of a schema.

#include "validation/libxml_services.h"

#include "base/code_pages.h"
#include "base/cp1251_literal.h"
#include "base/error.h"
#include "validation/libxml_parse.h"
#include "validation/libxml_schema.h"

namespace customsconv {
namespace {

constexpr std::string_view kDocumentName = "Msxml2.DOMDocument.6.0";
constexpr std::string_view kCacheName = "Msxml2.XMLSchemaCache.6.0";

class SchemaCacheService : public XmlSchemaCache {
 public:
  explicit SchemaCacheService(LibXmlServices& services) : services_(services) {}

  void Add(std::string_view name_space, std::string_view schema_file) override {
    std::shared_ptr<const CompiledSchema> schema = services_.Compiled(schema_file);
    const std::string declared = ToWindows(schema->TargetNamespace(), CodePage::kUtf8);
    if (declared != name_space) {
      std::string text("Схема "_cp1251);
      text.append(schema_file).append(" описывает пространство имен \""_cp1251).append(declared);
      text.append("\", а в документе указано \""_cp1251).append(name_space).append("\"");
      throw Error(text);
    }
    schema_ = std::move(schema);
  }

  [[nodiscard]] const CompiledSchema* schema() const { return schema_.get(); }

 private:
  LibXmlServices& services_;
  std::shared_ptr<const CompiledSchema> schema_;
};

class DocumentService : public XmlDocumentService {
 public:
  // Loading is over when LoadXml returns, whatever is asked for.
  void SetAsync(bool) override {}
  void SetValidateOnParse(bool validate) override { validate_ = validate; }
  void SetSchemas(XmlSchemaCache& schemas) override {
    schemas_ = dynamic_cast<SchemaCacheService*>(&schemas);
  }

  bool LoadXml(std::string_view text) override {
    const bool watched = validate_ && schemas_ != nullptr;
    report_ = ParseXml(text, watched ? schemas_->schema() : nullptr);
    return report_.error_code == 0;
  }

  [[nodiscard]] const XmlParseReport& ParseError() const override { return report_; }

 private:
  bool validate_ = true;
  const SchemaCacheService* schemas_ = nullptr;
  XmlParseReport report_;
};

}  // namespace

LibXmlServices::LibXmlServices(const Files& files) : files_(files) {}
LibXmlServices::~LibXmlServices() = default;

std::unique_ptr<XmlDocumentService> LibXmlServices::CreateDocument(std::string_view name) {
  if (name != kDocumentName) return nullptr;
  return std::make_unique<DocumentService>();
}

std::unique_ptr<XmlSchemaCache> LibXmlServices::CreateSchemaCache(std::string_view name) {
  if (name != kCacheName) return nullptr;
  return std::make_unique<SchemaCacheService>(*this);
}

std::shared_ptr<const CompiledSchema> LibXmlServices::Compiled(std::string_view schema_file) {
  const std::string key = files_.Identity(schema_file);
  std::shared_ptr<const CompiledSchema>& kept = compiled_[key];
  if (kept == nullptr || !kept->IsCurrent()) {
    kept.reset();
    ++compilations_;
    kept = std::make_shared<const CompiledSchema>(files_, schema_file);
  }
  return kept;
}

}  // namespace customsconv
