#include "entry/library.h"

#include "entry/conversion_driver.h"
#include "entry/failure_text.h"
#include "text/file_names.h"
#include "xml/read/xml_container.h"
#include "xml/write/document_writer.h"

namespace customsconv {
namespace {

// A line of the list that the host shows: the document and the first line of what is wrong.
std::string ErrorLine(std::string_view short_name, std::string_view error_text) {
  std::string line(short_name);
  return line.append(":").append(error_text.substr(0, error_text.find('\r')));
}

}  // namespace

Library::Library(Host& host, XmlServices& xml_services)
    : tables_(host), state_(host), schema_check_(xml_services) {}

bool Library::Xml2ArmTi(const ShortText& program_dir, const ShortText& rules_file,
                        const ShortText& xml_file, const ShortText& output_dir,
                        FileAccount* account) {
  quiet_failure_.clear();
  if (!state_.StartUp(program_dir, FolderPart(rules_file))) {
    quiet_failure_ = state_.quiet_failure();
    return false;
  }
  try {
    RunConversion(rules_file, xml_file, output_dir, state_.types(), tables_, state_.environment(),
                  account);
    return true;
  } catch (const std::exception& error) {
    quiet_failure_ = ToldText(error);
  }
  return false;
}

bool Library::CheckXsd(const ShortText& program_dir, const ShortText& schema_path,
                       const ShortText& xml_file, LineList& errors, CheckObserver* observer) {
  quiet_failure_.clear();
  if (!state_.StartUp(program_dir, FolderPart(schema_path))) {
    quiet_failure_ = state_.quiet_failure();
    return false;
  }
  const bool result = CheckDocuments(xml_file, errors, observer);
  state_.TearDown();
  return result;
}

bool Library::CheckDocuments(const ShortText& xml_file, LineList& errors, CheckObserver* observer) {
  TXMLContainer container(xml_file, state_.types(), state_.environment());
  if (observer != nullptr) observer->FileRead(ContentOf(container));
  DocumentWriter writer;
  while (const std::unique_ptr<TDocument> document = container.Next()) {
    const std::string text = writer.Text(*document);
    if (text.empty()) continue;
    try {
      const SchemaVerdict verdict = schema_check_.ValidateXml(text, state_.environment());
      const std::string_view short_name = document->DocInfo().ShortName;
      if (!verdict.error_text.empty()) errors.Append(ErrorLine(short_name, verdict.error_text));
      if (observer == nullptr) continue;
      if (!verdict.error_text.empty()) {
        observer->Found(OriginalPlaceOf(verdict, text, container));
      }
      observer->Checked(short_name, container.CurOccurrence(), verdict);
    } catch (const std::exception& error) {
      quiet_failure_ = ToldText(error);
      return false;
    }
  }
  return true;
}

}  // namespace customsconv
