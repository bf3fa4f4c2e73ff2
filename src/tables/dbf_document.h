#ifndef CUSTOMSCONV_TABLES_DBF_DOCUMENT_H_
#define CUSTOMSCONV_TABLES_DBF_DOCUMENT_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/lifetime.h"
#include "base/short_text.h"
#include "document/document.h"
#include "tables/table_keys.h"
#include "tables/table_levels.h"
#include "tables/table_writer.h"

namespace customsconv {

class TDbfCache;

// One head row of a table set with all its child rows, as a document: each
// block is a table, each record a row.
//
//   const auto set = CreateDbfDocument("TD5", "C:\\OUT\\", types, cache, environment);
//   set->OpenBlock("");             // a new head row, or set->Load("C:\\OUT\\3") for the third
//   set->SetField("G073", "0001234");
//   set->OpenBlock("\\\\TOVAR");    // a row of the goods table; it needs no G073:
//   set->Save("C:\\OUT\\");         // the save fills keys from the record above (TableKeys)
class TDbfDocument : public TDocument {
 public:
  // The type's levels must have been read from the table headers (CreateDbfDocument does
  // both). Throws Error for a type that is no table set. The arguments must outlive the document.
  TDbfDocument(std::string_view code, TDocTypeList& types, TDbfCache& cache,
               Environment& environment);
  ~TDbfDocument() override;

  // Loads one head row and its child rows. The file-name part of `path` is the head
  // row number (1 when it is no number; beyond the table: a blank row), the folder part the table
  // set's folder. Throws Error when a table cannot be opened; the document is then incomplete.
  void Load(std::string_view path);
  // Writes changed and new records as rows and brings the tables to disk, under the
  // folder's exchange lock. An empty folder means the one loaded from. A user who abandons the
  // save at the lock ends it without an error. Throws Error when a table cannot be opened; rows
  // written so far then stay in the table images, and the lock is gone.
  void Save(std::string_view folder);
  // Rows that the last save appended, by table file name; empty when it was abandoned.
  [[nodiscard]] const RowCounts& AppendedRows() const CUSTOMSCONV_LIFETIME_BOUND {
    return appended_rows_;
  }
  // From now on saves count what the table fields of new rows do not keep of their values.
  void CountLosses() { counts_losses_ = true; }
  // Of the last save.
  [[nodiscard]] const CellLosses& Losses() const CUSTOMSCONV_LIFETIME_BOUND { return losses_; }
  // The last save was abandoned.
  [[nodiscard]] bool abandoned() const { return abandoned_; }
  // Tables that CreateDbfDocument could not open; rows that belong there are written nowhere.
  [[nodiscard]] const std::vector<MissingTable>& MissingTables() const CUSTOMSCONV_LIFETIME_BOUND {
    return missing_tables_;
  }
  // Notes the row of the record for deletion at the next save and removes the record; rows of
  // the records below it stay.
  void DeleteRecord(std::string_view path);

  [[nodiscard]] const ShortText& DocFolder() const CUSTOMSCONV_LIFETIME_BOUND {
    return doc_folder_;
  }
  [[nodiscard]] std::int32_t RootRecNo() const { return root_rec_no_; }
  // Rows of the head table when it was loaded.
  [[nodiscard]] std::int64_t RowCount() const { return row_count_; }
  // The keys of one of the type's levels: which fields of its records the save fills.
  [[nodiscard]] const TableKeys& KeysOf(const TBasis& level) CUSTOMSCONV_LIFETIME_BOUND;
  // The head record's key as of the last load or save.
  [[nodiscard]] const ShortText& DocKey() const CUSTOMSCONV_LIFETIME_BOUND { return doc_key_; }

 private:
  friend std::unique_ptr<TDbfDocument> CreateDbfDocument(std::string_view code,
                                                         std::string_view folder,
                                                         TDocTypeList& types, TDbfCache& cache,
                                                         Environment& environment);
  // Into the tables of `folder`, appended, posted and deleted.
  void WriteRows(const std::string& folder);
  // Moves to the record and notes its row for deletion.
  void NoteRow(std::string_view path);

  TDbfCache& cache_;
  ShortText doc_folder_;
  std::int32_t root_rec_no_ = 0;
  std::int64_t row_count_ = 0;
  ShortText doc_key_;
  std::unordered_map<const TBasis*, TableKeys> keys_;
  DeletedRows deleted_rows_;
  RowCounts appended_rows_;
  bool counts_losses_ = false;
  CellLosses losses_;
  bool abandoned_ = false;
  std::vector<MissingTable> missing_tables_;
};

// A document of a table-set type over `folder`, whose table headers give the
// type its levels.
[[nodiscard]] std::unique_ptr<TDbfDocument> CreateDbfDocument(std::string_view code,
                                                              std::string_view folder,
                                                              TDocTypeList& types, TDbfCache& cache,
                                                              Environment& environment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_DBF_DOCUMENT_H_
