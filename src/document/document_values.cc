// Reading and storing of values.

#include <algorithm>

#include "base/error.h"
#include "document/document.h"
#include "text/blanks.h"
#include "text/words.h"

namespace customsconv {
namespace {

// Field identifiers: top-level fields from 1, fields of the main block from 1000.
constexpr int kFirstMainId = 1000;
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

// Brings the position back at the end of a scope.
class PositionKeeper {
 public:
  explicit PositionKeeper(TDocument& document) : document_(document) { document_.PushPosition(); }
  ~PositionKeeper() { document_.PopPosition(); }
  PositionKeeper(const PositionKeeper&) = delete;
  PositionKeeper& operator=(const PositionKeeper&) = delete;

 private:
  TDocument& document_;
};

// Re-breaks a long text into lines as wide as the field is printed. That takes the fonts
// of a print style, and there is none here: the text keeps its own line breaks.
std::string_view FitLongText(std::string_view text, const TFieldInfo& /*field*/) { return text; }

// Position of the composite field that a part belongs to: the nearest one before it; -1
// when there is none.
int CompositeOf(const TBasis& basis, int part_position) {
  int position = part_position;
  while (position >= 0 && basis.Item(position).type != 'M') --position;
  return position;
}

bool EndsWithLineBreak(std::string_view text) {
  return text.ends_with('\n') || text.ends_with('\r');
}

// Adds what separates the records of a joined block.
void AppendSeparator(std::string& text, JoinMode mode) {
  if (mode != JoinMode::kLines && !EndsWithLineBreak(text) && !text.ends_with(' ')) text += ' ';
  if (mode != JoinMode::kBlanks && !EndsWithLineBreak(text)) text += kLineBreak;
}

}  // namespace

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

std::string TDocument::GetField(std::string_view name) {
  return Guarded("GetField", [&] { return GetFieldByNum(CurBasis().IndexOfName(name)); });
}

std::string TDocument::GetFieldByNum(int position) {
  last_field_ = nullptr;
  if (position_.record == nullptr) return {};
  return ReadField(*position_.basis, *position_.record, position);
}

std::string TDocument::GetFieldEx(std::string_view path, bool flatten) {
  const FlagSetting setting(FlattenLongText, FlattenLongText && flatten, FlattenLongText);
  return Guarded("GetFieldEx", [&] { return ReadFieldEx(path); });
}

std::string TDocument::GetFieldById(int identifier, int goods_index) {
  return Guarded("GetFieldById", [&] { return ReadFieldById(identifier, goods_index); });
}

std::string TDocument::GetFieldByName(std::string_view name, int goods_index) {
  return GetFieldById(info_.Numbering(environment_).FieldIdByName(name), goods_index);
}

std::string TDocument::ReadField(const TBasis& basis, const TDocFieldList& record, int position) {
  last_field_ = nullptr;
  if (position < 0 || position >= record.Count()) return {};
  const TFieldInfo& entry = basis.Item(position);
  last_field_ = &entry;
  if (entry.type == 'V') return ReadPart(basis, record, position);
  const std::string_view text = record.Text(position);
  if (entry.type == 'L') return text.empty() ? "0" : std::string(text);
  if (FlattenLongText && entry.IsLongText()) return StripControls(text, /*trim_end=*/true);
  return std::string(text);
}

std::string TDocument::ReadPart(const TBasis& basis, const TDocFieldList& record,
                                int position) const {
  const int composite = CompositeOf(basis, position);
  if (composite < 0) return {};
  const std::string_view text = record.Text(composite);
  const TextRange range = SearchedRange().value_or(TextRange{0, text.size()});
  return std::string(PartValue(text, position - composite, range));
}

std::optional<TextRange> TDocument::SearchedRange() const {
  if (PartRange.flag < 0) return std::nullopt;
  return TextRange{static_cast<std::size_t>(std::max(PartRange.start, 0)),
                   static_cast<std::size_t>(std::max(PartRange.end, 0))};
}

std::string TDocument::ReadFieldEx(std::string_view path) {
  last_field_ = nullptr;
  TakePrefix(path, kRootPrefix);
  DocumentPlace place = TakePrefix(path, kCurrentPrefix) ? position_ : RootPlace();
  const SplitPath split = SplitLastPart(path);
  // A name alone is looked up as a whole, one behind a record path like a part of that path.
  const std::string_view name = split.parent.empty() ? path : split.last;
  if (!WalkPath(split.parent, place) || place.record == nullptr) return {};
  return ReadField(*place.basis, *place.record, place.basis->IndexOfName(name));
}

std::string TDocument::ReadFieldById(int identifier, int goods_index) {
  last_field_ = nullptr;
  if (identifier <= 0 || identifier > kLastReadableId || position_.record == nullptr) return {};
  if (identifier < kFirstMainId) return ReadField(*root_basis_, *root_record_, identifier - 1);
  const TDocFieldList* const record = MainRecord(goods_index);
  return record == nullptr ? std::string()
                           : ReadField(*main_basis_, *record, identifier - kFirstMainId);
}

TDocFieldList* TDocument::MainRecord(int goods_index) {
  if (main_basis_ == nullptr) ResolveMainBlock();
  if (main_records_ == nullptr || goods_index < 0 || goods_index >= main_records_->Count()) {
    return nullptr;
  }
  return &main_records_->Record(goods_index + 1);
}

std::string TDocument::JoinBlockField(std::string_view block_path, std::string_view field_name,
                                      JoinMode mode) {
  const FlagSetting setting(FlattenLongText, /*value=*/false, /*afterwards=*/true);
  const std::optional<DocumentPlace> block = Resolve(block_path);
  if (!block || block->list == nullptr || block->list->Count() == 0) return {};
  const int position = field_name.empty() ? 0 : block->basis->IndexOfName(field_name);
  std::string text;
  for (int number = 1; position >= 0 && number <= block->list->Count(); ++number) {
    if (!text.empty()) AppendSeparator(text, mode);
    const std::string value = ReadField(*block->basis, block->list->Record(number), position);
    text += value;
    if (value.empty() && mode != JoinMode::kBlanks) text += kLineBreak;
  }
  // The goods index is left at the record that was looked at last.
  ShortText path;
  if (!TakePrefix(block_path, kRootPrefix)) path = cur_path_;
  path += block_path;
  path += '\\';
  path += std::to_string(position < 0 ? 1 : block->list->Count());
  goods_index_ = GoodsIndexOf(path);
  return text;
}

// ---- storing

void TDocument::SetField(std::string_view name, std::string_view value) {
  Guarded("SetField", [&] {
    if (position_.record == nullptr) return;
    StoreField(*position_.basis, *position_.record, position_.basis->IndexOfName(name), value);
  });
}

void TDocument::SetFieldByNum(int position, std::string_view value) {
  Guarded("SetFieldByNum", [&] {
    if (position_.record == nullptr || position >= position_.record->Count()) return;
    StoreField(*position_.basis, *position_.record, position, value);
  });
}

void TDocument::AppendFieldByNum(int position, std::string_view tail) {
  Guarded("SetFieldByNum", [&] {
    TDocFieldList* const record = position_.record;
    last_field_ = nullptr;
    if (record == nullptr || position < 0 || position >= record->Count()) return;
    const TFieldInfo& entry = position_.basis->Item(position);
    last_field_ = &entry;
    if (entry.type == 'L' && record->Text(position).empty()) record->SetText(position, "0");
    if (entry.type == 'V') {  // what is read is not what is stored
      const std::string value = ReadField(*position_.basis, *record, position);
      StoreField(*position_.basis, *record, position, value + std::string(tail));
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

void TDocument::StoreField(const TBasis& basis, TDocFieldList& record, int position,
                           std::string_view value) {
  if (position < 0 || position >= basis.Count()) return;
  const TFieldInfo& entry = basis.Item(position);
  if (!value.empty() && entry.IsLongText()) value = FitLongText(value, entry);
  if (entry.type == 'V') {
    StorePart(basis, record, position, value);
    return;
  }
  if (position >= record.Count()) throw ListIndexError(position);
  record.SetText(position, value);
  Modified = true;
}

void TDocument::StorePart(const TBasis& basis, TDocFieldList& record, int position,
                          std::string_view value) {
  const int composite = CompositeOf(basis, position);
  if (composite < 0) return;
  if (composite >= record.Count()) throw ListIndexError(composite);
  const TFieldInfo& entry = basis.Item(composite);
  const std::string text = WithPart(record.Text(composite), entry.sub_fields, position - composite,
                                    value, SearchedRange());
  record.SetText(composite, FitLongText(text, entry));
  Modified = true;
}

void TDocument::StoreFieldEx(std::string_view path, std::string_view value) {
  std::string_view record = SplitLastPart(path).parent;
  const std::string_view name = path.substr(record.size());  // whole, however long it is
  TakePrefix(record, kCurrentPrefix);
  if (record.empty()) {
    SetField(name, value);
    return;
  }
  const PositionKeeper keeper(*this);
  if (SetCurrentPath(record)) SetField(name, value);
}

void TDocument::StoreFieldById(int identifier, int goods_index, std::string_view value) {
  if (identifier <= 0 || identifier >= kFirstUnstorableId || position_.record == nullptr) return;
  if (identifier < kFirstMainId) {
    StoreField(*root_basis_, *root_record_, identifier - 1, value);
  } else if (TDocFieldList* const record = MainRecord(goods_index)) {
    StoreField(*main_basis_, *record, identifier - kFirstMainId, value);
  }
}

// ---- choice marks

void TDocument::SetChoice(int position, int choice) {
  if (position_.record == nullptr) return;
  if (StoreChoice(*position_.basis, *position_.record, position, choice)) return;
  const int block = root_basis_->IndexOfName(ExtractWord(1, cur_path_, "\\"));
  if (block > 0) StoreChoice(*root_basis_, *root_record_, block, choice);
}

bool TDocument::StoreChoice(const TBasis& basis, TDocFieldList& record, int position, int choice) {
  const auto is_passed_over = [](const TFieldInfo& entry) {
    return entry.choice > 0 || entry.type == 'B';
  };
  int mark = std::min(position, basis.Count()) - 1;
  while (mark >= 0 && is_passed_over(basis.Item(mark))) --mark;
  if (mark < 0) return false;
  if (ContainsNoCase(basis.Item(mark).name, "_choice")) {
    StoreField(basis, record, mark, std::to_string(choice));
  }
  return true;
}

}  // namespace customsconv
