// Values are views: into the row where the stored bytes show a value as it is, else into a buffer
// that is large enough from the start and so never moves.

#include "tables/rows/table_rows.h"

#include <cassert>
#include <utility>

#include "base/cp1251_literal.h"
#include "base/unicode.h"
#include "tables/rows/unique_names.h"
#include "text/file_names.h"

namespace customsconv {
namespace {

constexpr int kMark = -1;  // in place of a field: the column of the deletion mark

std::vector<TableColumn> ColumnsOf(const TDescrs& fields) {
  UniqueNames names;
  std::vector<TableColumn> columns;
  for (const FieldDescriptor& field : fields) {
    columns.push_back({Utf8FromWin(names.Of(field.TrimmedName())), KindOf(field), field.length,
                       field.type == column_type::kMemo ? 0 : field.decimals, field.type,
                       static_cast<int>(columns.size())});
  }
  return columns;
}

}  // namespace

TableRows::TableRows(Host& host, std::string_view path)
    : path_(ForceExtension(path, "DBF")), cache_(host), table_(cache_) {
  table_.Open(path_, kModeRead | kShareDenyNone, OnError::kThrow);
  count_ = table_.RecordCount();
  columns_ = ColumnsOf(table_.fields());
  ColumnsChanged();
}

void TableRows::Select(const std::vector<int>& positions) {
  std::vector<TableColumn> selected;
  for (const int position : positions) {
    selected.push_back(columns_[static_cast<std::size_t>(position)]);
  }
  columns_ = std::move(selected);
  ColumnsChanged();
}

void TableRows::AddDeleted() {
  UniqueNames names;
  for (const TableColumn& column : columns_) static_cast<void>(names.Of(*WinFromUtf8(column.name)));
  columns_.push_back(
      {Utf8FromWin(names.Of("DELETED")), ColumnKind::kLogical, 1, 0, column_type::kLogical, kMark});
  ColumnsChanged();
}

void TableRows::ColumnsChanged() {
  values_of_ = 0;
  positions_.clear();
  std::size_t room = 0;
  for (const TableColumn& column : columns_) {
    positions_.emplace(*WinFromUtf8(column.name), static_cast<int>(&column - columns_.data()));
    if (column.field != kMark) room += RoomFor(table_.FieldAt(column.field));
  }
  room_.reserve(room);
}

int TableRows::Find(std::string_view name) const {
  const auto wanted = WinFromUtf8(name);
  const auto found = wanted ? positions_.find(*wanted) : positions_.end();
  return found == positions_.end() ? -1 : found->second;
}

bool TableRows::Next() {
  const std::int64_t next = Number() < 1 ? 1 : Number() + 1;
  if (next > count_) return false;
  GoTo(next);
  return true;
}

void TableRows::GoTo(std::int64_t number) {
  if (table_.GoTo(number) == DbfStatus::kOk) return;
  throw FileError(FileError::Kind::kRead, path_,
                  std::string("нет строки "_cp1251) + std::to_string(number));
}

std::span<const TableValue> TableRows::Values() {
  if (std::exchange(values_of_, Number()) == Number()) return values_;
  room_.clear();
  values_.clear();
  for (const TableColumn& column : columns_) values_.push_back(ValueOf(column.field));
  return values_;
}

TableValue TableRows::ValueOf(int field) {
  if (field == kMark) return {TableValue::Kind::kLogical, Deleted() ? "1" : "0"};
  const FieldDescriptor& descriptor = table_.FieldAt(field);
  [[maybe_unused]] const std::size_t capacity = room_.capacity();
  std::string_view stored = table_.StoredField(field);
  if (descriptor.type ==
      column_type::kMemo) {  // some tables hold the number of the block as four bytes
    const std::size_t start = room_.size();
    room_ += table_.GetField(field);
    stored = std::string_view(room_).substr(start);
  }
  const TableValue value = ReadValue(descriptor, stored, room_);
  assert(room_.capacity() == capacity);
  return value;
}

}  // namespace customsconv
