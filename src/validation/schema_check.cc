// One check from text to verdict: whether there is anything to do, the schema, the services, the
// report in the user's words.

#include "validation/schema_check.h"

#include <memory>

#include "base/cp1251_literal.h"
#include "base/unicode.h"
#include "config/settings.h"
#include "validation/error_text.h"
#include "xml/tree/xml_parser.h"

namespace customsconv {
namespace {

constexpr std::string_view kMissingComponent =
    "Не обнаружен компонент для проверки (MSXML).\r"
    "Установите его с дистрибутивного CD фирмы Вельт или скачайте со странички "
    "<a href=\"https://example.org/xml-component\">https://example.org/xml-component</a>"_cp1251;

// Versions of the services, the one tried first at the front.
constexpr std::string_view kFallbackVersions = "54";

std::string ServiceName(std::string_view service, char version) {
  return std::string("Msxml2.").append(service).append(".") + version + ".0";
}

// What the root element of the checked text says about its schema.
struct Root {
  std::string name;
  std::string name_space;
};

Root RootOf(std::string_view text) {
  const XmlTree tree(text);
  return {std::string(tree.root().name), std::string(tree.root().Attribute("xmlns"))};
}

// A text that the writer produced in code page 1251 is no UTF-8 and stays as it is.
std::string SingleByteText(std::string_view text) {
  std::optional<std::string> decoded = WinFromUtf8(text);
  return decoded ? std::move(*decoded) : std::string(text);
}

}  // namespace

SchemaVerdict SchemaCheck::ValidateXml(std::string_view text, const Environment& environment) {
  try {
    return Check(text, environment);
  } catch (const Error& error) {
    return {.error_text = error.text()};
  } catch (const std::exception& error) {
    return {.error_text = error.what()};
  }
}

SchemaVerdict SchemaCheck::Check(std::string_view text, const Environment& environment) {
  if (environment.config != nullptr && !settings::CheckXsd(*environment.config)) {
    return {.outcome = SchemaVerdict::Outcome::kSwitchedOff};
  }
  const Root root = RootOf(text);
  const std::string schema_name = root.name + ".xsd";
  const std::string schema_path = environment.aux_path + schema_name;
  if (!environment.host.files.Exists(schema_path)) {
    return {.outcome = SchemaVerdict::Outcome::kNoSchema, .schema = schema_name};
  }
  const std::unique_ptr<XmlDocumentService> document = CreateDocument();
  document->SetAsync(false);
  document->SetValidateOnParse(true);
  const std::unique_ptr<XmlSchemaCache> schemas =
      services_.CreateSchemaCache(ServiceName("XMLSchemaCache", version_));
  if (schemas == nullptr) throw Error(ServiceName("XMLSchemaCache", version_));
  schemas->Add(root.name_space, schema_path);
  document->SetSchemas(*schemas);
  document->LoadXml(SingleByteText(text));
  document->SetAsync(false);
  document->SetValidateOnParse(true);
  const XmlParseReport& report = document->ParseError();
  if (report.error_code == 0) return {};
  return {.error_text = ErrorText(report, schema_name),
          .reason = report.exact_reason,
          .line = report.line,
          .line_text = report.src_text,
          .schema = schema_name};
}

// The version that was there is the first one tried next time.
std::unique_ptr<XmlDocumentService> SchemaCheck::CreateDocument() {
  auto document = services_.CreateDocument(ServiceName("DOMDocument", version_));
  for (const char version : kFallbackVersions) {
    if (document != nullptr) break;
    version_ = version;
    document = services_.CreateDocument(ServiceName("DOMDocument", version_));
  }
  if (document == nullptr) throw Error(std::string(kMissingComponent));
  return document;
}

}  // namespace customsconv
