// Positions, the operations relative to them, and the main block. Texts live in the records.

#include "document/document.h"

#include <algorithm>

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "text/numbers.h"
#include "text/words.h"

namespace customsconv {
namespace {

// Field identifiers that are read and stored.
constexpr int kLastReadableId = 65000;
constexpr int kFirstUnstorableId = 6500;  // smaller than what reading knows; callers rely on it

constexpr std::string_view kLineBreak = "\r\n";

// Sets a flag for a scope.
class FlagSetting {
 public:
  FlagSetting(bool& flag, bool value, bool afterwards) : flag_(flag), afterwards_(afterwards) {
    flag_ = value;
  }
  ~FlagSetting() { flag_ = afterwards_; }
  FlagSetting(const FlagSetting&) = delete;
  FlagSetting& operator=(const FlagSetting&) = delete;

 private:
  bool& flag_;
  bool afterwards_;
};

bool EndsWithLineBreak(std::string_view text) {
  return text.ends_with('\n') || text.ends_with('\r');
}

// Adds what separates the records of a joined block.
void AppendSeparator(std::string& text, JoinMode mode) {
  if (mode != JoinMode::kLines && !EndsWithLineBreak(text) && !text.ends_with(' ')) text += ' ';
  if (mode != JoinMode::kBlanks && !EndsWithLineBreak(text)) text += kLineBreak;
}

// `path` without one closing separator.
std::string_view WithoutSeparator(std::string_view path CUSTOMSCONV_LIFETIME_BOUND) {
  if (path.ends_with('\\')) path.remove_suffix(1);
  return path;
}

}  // namespace

TDocument::TDocument(std::string_view code, TDocTypeList& types, Environment& environment)
    : info_(types.GetDocInfo(code)),
      environment_(environment),
      root_basis_(&info_.GetBasis(environment)),
      root_record_(arena_.New<TDocFieldList>(*root_basis_, arena_)),
      position_(RootPlace()) {
  // Made with the first document of the type, which fails when its settings are missing.
  static_cast<void>(info_.Numbering(environment));
}

TDocument::~TDocument() = default;

// ---- position

std::optional<DocumentPlace> TDocument::Resolve(std::string_view path) const {
  DocumentPlace place = TakePrefix(path, kRootPrefix) ? RootPlace() : position_;
  if (!WalkPath(path, place)) return std::nullopt;
  return place;
}

bool TDocument::SetCurrentPath(std::string_view path) {
  const std::optional<DocumentPlace> place = Resolve(path);
  if (!place) return false;
  ShortText reached;
  if (!TakePrefix(path, kRootPrefix)) reached = cur_path_;
  reached += path;  // which may be a view of the path that we leave
  if (!reached.empty() && !reached.view().ends_with('\\')) reached += '\\';
  position_ = *place;
  cur_path_ = reached;
  goods_index_ = GoodsIndexOf(cur_path_);
  return true;
}

int TDocument::GoodsIndexOf(std::string_view path) const {
  constexpr std::size_t kMostDigits = 5;
  if (info_.MainBlock.empty() || !TakePrefix(path, info_.MainBlock)) return 0;
  if (!TakePrefix(path, "\\")) return 0;
  const std::string_view number = path.substr(0, path.find('\\')).substr(0, kMostDigits);
  return std::max(IntOr(number, 1) - 1, 0);
}

void TDocument::PushPosition() {
  saved_positions_.push_back({position_, cur_path_.size()});
  saved_paths_ += cur_path_.view();
}

void TDocument::PopPosition() {
  if (saved_positions_.empty()) throw Error(std::string("Стек путей пуст"_cp1251));
  const PathPlace& saved = saved_positions_.back();
  const std::size_t path_start = saved_paths_.size() - saved.path_size;
  position_ = saved.place;
  // It was one when it was saved: nothing is lost.
  cur_path_ = ShortText::Cut(std::string_view(saved_paths_).substr(path_start));
  saved_paths_.resize(path_start);
  saved_positions_.pop_back();
}

int TDocument::RecordCount(std::string_view path) {
  const std::optional<DocumentPlace> place = Resolve(path);
  if (!place) return 0;
  return place->record != nullptr ? place->record->Count() : place->list->Count();
}

// ---- records

void TDocument::OpenBlock(std::string_view path, int record_number) {
  Modified = true;
  const std::string kept(path);  // `path` may be a view of the path that we leave
  path = kept;
  // A parent that is not there is opened first, and its own parent before it: the
  // outermost record comes last here.
  struct Pending {
    std::string_view parent, block;
  };
  std::vector<Pending> pending;
  for (;;) {
    path = WithoutSeparator(path);
    if (path.empty()) {
      StartAfresh();
      break;
    }
    if (TakePrefix(path, kRootPrefix)) SetCurrentPath(kRootPrefix);
    const SplitPath split = SplitLastPart(path);
    const std::string_view parent = WithoutSeparator(split.parent);
    pending.push_back({parent, split.last});
    if (parent.empty() || SetCurrentPath(parent)) break;
    path = WithoutSeparator(SplitLastPart(parent).parent);
  }
  for (; !pending.empty(); pending.pop_back()) {
    OpenRecord(pending.back().parent, pending.back().block,
               pending.size() == 1 ? record_number : 0);
  }
}

void TDocument::OpenRecord(std::string_view parent_path, std::string_view block_name,
                           int record_number) {
  const int position = position_.basis->IndexOfBlock(block_name);
  if (position < 0) {
    throw Error(std::string("Не могу создать блок  "_cp1251)
                    .append(cur_path_)
                    .append(parent_path)
                    .append("\\")
                    .append(block_name));
  }
  if (position_.record == nullptr || position >= position_.record->Count()) {
    throw ListIndexError(position);
  }
  RecordList& list = position_.record->EnsureRecords(position);
  const int number = record_number > 0 ? record_number : list.Count() + 1;
  TDocFieldList& record = list.Insert(number, number);
  position_ = {&list.basis(), &record, nullptr};
  // The path is the argument's own: what a relative one started from is not put in front.
  // Paths of positions are short; the records below a cut one can be reached by their parent only.
  cur_path_ = ShortText::Cut(parent_path);
  if (!parent_path.empty()) cur_path_ += '\\';
  cur_path_ += block_name;
  cur_path_ += '\\';
  cur_path_ += std::to_string(number);
  cur_path_ += '\\';
}

TDocFieldList& TDocument::StartAfresh() {
  // A saved position may lead to any record of the old tree.
  if (saved_positions_.empty()) arena_.Clear();
  main_basis_ = nullptr;
  main_records_ = nullptr;
  root_record_ = arena_.New<TDocFieldList>(*root_basis_, arena_);
  root_record_->Fill();
  position_ = RootPlace();
  cur_path_.clear();
  goods_index_ = 0;
  return *root_record_;
}

bool TDocument::RemoveRecord(std::string_view path) {
  if (path.ends_with('\\')) path.remove_suffix(1);
  const SplitPath split = SplitLastPart(path);
  const std::optional<DocumentPlace> place = Resolve(split.parent);
  if (!place || place->list == nullptr) return false;
  const int number = IntOr(split.last, 0);
  if (number < 1 || number > place->list->Count()) return false;
  place->list->Remove(number);
  Modified = true;
  return true;
}

// ---- main block

const TBasis& TDocument::MainBasis() const {
  const int position = MainBlockPosition();
  return position < 0 ? *root_basis_ : *root_basis_->Item(position).block;
}

const RecordList* TDocument::MainRecords() const {
  const int position = MainBlockPosition();
  if (position < 0 || position >= root_record_->Count()) return nullptr;
  return root_record_->Records(position);
}

int TDocument::MainRecordCount() const {
  const RecordList* const records = MainRecords();
  return records == nullptr ? 0 : records->Count();
}

int TDocument::MainBlockPosition() const {
  return info_.MainBlock.empty() ? -1 : root_basis_->IndexOfBlock(info_.MainBlock);
}

void TDocument::ResolveMainBlock() {
  const int position = MainBlockPosition();
  if (position < 0) {
    main_basis_ = root_basis_;
    main_records_ = nullptr;
    return;
  }
  if (position >= root_record_->Count()) throw ListIndexError(position);
  if (root_record_->Records(position) == nullptr) {
    Modified = true;
    PushPosition();
    SetCurrentPath(kRootPrefix);
    OpenRecord({}, info_.MainBlock, 0);  // by its whole name, which a path could not hold
    PopPosition();
  }
  main_records_ = root_record_->Records(position);
  main_basis_ = &main_records_->basis();
}

template <class Operation>
auto TDocument::Guarded(std::string_view name, Operation operation) {
  try {
    return operation();
  } catch (const Error& error) {
    std::string message("Doc.");
    environment_.host.dialogs.Message(message.append(name).append(" : ").append(error.text()));
  }
  return decltype(operation())();
}

// ---- reading

FieldValue TDocument::ReadField(std::string_view name) {
  return Guarded("GetField", [&] { return ReadFieldByNum(CurBasis().IndexOfName(name)); });
}

FieldValue TDocument::ReadFieldByNum(int position) {
  if (position_.record == nullptr) return {};
  return ReadFrom(*position_.record, position);
}

FieldValue TDocument::ReadFieldEx(std::string_view path, bool flatten) {
  const FlagSetting setting(FlattenLongText, FlattenLongText && flatten, FlattenLongText);
  return Guarded("GetFieldEx", [&] { return ReadByPath(path); });
}

FieldValue TDocument::ReadFieldById(int identifier, int goods_index) {
  return Guarded("GetFieldById", [&] { return ReadById(identifier, goods_index); });
}

FieldValue TDocument::ReadFieldByName(std::string_view name, int goods_index) {
  return ReadFieldById(info_.Numbering(environment_).FieldIdByName(name), goods_index);
}

std::string TDocument::GetField(std::string_view name) { return ReadField(name).text; }

std::string TDocument::GetFieldByNum(int position) { return ReadFieldByNum(position).text; }

std::string TDocument::GetFieldEx(std::string_view path, bool flatten) {
  return ReadFieldEx(path, flatten).text;
}

std::string TDocument::GetFieldById(int identifier, int goods_index) {
  return ReadFieldById(identifier, goods_index).text;
}

std::string TDocument::GetFieldByName(std::string_view name, int goods_index) {
  return ReadFieldByName(name, goods_index).text;
}

FieldValue TDocument::ReadFrom(const TDocFieldList& record, int position) const {
  if (position < 0 || position >= record.Count()) return {};
  return {ReadRecordValue(record, position, FlattenLongText, SearchedParts()),
          &record.Basis().Item(position)};
}

SearchedRange TDocument::SearchedParts() const {
  if (PartRange.flag < 0) return std::nullopt;
  return TextRange{static_cast<std::size_t>(std::max(PartRange.start, 0)),
                   static_cast<std::size_t>(std::max(PartRange.end, 0))};
}

FieldValue TDocument::ReadByPath(std::string_view path) const {
  TakePrefix(path, kRootPrefix);
  DocumentPlace place = TakePrefix(path, kCurrentPrefix) ? position_ : RootPlace();
  const SplitPath split = SplitLastPart(path);
  // A name alone is looked up as a whole, one behind a record path like a part of that path.
  const std::string_view name = split.parent.empty() ? path : split.last;
  if (!WalkPath(split.parent, place) || place.record == nullptr) return {};
  return ReadFrom(*place.record, place.basis->IndexOfName(name));
}

FieldValue TDocument::ReadById(int identifier, int goods_index) {
  if (identifier <= 0 || identifier > kLastReadableId || position_.record == nullptr) return {};
  if (identifier < kFirstMainBlockId) return ReadFrom(*root_record_, identifier - 1);
  const TDocFieldList* const record = MainRecord(goods_index);
  return record == nullptr ? FieldValue() : ReadFrom(*record, identifier - kFirstMainBlockId);
}

TDocFieldList* TDocument::MainRecord(int goods_index) {
  if (main_basis_ == nullptr) ResolveMainBlock();
  if (main_records_ == nullptr || goods_index < 0 || goods_index >= main_records_->Count()) {
    return nullptr;
  }
  return &main_records_->Record(goods_index + 1);
}

FieldValue TDocument::JoinBlockField(std::string_view block_path, std::string_view field_name,
                                     JoinMode mode) {
  const FlagSetting setting(FlattenLongText, /*value=*/false, /*afterwards=*/true);
  const std::optional<DocumentPlace> block = Resolve(block_path);
  if (!block || block->list == nullptr || block->list->Count() == 0) return {};
  const int position = field_name.empty() ? 0 : block->basis->IndexOfName(field_name);
  FieldValue joined;
  for (int number = 1; position >= 0 && number <= block->list->Count(); ++number) {
    if (!joined.text.empty()) AppendSeparator(joined.text, mode);
    const FieldValue value = ReadFrom(block->list->Record(number), position);
    joined.text += value.text;
    joined.field = value.field;
    if (value.text.empty() && mode != JoinMode::kBlanks) joined.text += kLineBreak;
  }
  // The goods index is left at the record that was looked at last.
  ShortText path;
  if (!TakePrefix(block_path, kRootPrefix)) path = cur_path_;
  path += block_path;
  path += '\\';
  path += std::to_string(position < 0 ? 1 : block->list->Count());
  goods_index_ = GoodsIndexOf(path);
  return joined;
}

// ---- storing

void TDocument::SetField(std::string_view name, std::string_view value) {
  Guarded("SetField", [&] {
    if (position_.record == nullptr) return;
    StoreField(*position_.record, position_.basis->IndexOfName(name), value);
  });
}

void TDocument::SetFieldByNum(int position, std::string_view value) {
  Guarded("SetFieldByNum", [&] {
    if (position_.record == nullptr || position >= position_.record->Count()) return;
    StoreField(*position_.record, position, value);
  });
}

void TDocument::AppendFieldByNum(int position, std::string_view tail) {
  Guarded("SetFieldByNum", [&] {
    TDocFieldList* const record = position_.record;
    if (record == nullptr || position < 0 || position >= record->Count()) return;
    const TFieldInfo& entry = position_.basis->Item(position);
    if (entry.type == FieldType::kLogical && record->Text(position).empty())
      record->SetText(position, "0");
    if (entry.type == FieldType::kPart) {  // what is read is not what is stored
      const std::string value = ReadFrom(*record, position).text;
      StoreField(*record, position, value + std::string(tail));
      return;
    }
    record->AppendText(position, tail);
    Modified = true;
  });
}

void TDocument::SetFieldEx(std::string_view path, std::string_view value) {
  Guarded("SetFieldEx", [&] { StoreFieldEx(path, value); });
}

void TDocument::SetFieldById(int identifier, int goods_index, std::string_view value) {
  Guarded("SetFieldById", [&] { StoreFieldById(identifier, goods_index, value); });
}

void TDocument::SetFieldByName(std::string_view name, int goods_index, std::string_view value) {
  SetFieldById(info_.Numbering(environment_).FieldIdByName(name), goods_index, value);
}

void TDocument::StoreField(TDocFieldList& record, int position, std::string_view value) {
  if (StoreRecordValue(record, position, value, SearchedParts())) Modified = true;
}

void TDocument::StoreFieldEx(std::string_view path, std::string_view value) {
  std::string_view record = SplitLastPart(path).parent;
  const std::string_view name = path.substr(record.size());  // whole, however long it is
  TakePrefix(record, kCurrentPrefix);
  if (record.empty()) {
    SetField(name, value);
    return;
  }
  const SavedPosition saved(*this);
  if (SetCurrentPath(record)) SetField(name, value);
}

void TDocument::StoreFieldById(int identifier, int goods_index, std::string_view value) {
  if (identifier <= 0 || identifier >= kFirstUnstorableId || position_.record == nullptr) return;
  if (identifier < kFirstMainBlockId) {
    StoreField(*root_record_, identifier - 1, value);
  } else if (TDocFieldList* const record = MainRecord(goods_index)) {
    StoreField(*record, identifier - kFirstMainBlockId, value);
  }
}

// ---- choice marks

void TDocument::SetChoice(int position, int choice) {
  if (position_.record == nullptr) return;
  if (StoreChoice(*position_.record, position, choice)) return;
  const int block = root_basis_->IndexOfName(ExtractWord(1, cur_path_, "\\"));
  if (block > 0) StoreChoice(*root_record_, block, choice);
}

bool TDocument::StoreChoice(TDocFieldList& record, int position, int choice) {
  const int mark = EntryBeforeChoice(record.Basis(), position);
  if (mark < 0) return false;
  if (ContainsNoCase(record.Basis().Item(mark).name, "_choice")) {
    StoreField(record, mark, std::to_string(choice));
  }
  return true;
}

// ---- creation

std::unique_ptr<TDocument> CreateDocument(std::string_view code, TDocTypeList& types,
                                          Environment& environment) {
  if (types.GetDocInfo(code).HasDbfName) {
    throw Error(std::string("Для DbfDocument-ов своя функция есть!"_cp1251));
  }
  return std::make_unique<TDocument>(code, types, environment);
}

std::unique_ptr<TDocument> CreateDocumentByNames(std::string_view names, TDocTypeList& types,
                                                 Environment& environment) {
  std::string_view chosen;
  for (const std::string_view name : Words(names, " ,;")) {
    chosen = name;
    if (types.IndexOf(name) >= 0) break;
  }
  return std::make_unique<TDocument>(chosen, types, environment);
}

}  // namespace customsconv
