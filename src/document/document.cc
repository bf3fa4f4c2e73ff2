#include "document/document.h"

#include <algorithm>

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "text/numbers.h"
#include "text/words.h"

namespace customsconv {
namespace {

// `path` without one closing separator.
std::string_view WithoutSeparator(std::string_view path) {
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
  const SavedPosition& saved = saved_positions_.back();
  const std::size_t path_start = saved_paths_.size() - saved.path_size;
  position_ = saved.place;
  cur_path_ = std::string_view(saved_paths_).substr(path_start);
  saved_paths_.resize(path_start);
  saved_positions_.pop_back();
}

int TDocument::RecordCount(std::string_view path) {
  const std::optional<DocumentPlace> place = Resolve(path);
  if (!place) return 0;
  return place->record != nullptr ? place->record->Count() : place->list->Count();
}

// ---- records

void TDocument::OpenBlock(std::string_view path, int record_number, bool /*in_goods_order*/) {
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
  const int position = position_.basis->IndexOfName(block_name);
  if (position < 0 || !position_.basis->Item(position).is_block) {
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
  cur_path_ = parent_path;
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

const TBasis& TDocument::GetMainBasis() {
  if (main_basis_ == nullptr) ResolveMainBlock();
  return *main_basis_;
}

const TBasis* TDocument::MainBlockBasis() const {
  const int position = MainBlockPosition();
  return position < 0 ? nullptr : root_basis_->Item(position).block.get();
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
  if (info_.MainBlock.empty()) return -1;
  const int position = root_basis_->IndexOfName(info_.MainBlock);
  return position >= 0 && root_basis_->Item(position).is_block ? position : -1;
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
