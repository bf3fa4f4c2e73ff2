#include "validation/libxml_schema.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/schemasInternals.h>
#include <libxml/uri.h>

#include <optional>

#include "base/code_pages.h"
#include "base/cp1251_literal.h"
#include "base/error.h"
#include "services/file_names.h"
#include "text/words.h"
#include "validation/libxml_error.h"

namespace customsconv {
namespace {

// Schema files are known to libxml2 under addresses of this scheme only, relative
// to the schema's folder; every other address leads nowhere.
constexpr std::string_view kScheme = "schema:///";

struct XmlFree {
  void operator()(void* text) const { xmlFree(text); }
};

std::string AddressOf(std::string_view file_name) {
  const std::string name = Utf8FromWin(file_name);
  const std::unique_ptr<xmlChar, XmlFree> escaped(
      xmlURIEscapeStr(reinterpret_cast<const xmlChar*>(name.c_str()), nullptr));
  return std::string(kScheme) + reinterpret_cast<const char*>(escaped.get());
}

// The file name below the schema's folder that an address stands for; empty
// optional for an address that leads out of it.
std::optional<std::string> FileBelowFolder(std::string_view address) {
  if (!address.starts_with(kScheme)) return std::nullopt;
  const std::string escaped(address.substr(kScheme.size()));
  const std::unique_ptr<char, XmlFree> name(
      xmlURIUnescapeString(escaped.c_str(), static_cast<int>(escaped.size()), nullptr));
  std::optional<std::string> file = WinFromUtf8(name.get());
  if (!file || file->empty() || IsPathSeparator(file->front())) return std::nullopt;
  for (const std::string_view part : Words(*file, CharSet("/\\"))) {
    if (part == ".." || part.find(':') != std::string_view::npos) return std::nullopt;
  }
  return file;
}

xmlParserInputPtr LoadNothing(const char*, const char*, xmlParserCtxtPtr) { return nullptr; }

}  // namespace

// Gives libxml2 the files of one folder while a schema is compiled.
class SchemaFolder {
 public:
  SchemaFolder(const Files& files, std::string_view folder, CompiledSchema& schema)
      : files_(files),
        folder_(folder),
        schema_(schema),
        former_(xmlGetExternalEntityLoader()),
        outer_(current_) {
    current_ = this;
    xmlSetExternalEntityLoader(&SchemaFolder::Load);
  }
  ~SchemaFolder() {
    xmlSetExternalEntityLoader(former_);
    current_ = outer_;
  }
  SchemaFolder(const SchemaFolder&) = delete;
  SchemaFolder& operator=(const SchemaFolder&) = delete;

 private:
  static xmlParserInputPtr Load(const char* address, const char* /*id*/, xmlParserCtxtPtr parser) {
    const std::optional<std::string> file =
        address == nullptr ? std::nullopt : FileBelowFolder(address);
    return file ? current_->Open(*file, address, parser) : nullptr;
  }

  xmlParserInputPtr Open(std::string_view file, const char* address, xmlParserCtxtPtr parser) {
    const std::string path = folder_ + std::string(file);
    schema_.used_files_.push_back({path, files_.Stamp(path)});
    std::string bytes;
    try {
      bytes = files_.Read(path);
    } catch (const FileError&) {
      return nullptr;  // libxml2 reports the address that could not be read
    }
    xmlParserInputBufferPtr buffer = xmlParserInputBufferCreateMem(
        bytes.data(), static_cast<int>(bytes.size()), XML_CHAR_ENCODING_NONE);
    if (buffer == nullptr) return nullptr;
    xmlParserInputPtr input = xmlNewIOInputStream(parser, buffer, XML_CHAR_ENCODING_NONE);
    if (input == nullptr) {
      xmlFreeParserInputBuffer(buffer);
      return nullptr;
    }
    input->filename =
        reinterpret_cast<const char*>(xmlStrdup(reinterpret_cast<const xmlChar*>(address)));
    return input;
  }

  // libxml2 hands its loader no context of ours.
  static thread_local SchemaFolder* current_;

  const Files& files_;
  std::string folder_;
  CompiledSchema& schema_;
  xmlExternalEntityLoader former_;
  SchemaFolder* outer_;
};

thread_local SchemaFolder* SchemaFolder::current_ = nullptr;

namespace {

Error SchemaError(std::string_view schema_file, const FirstXmlError& error) {
  std::string text("Не могу использовать схему "_cp1251);
  text.append(schema_file);
  const std::optional<std::string> file = FileBelowFolder(error.file());
  if (file && *file != FileNameOf(schema_file)) text.append(" (").append(*file).append(")");
  if (error.line() > 0) {
    text.append(", строка "_cp1251).append(std::to_string(error.line()));
  }
  return Error(text.append(": ").append(ReplaceAll(error.Message(), kScheme, "")));
}

}  // namespace

CompiledSchema::CompiledSchema(const Files& files, std::string_view schema_file) : files_(files) {
  xmlInitParser();
  FirstXmlError first_error;
  const SchemaFolder folder(files, FolderPart(schema_file), *this);
  const std::string address = AddressOf(FileNameOf(schema_file));
  const std::unique_ptr<xmlSchemaParserCtxt, decltype(&xmlSchemaFreeParserCtxt)> parser(
      xmlSchemaNewParserCtxt(address.c_str()), &xmlSchemaFreeParserCtxt);
  xmlSchemaSetParserStructuredErrors(parser.get(), &FirstXmlError::Take, &first_error);
  schema_ = xmlSchemaParse(parser.get());
  if (schema_ != nullptr && !first_error.occurred()) return;
  xmlSchemaFree(schema_);
  schema_ = nullptr;
  throw SchemaError(schema_file, first_error);
}

CompiledSchema::~CompiledSchema() {
  if (schema_ != nullptr) xmlSchemaFree(schema_);
}

bool CompiledSchema::IsCurrent() const {
  for (const UsedFile& file : used_files_) {
    if (files_.Stamp(file.path) != file.stamp) return false;
  }
  return true;
}

std::string_view CompiledSchema::TargetNamespace() const {
  if (schema_->targetNamespace == nullptr) return {};
  return reinterpret_cast<const char*>(schema_->targetNamespace);
}

NoExternalFiles::NoExternalFiles() : former_(xmlGetExternalEntityLoader()) {
  xmlSetExternalEntityLoader(&LoadNothing);
}

NoExternalFiles::~NoExternalFiles() { xmlSetExternalEntityLoader(former_); }

}  // namespace customsconv
