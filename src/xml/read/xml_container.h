#ifndef CUSTOMSCONV_XML_READ_XML_CONTAINER_H_
#define CUSTOMSCONV_XML_READ_XML_CONTAINER_H_

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/lifetime.h"
#include "base/short_text.h"
#include "document/document.h"
#include "platform/files.h"
#include "xml/read/document_filler.h"
#include "xml/read/document_finder.h"
#include "xml/read/xml_text.h"

namespace customsconv {

// The documents of one XML file, found by their envelopes or declarations.
//
//   TXMLContainer container("C:\\IN\\decl.xml", types, environment);
//   while (const std::unique_ptr<TDocument> document = container.Next()) {
//     Show(document->DocInfo().Code, document->GetFieldEx("\\\\CustomsProcedure"));
//   }
//   if (container.UnknownIdsFound()) Warn();  // values under names that are no fields
//
// They are yielded one at a time: all of the first kind found, in file order, then all of the
// second, and so on.
class TXMLContainer {
 public:
  // Kinds in order of first appearance.
  struct Kind {
    std::string text;                 // short name, " (", count, ")"
    int type_index = -1;              // in the catalogue
    [[nodiscard]] int Count() const;  // read back from `text`
  };

  // Reads the file and finds its documents. Errors of reading have a blank and the
  // file name appended. `types` and `environment` must outlive the container.
  TXMLContainer(std::string_view file_name, TDocTypeList& types, Environment& environment);
  TXMLContainer(const TXMLContainer&) = delete;
  TXMLContainer& operator=(const TXMLContainer&) = delete;

  // The next document, or null when all have been yielded. Throws Error for a document without end,
  // or one that the parser cannot read; the call after that goes on with the next one. A file that
  // changed meanwhile is read again.
  [[nodiscard]] std::unique_ptr<TDocument> Next();

  [[nodiscard]] const std::string& Text() const CUSTOMSCONV_LIFETIME_BOUND { return text_; }
  [[nodiscard]] const std::vector<Kind>& DocList() const CUSTOMSCONV_LIFETIME_BOUND {
    return doc_list_;
  }
  [[nodiscard]] const ShortText& FileName() const CUSTOMSCONV_LIFETIME_BOUND { return file_name_; }
  [[nodiscard]] int CurIndex() const { return cur_index_; }
  // Roots that stand where a document is expected and of which the catalogue has no type.
  [[nodiscard]] const std::vector<RootName>& UnknownRoots() const CUSTOMSCONV_LIFETIME_BOUND {
    return unknown_roots_;
  }
  // The text of the document that was yielded last; empty when its start was not found, so that it
  // has no values.
  [[nodiscard]] std::string_view CurText() const CUSTOMSCONV_LIFETIME_BOUND { return cur_text_; }
  // The line of the file, from 1, in which a byte of the text stands, given by its address.
  [[nodiscard]] std::size_t FileLineOf(const char* byte) const {
    return lines_.LineOf(text_, static_cast<std::size_t>(byte - text_.data()));
  }
  // Which occurrence (from 1) of its kind was yielded last.
  [[nodiscard]] int CurOccurrence() const { return cur_occurrence_; }
  // Values were met under element names that are no fields of their type.
  [[nodiscard]] bool UnknownIdsFound() const { return lost_.unknown > 0; }
  void ClearUnknownIds() { lost_ = {}; }
  // Of all documents that were yielded since.
  [[nodiscard]] const LostElements& Lost() const CUSTOMSCONV_LIFETIME_BOUND { return lost_; }
  // Characters of the file that code page 1251 lacks.
  [[nodiscard]] std::size_t ReplacedCharacters() const { return lines_.replaced(); }

 private:
  void ReadFile();
  void ListDocuments();
  [[nodiscard]] std::unique_ptr<TDocument> Build(int index, int occurrence);
  [[nodiscard]] std::string_view DocumentText(int type_index, int occurrence);

  TDocTypeList& types_;
  Environment& environment_;
  std::string text_;
  FileLines lines_;
  FileStamp file_age_ = kNoStamp;                    // when text_ was read
  std::unordered_map<int, DocumentFinder> finders_;  // in text_, by catalogue index
  std::vector<Kind> doc_list_;
  std::vector<RootName> unknown_roots_;
  ShortText file_name_;
  int cur_index_ = -1;
  int cur_occurrence_ = 0;
  std::string_view cur_text_;
  LostElements lost_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_READ_XML_CONTAINER_H_
