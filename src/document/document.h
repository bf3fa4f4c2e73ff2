#ifndef CUSTOMSCONV_DOCUMENT_DOCUMENT_H_
#define CUSTOMSCONV_DOCUMENT_DOCUMENT_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"
#include "base/short_text.h"
#include "catalogue/doc_info.h"
#include "catalogue/doc_type_list.h"
#include "document/document_path.h"
#include "document/record.h"
#include "document/record_values.h"
#include "services/environment.h"

namespace customsconv {

// How the records of a block are joined by TDocument::JoinBlockField.
enum class JoinMode : std::uint8_t { kLines = 0, kBlanks = 1, kBlanksAndLines = 2 };

// A value and the entry that it was read from; null when the read found none.
struct FieldValue {
  std::string text;
  const TFieldInfo* field = nullptr;
};

// One document of a catalogue type in memory: a tree of records, every value a text.
//
//   const auto document = CreateDocument("ESADout", types, environment);
//   document->OpenBlock("");                      // a fresh top record; before it nothing is kept
//   document->OpenBlock("\\\\TOVAR");             // one goods record more, now current
//   document->SetField("G33", "8413708100");
//   document->GetFieldEx("\\\\TOVAR\\1\\G33");    // "8413708100", wherever we are
//
// It has a current position (a record or a record list, reached by a path) and a stack of
// saved positions; most operations work relative to it:
//
//   document->SetCurrentPath("\\\\TOVAR\\1\\");
//   document->PushPosition();
//   document->SetCurrentPath("\\\\");
//   document->SetField("G011", "10");             // of the top record
//   document->PopPosition();
//   document->GetField("G33");                    // "8413708100", of the goods record
//
// Paths alternate block names and record numbers (from 1): TOVAR\3\DOCS\1. A path that begins
// with "\\" starts at the top record, any other at the current position (but see GetFieldEx).
//
// Operations that read or store one value never throw: an error inside one is shown as
// a message ("Doc.GetField : " and so on, followed by its text).
class TDocument {
 public:
  // The type's entry, its basis and its numbering; the document has no field
  // slots until OpenBlock with an empty path. `types` and `environment` must outlive it.
  TDocument(std::string_view code, TDocTypeList& types, Environment& environment);
  virtual ~TDocument();
  TDocument(const TDocument&) = delete;
  TDocument& operator=(const TDocument&) = delete;

  // ---- position
  // False, and nothing changes, when the path does not resolve. Throws Error when it leads
  // through a record that has no slots.
  bool SetCurrentPath(std::string_view path);
  // Restoring a position brings back its path, but not GoodsIndex.
  void PushPosition();
  void PopPosition();  // throws Error "Стек путей пуст"
  // Appends a record to the block that `path` names, or inserts it in front of record
  // `record_number` when that is above 0, and makes it current. An empty path
  // starts the whole document afresh: references to its records are good no longer. A
  // parent that does not exist is opened first, once, by its block's name. Throws Error when
  // the level has no such block. Goods stay in the order in which they are opened.
  void OpenBlock(std::string_view path, int record_number = 0);
  // Strings at the place that the path leads to: the records of a block, the slots of a
  // record; 0 when it leads nowhere.
  [[nodiscard]] int RecordCount(std::string_view path);
  // The main block's records that are there, null without any; never opens one.
  [[nodiscard]] const RecordList* MainRecords() const CUSTOMSCONV_LIFETIME_BOUND;
  [[nodiscard]] int MainRecordCount() const;
  // The level of the main block's records; the top level for a type without such a block, also for
  // a table set whose table of it could not be opened. Never opens a record.
  [[nodiscard]] const TBasis& MainBasis() const CUSTOMSCONV_LIFETIME_BOUND;

  // ---- reading
  // The Read functions tell with the value which field it is of; the Get functions give the text.
  FieldValue ReadField(std::string_view name);
  FieldValue ReadFieldByNum(int position);
  FieldValue ReadFieldEx(std::string_view path, bool flatten = true);
  FieldValue ReadFieldById(int identifier, int goods_index);
  FieldValue ReadFieldByName(std::string_view name, int goods_index);
  std::string GetField(std::string_view name);
  std::string GetFieldByNum(int position);
  std::string GetFieldEx(std::string_view path, bool flatten = true);
  std::string GetFieldById(int identifier, int goods_index);
  std::string GetFieldByName(std::string_view name, int goods_index);
  // The field (the first one for an empty name) of all records of the block, in one text.
  // Leaves FlattenLongText on. Throws Error where the path leads through a record without slots.
  FieldValue JoinBlockField(std::string_view block_path, std::string_view field_name,
                            JoinMode mode);

  // ---- writing
  void SetField(std::string_view name, std::string_view value);
  void SetFieldByNum(int position, std::string_view value);
  // Adds to the value of a plain field, as reading it unflattened and storing
  // the longer text would, without the cost of the copy.
  void AppendFieldByNum(int position, std::string_view tail);
  void SetFieldEx(std::string_view path, std::string_view value);
  void SetFieldById(int identifier, int goods_index, std::string_view value);
  void SetFieldByName(std::string_view name, int goods_index, std::string_view value);
  void SetChoice(int position, int choice);

  // ---- state
  [[nodiscard]] TDocInfo& DocInfo() const { return info_; }
  [[nodiscard]] const TBasis& RootBasis() const CUSTOMSCONV_LIFETIME_BOUND { return *root_basis_; }
  [[nodiscard]] TDocFieldList& RootRecord() const CUSTOMSCONV_LIFETIME_BOUND {
    return *root_record_;
  }
  [[nodiscard]] const TBasis& CurBasis() const CUSTOMSCONV_LIFETIME_BOUND {
    return *position_.basis;
  }
  [[nodiscard]] bool CurIsRecord() const { return position_.record != nullptr; }
  // The current record; null while the position is a record list.
  [[nodiscard]] TDocFieldList* CurRecord() const CUSTOMSCONV_LIFETIME_BOUND {
    return position_.record;
  }
  [[nodiscard]] const ShortText& CurPath() const CUSTOMSCONV_LIFETIME_BOUND { return cur_path_; }
  [[nodiscard]] int GoodsIndex() const { return goods_index_; }
  [[nodiscard]] Environment& environment() const { return environment_; }

  bool FlattenLongText = true;
  bool Modified = false;
  // Part look-ups in composite values search characters start..end-1 (from 0) only.
  struct PartRangeType {
    int flag = -1;  // below 0: off
    int start = 0;
    int end = 0;
  } PartRange;

 protected:
  // Replaces the top record by one with empty slots, drops all records below the old one
  // and moves the position to the top. Records that saved positions may lead to stay readable.
  TDocFieldList& StartAfresh();
  // Finds the main block's records; opens the first one when there is none.
  void ResolveMainBlock();
  // Removes the record that `path` leads to (as SetCurrentPath takes it) from its block; false
  // when it leads to none.
  bool RemoveRecord(std::string_view path);

 private:
  struct PathPlace {
    DocumentPlace place;
    std::size_t path_size;  // of its path, the last bytes of saved_paths_
  };

  [[nodiscard]] DocumentPlace RootPlace() const { return {root_basis_, root_record_, nullptr}; }
  [[nodiscard]] std::optional<DocumentPlace> Resolve(std::string_view path) const;
  [[nodiscard]] int GoodsIndexOf(std::string_view path) const;
  // Position of the main block in the top level, -1 for a type that has none.
  [[nodiscard]] int MainBlockPosition() const;
  // The main-block record that an identifier of 1000 or above speaks of; null when there is none.
  [[nodiscard]] TDocFieldList* MainRecord(int goods_index);
  void OpenRecord(std::string_view parent_path, std::string_view block_name, int record_number);

  [[nodiscard]] FieldValue ReadFrom(const TDocFieldList& record, int position) const;
  [[nodiscard]] FieldValue ReadByPath(std::string_view path) const;
  FieldValue ReadById(int identifier, int goods_index);
  void StoreField(TDocFieldList& record, int position, std::string_view value);
  void StoreFieldEx(std::string_view path, std::string_view value);
  void StoreFieldById(int identifier, int goods_index, std::string_view value);
  [[nodiscard]] SearchedRange SearchedParts() const;

  // Stores `choice` in the mark of the choice at `position`; false when no entry stands before it.
  bool StoreChoice(TDocFieldList& record, int position, int choice);

  // Runs a public value operation: an error is shown under the operation's name.
  template <class Operation>
  auto Guarded(std::string_view name, Operation operation);

  TDocInfo& info_;
  Environment& environment_;
  const TBasis* root_basis_;
  RecordArena arena_;  // holds every record of the document
  TDocFieldList* root_record_;
  DocumentPlace position_;
  ShortText cur_path_;
  std::vector<PathPlace> saved_positions_;
  std::string saved_paths_;  // one behind the other: deep stacks stay small
  int goods_index_ = 0;
  const TBasis* main_basis_ = nullptr;  // null until the main block was resolved
  RecordList* main_records_ = nullptr;  // null also for a type without a main block
};

// Brings a document back to where it stood at the end of a scope.
class SavedPosition {
 public:
  explicit SavedPosition(TDocument& document) : document_(document) { document_.PushPosition(); }
  ~SavedPosition() { document_.PopPosition(); }
  SavedPosition(const SavedPosition&) = delete;
  SavedPosition& operator=(const SavedPosition&) = delete;

 private:
  TDocument& document_;
};

// An empty document of that type. Throws Error for an unknown code and for a
// table-set type.
[[nodiscard]] std::unique_ptr<TDocument> CreateDocument(std::string_view code, TDocTypeList& types,
                                                        Environment& environment);
// The first of the names (separated by blanks, "," or ";") that the catalogue
// holds, else the last one.
[[nodiscard]] std::unique_ptr<TDocument> CreateDocumentByNames(std::string_view names,
                                                               TDocTypeList& types,
                                                               Environment& environment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_DOCUMENT_DOCUMENT_H_
