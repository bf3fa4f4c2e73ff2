#include <algorithm>
#include <cstring>

#include "base/dos_code_page.h"
#include "dbf/dbf_file.h"
#include "dbf/dbf_format.h"
#include "dbf/dbf_layout.h"
#include "dbf/dbf_values.h"
#include "text/blanks.h"

// Fields of the record buffer.
namespace customsconv {
namespace {

constexpr std::string_view kRawPrefix = "||";
// Texts from this length on, in fields from this length on, continue in further fields.
constexpr std::size_t kLongText = ShortText::kMaxSize;

struct NameAndForm {
  std::string_view name;
  bool raw;
};
NameAndForm SplitRawPrefix(std::string_view name) {
  const bool raw = name.substr(0, kRawPrefix.size()) == kRawPrefix;
  return {raw ? name.substr(kRawPrefix.size()) : name, raw};
}

bool CanBeContinued(const FieldDescriptor& field) {
  return field.type == column_type::kCharacter && field.length >= kLongText;
}

}  // namespace

int TFileDbfFile::FieldIndex(std::string_view name) const {
  return layout_ ? layout_->names.Find(name) : -1;
}

int TFileDbfFile::FieldWidth(std::string_view name) const {
  const FieldDescriptor* field = Field(FieldIndex(name));
  return field != nullptr ? field->length : 0;
}

char TFileDbfFile::FieldType(std::string_view name) const {
  const FieldDescriptor* field = Field(FieldIndex(name));
  return field != nullptr ? field->type : ' ';
}

const FieldDescriptor* TFileDbfFile::Field(int field) const {
  if (!layout_ || field < 0 || field >= static_cast<int>(layout_->fields.size())) return nullptr;
  return &layout_->fields[static_cast<std::size_t>(field)];
}

std::string_view TFileDbfFile::Stored(const FieldDescriptor& field) const {
  return std::string_view(record_).substr(field.offset, field.length);
}

// ---- reading

std::string_view TFileDbfFile::StoredField(int field) const {
  const FieldDescriptor* found = Field(field);
  return found == nullptr ? std::string_view() : Stored(*found);
}

ShortText TFileDbfFile::GetField(int field) const {
  const FieldDescriptor* found = Field(field);
  if (found == nullptr) return {};
  return dbf::ShownValue(found->type, layout_->header.version, Stored(*found));
}

ShortText TFileDbfFile::GetFieldByName(std::string_view name) const {
  return GetField(FieldIndex(name));
}

std::string TFileDbfFile::GetLongField(int field) const {
  const FieldDescriptor* first = Field(field);
  if (first == nullptr) return {};
  std::string stored(Stored(*first));
  if (CanBeContinued(*first)) {
    for (int number = 2;; ++number) {
      const FieldDescriptor* next = Field(Continuation(field, number));
      if (next == nullptr) break;
      stored += Stored(*next);
    }
  }
  return dbf::ShownLongValue(first->type, layout_->header.version, stored);
}

std::string TFileDbfFile::GetLongFieldByName(std::string_view name) const {
  return GetLongField(FieldIndex(name));
}

int TFileDbfFile::Continuation(int field, int number) const {
  return FieldIndex(std::string(FieldAt(field).TrimmedName()).append(std::to_string(number)));
}

bool TFileDbfFile::IsDeleted() const {
  return layout_ && current_record_ > 0 && record_.front() == dbf::kDeletedMark;
}

void TFileDbfFile::GetRecordText(std::vector<std::string>& lines) const {
  for (int i = 0; i < static_cast<int>(fields().size()); ++i) {
    std::string line(FieldAt(i).TrimmedName());
    line += '=';
    line += GetField(i);
    lines.push_back(std::move(line));
  }
}

// ---- writing

void TFileDbfFile::SetField(int field, std::string_view value, bool raw) {
  const FieldDescriptor* found = Field(field);
  if (found == nullptr) return;
  char* const to = record_.data() + found->offset;
  if (raw) {
    dbf::StoreText(to, found->length, value);
  } else {
    dbf::StoreValue(to, *found, value, found->type == column_type::kDate ? ThisYear() : 0);
  }
}

int TFileDbfFile::ThisYear() {
  if (this_year_ == 0) this_year_ = cache_.host().clock.ThisYear();
  return this_year_;
}

void TFileDbfFile::SetFieldByName(std::string_view name, std::string_view value) {
  const auto [field, raw] = SplitRawPrefix(name);
  SetField(FieldIndex(field), value, raw);
}

void TFileDbfFile::PutFieldByName(std::string_view name, std::string_view value) {
  SetFieldByName(name, value);
}

int TFileDbfFile::SetLongField(int field, std::string_view value, bool raw) {
  const FieldDescriptor* first = Field(field);
  if (first == nullptr) return 0;
  if (first->type != column_type::kCharacter || value.size() < kLongText) {
    SetField(field, value, raw);
    return 1;
  }
  return StoreLongText(field, DosFromWin(raw ? value : TrimRight(value)));
}

void TFileDbfFile::SetLongFieldByName(std::string_view name, std::string_view value) {
  const auto [field, raw] = SplitRawPrefix(name);
  SetLongField(FieldIndex(field), value, raw);
}

// Fills the field and, while text remains, its continuations of the same type.
// Continuations behind the end of the text keep what they hold.
int TFileDbfFile::StoreLongText(int field, std::string_view dos) {
  const FieldDescriptor& first = FieldAt(field);
  const FieldDescriptor* part = &first;
  for (int number = 1;; ++number) {
    char* const to = record_.data() + part->offset;
    const std::string_view taken = dos.substr(0, part->length);
    std::memcpy(to, taken.data(), taken.size());
    std::memset(to + taken.size(), ' ', part->length - taken.size());
    dos.remove_prefix(taken.size());
    if (dos.empty() || !CanBeContinued(first)) return number;
    part = Field(Continuation(field, number + 1));
    if (part == nullptr || part->type != first.type) return number;
  }
}

}  // namespace customsconv
