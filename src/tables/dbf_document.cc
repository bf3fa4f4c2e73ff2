// Loading and saving as a whole; rows are read by TableLoader and written by TableWriter.

#include "tables/dbf_document.h"

#include <string>

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "dbf/dbf_cache.h"
#include "tables/table_loader.h"
#include "text/file_names.h"
#include "text/numbers.h"

namespace customsconv {
namespace {

// A text on the status line, cleared on every way out.
class StatusLine {
 public:
  StatusLine(Dialogs& dialogs, std::string_view text) : dialogs_(dialogs) { dialogs.Status(text); }
  ~StatusLine() { dialogs_.Status({}); }
  StatusLine(const StatusLine&) = delete;
  StatusLine& operator=(const StatusLine&) = delete;

 private:
  Dialogs& dialogs_;
};

}  // namespace

TDbfDocument::TDbfDocument(std::string_view code, TDocTypeList& types, TDbfCache& cache,
                           Environment& environment)
    : TDocument(code, types, environment), cache_(cache) {
  if (dynamic_cast<const TDbfBasis*>(&RootBasis()) == nullptr) {
    throw Error(std::string("Документ не описан как набор таблиц: "_cp1251).append(code));
  }
}

TDbfDocument::~TDbfDocument() = default;

const TableKeys& TDbfDocument::KeysOf(const TBasis& level) {
  return keys_.try_emplace(&level, level).first->second;
}

void TDbfDocument::Load(std::string_view path) {
  const StatusLine status(environment().host.dialogs, "Загружаю документ для просмотра..."_cp1251);
  deleted_rows_.clear();
  const std::int32_t row = IntOr(FileNameOf(path), 1);
  doc_folder_ = ShortText::Cut(FolderPart(path));  // names of folders are short texts
  OpenBlock({});
  TableLoader loader(cache_, doc_folder_);
  row_count_ = loader.LoadHead(RootRecord(), row);
  root_rec_no_ = row;
  doc_key_ = KeysOf(RootBasis()).Of(RootRecord());
  loader.LoadChildren(RootRecord(), doc_key_);
  ResolveMainBlock();
  Modified = false;
}

void TDbfDocument::Save(std::string_view folder) {
  appended_rows_.clear();
  abandoned_ = false;
  losses_ = {};
  const std::string target(folder.empty() ? doc_folder_.view() : folder);
  doc_key_ = KeysOf(RootBasis()).Of(RootRecord());
  try {
    cache_.BeginSave(target);
  } catch (const SilentAbort&) {
    abandoned_ = true;  // the user gives the save up for another station's sake
    return;
  }
  try {
    WriteRows(target);
  } catch (...) {
    cache_.AbandonSave();
    throw;
  }
  cache_.EndSave();
  Modified = false;
}

void TDbfDocument::WriteRows(const std::string& folder) {
  {
    TableWriter writer(cache_, folder, deleted_rows_);
    if (counts_losses_) writer.CountLosses();
    writer.Write(RootRecord());
    losses_ = writer.Losses();
    appended_rows_ = writer.AppendedRows();
  }
  DeleteRows(cache_, folder, deleted_rows_);
  deleted_rows_.clear();
}

void TDbfDocument::DeleteRecord(std::string_view path) {
  PushPosition();
  try {
    NoteRow(path);
  } catch (const Error&) {
    PopPosition();
    throw;
  }
  PopPosition();
  RemoveRecord(path);
}

// A record that has no row yet leaves none behind.
void TDbfDocument::NoteRow(std::string_view path) {
  if (!SetCurrentPath(path) || CurRecord() == nullptr || CurRecord()->RecNo <= 0) return;
  const auto& level = static_cast<const TDbfBasis&>(CurBasis());
  deleted_rows_[level.table_file].insert(CurRecord()->RecNo);
}

std::unique_ptr<TDbfDocument> CreateDbfDocument(std::string_view code, std::string_view folder,
                                                TDocTypeList& types, TDbfCache& cache,
                                                Environment& environment) {
  std::vector<MissingTable> missing =
      LoadFromDbf(types.GetDocInfo(code), folder, cache, environment);
  auto document = std::make_unique<TDbfDocument>(code, types, cache, environment);
  document->missing_tables_ = std::move(missing);
  return document;
}

}  // namespace customsconv
