#ifndef CUSTOMSCONV_XML_WRITE_DOCUMENT_WRITER_H_
#define CUSTOMSCONV_XML_WRITE_DOCUMENT_WRITER_H_

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "document/document.h"
#include "xml/write/field_plan.h"
#include "xml/write/pattern_cache.h"

namespace customsconv {

// Writes documents as XML text, as schema validation takes it.
//
//   DocumentWriter writer;
//   while (const std::unique_ptr<TDocument> document = container.Next()) {
//     Check(writer.Text(*document));
//   }
//
// The text holds the elements of the customs document under its root, or a ROWSET envelope for a
// document that carries the signature block. Takes time and memory in proportion to the text.
//
// Keeps what it learns about the documents' types from one document to the next, so
// the types must stay as they are as long as the writer lives.
class DocumentWriter {
 public:
  DocumentWriter() = default;
  DocumentWriter(const DocumentWriter&) = delete;
  DocumentWriter& operator=(const DocumentWriter&) = delete;

  // Each line followed by CR LF. Values are in the encoding that the first line names;
  // other lines are always in code page 1251.
  [[nodiscard]] std::string Text(const TDocument& document);

 private:
  class Export;
  [[nodiscard]] const FieldPlan& PlanOf(const TBasis& basis, bool utf8);

  PatternCache patterns_;
  // A level belongs to one type, and a type has one encoding.
  std::unordered_map<const TBasis*, std::unique_ptr<FieldPlan>> plans_;
};

// One document's text as lines without line ends. Empty when no document is given.
[[nodiscard]] std::vector<std::string> ExportXml(const TDocument* document);

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_WRITE_DOCUMENT_WRITER_H_
