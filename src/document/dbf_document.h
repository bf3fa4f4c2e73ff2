#ifndef CUSTOMSCONV_DOCUMENT_DBF_DOCUMENT_H_
#define CUSTOMSCONV_DOCUMENT_DBF_DOCUMENT_H_

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "document/document.h"

namespace customsconv {

class TDbfCache;

// One head row of a table set with all its child rows, as a document: each
// block is a table, each record a row.
class TDbfDocument : public TDocument {
 public:
  TDbfDocument(std::string_view code, TDocTypeList& types, TDbfCache& cache,
               Environment& environment);
  ~TDbfDocument() override;

  // Loads one head row and its child rows. The file-name part of `path` is the head
  // row number (1 when it is no number), the folder part the table set's folder.
  // Throws Error when a table cannot be opened.
  void Load(std::string_view path);
  // Writes changed and new records as rows and brings the tables to disk, under the
  // folder's exchange lock. An empty folder means the one loaded from. A user who abandons the
  // save at the lock ends it without an error. Throws Error when a table cannot be opened.
  void Save(std::string_view folder);
  // Notes the row of the record for deletion at the next save and removes the record.
  void DeleteRecord(std::string_view path, bool flag);

  [[nodiscard]] const ShortText& DocFolder() const { return doc_folder_; }
  [[nodiscard]] std::int32_t RootRecNo() const { return root_rec_no_; }
  [[nodiscard]] std::int64_t RowCount() const { return row_count_; }

 private:
  TDbfCache& cache_;
  ShortText doc_folder_;
  std::int32_t root_rec_no_ = 0;
  std::int64_t row_count_ = 0;
};

// A document of a table-set type over `folder`, whose table headers give the
// type its levels.
[[nodiscard]] std::unique_ptr<TDbfDocument> CreateDbfDocument(std::string_view code,
                                                              std::string_view folder,
                                                              TDocTypeList& types, TDbfCache& cache,
                                                              Environment& environment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_DOCUMENT_DBF_DOCUMENT_H_
