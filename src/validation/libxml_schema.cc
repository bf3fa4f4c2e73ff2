#include "validation/libxml_schema.h"

#include <libxml/globals.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/schemasInternals.h>

#include <optional>

#include "base/code_pages.h"
#include "base/cp1251_literal.h"
#include "base/error.h"
#include "text/file_names.h"
#include "text/words.h"
#include "validation/libxml_error.h"
#include "validation/schema/schema_address.h"

namespace customsconv {
namespace {

using schema::AddressOf;
using schema::FileBelowFolder;

xmlParserInputPtr LoadNothing(const char*, const char*, xmlParserCtxtPtr) { return nullptr; }

// Tells libxml2 that a file could not be had: it then passes an import over, which it takes for
// a damaged one otherwise. (A reference to what the import was to bring stays an error.)
void ReportMissing() {
  xmlError missing{};
  missing.domain = XML_FROM_IO;
  missing.code = XML_IO_LOAD_ERROR;
  missing.level = XML_ERR_WARNING;
  xmlCopyError(&missing, &xmlLastError);
}

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

  // Which files were wanted and could not be had, and why; a sentence each, empty for none.
  [[nodiscard]] const std::string& not_loaded() const { return not_loaded_; }

 private:
  static xmlParserInputPtr Load(const char* address, const char* /*id*/, xmlParserCtxtPtr parser) {
    const xmlParserInputPtr input = address == nullptr ? nullptr : current_->Open(address, parser);
    if (input == nullptr) ReportMissing();
    return input;
  }

  xmlParserInputPtr Open(const char* address, xmlParserCtxtPtr parser) {
    const std::optional<std::string> file = FileBelowFolder(address);
    if (!file) {
      NoteNotLoaded(ToWindows(address, CodePage::kUtf8).append(" лежит вне папки схем"_cp1251));
      return nullptr;
    }
    const std::string path = folder_ + *file;
    schema_.used_files_.push_back({path, files_.Stamp(path)});
    try {
      return InputOver(files_.Read(path), address, parser);
    } catch (const FileError& error) {
      NoteNotLoaded(error.text());
      return nullptr;
    }
  }

  void NoteNotLoaded(std::string_view sentence) {
    not_loaded_.append(not_loaded_.empty() ? "" : "; ").append(sentence);
  }

  static xmlParserInputPtr InputOver(const std::string& bytes, const char* address,
                                     xmlParserCtxtPtr parser) {
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
  std::string not_loaded_;
};

thread_local SchemaFolder* SchemaFolder::current_ = nullptr;

namespace {

// Files that could not be loaded are named, too: what is missing may have stood there.
Error SchemaError(std::string_view schema_file, const FirstXmlError& error,
                  std::string_view not_loaded) {
  std::string text("Не могу использовать схему "_cp1251);
  text.append(schema_file);
  const std::optional<std::string> file = FileBelowFolder(error.file());
  if (file && *file != FileNameOf(schema_file)) text.append(" (").append(*file).append(")");
  if (error.line() > 0) {
    text.append(", строка "_cp1251).append(std::to_string(error.line()));
  }
  text.append(": ").append(ReplaceAll(error.sentence(), schema::kAddressScheme, ""));
  if (!not_loaded.empty()) text.append(" (").append(not_loaded).append(")");
  return Error(text);
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
  throw SchemaError(schema_file, first_error, folder.not_loaded());
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
