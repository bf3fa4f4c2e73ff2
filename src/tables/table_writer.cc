// Walks the records with a stack of its own, as deep as levels nest.

#include "tables/table_writer.h"

#include <algorithm>

#include "base/cp1251_literal.h"
#include "base/error.h"

namespace customsconv {
namespace {

[[noreturn]] void ThrowCannotOpen(std::string_view name) {
  throw Error(std::string("Не могу открыть файл "_cp1251).append(name));
}

std::unique_ptr<TFileDbfFile> Open(TDbfCache& cache, const std::string& name) {
  auto table = std::make_unique<TSqlDbfFile>(cache);
  const FileMode mode = kModeReadWrite | kShareDenyNone;
  if (table->Open(name, mode, OnError::kReturn) != DbfStatus::kOk) ThrowCannotOpen(name);
  return table;
}

}  // namespace

void TableWriter::Write(TDocFieldList& top) {
  // A record whose children are being written, and the place of the next child.
  struct Frame {
    TDocFieldList* record;
    Level* level;
    std::size_t block = 0;
    int child = 0;
  };
  std::vector<Frame> open;
  const auto write = [&](TDocFieldList& record) {
    Level& level = LevelOf(record.Basis());
    if (!open.empty()) level.keys->CopyFromParent(*open.back().record, record);
    WriteRecord(level, record);
    open.push_back({&record, &level});
  };
  write(top);
  while (!open.empty()) {
    Frame& frame = open.back();
    if (frame.block == frame.level->blocks.size()) {
      open.pop_back();
      continue;
    }
    RecordList* const list = frame.record->Records(frame.level->blocks[frame.block]);
    if (list == nullptr || frame.child == list->Count()) {
      ++frame.block;
      frame.child = 0;
      continue;
    }
    write(list->Record(++frame.child));
  }
}

RowCounts TableWriter::AppendedRows() const {
  RowCounts rows;
  for (const auto& [basis, level] : levels_) {
    if (level.appended > 0)
      rows[static_cast<const TDbfBasis*>(basis)->table_file] += level.appended;
  }
  return rows;
}

TableWriter::Level& TableWriter::LevelOf(const TBasis& basis) {
  const auto [place, added] = levels_.try_emplace(&basis);
  Level& level = place->second;
  if (!added) return level;
  const std::string& table_file = static_cast<const TDbfBasis&>(basis).table_file;
  level.table = &TableOf(table_file);
  level.keys.emplace(basis);
  std::set<int> columns;
  for (int i = 0; i < basis.Count(); ++i) {
    if (basis.Item(i).is_block) {
      level.blocks.push_back(i);
      continue;
    }
    const int column = level.table->FieldIndex(basis.Item(i).name);
    if (column < 0) continue;
    level.fields.push_back({i, column});
    if (!columns.insert(column).second) level.columns_differ = false;
  }
  if (const auto rows = deleted_.find(table_file); rows != deleted_.end()) {
    level.deleted.assign(rows->second.begin(), rows->second.end());
  }
  return level;
}

TFileDbfFile& TableWriter::TableOf(const std::string& table_file) {
  std::unique_ptr<TFileDbfFile>& table = tables_[table_file];
  if (table == nullptr) table = Open(cache_, folder_ + table_file);
  return *table;
}

void TableWriter::WriteRecord(Level& level, TDocFieldList& record) {
  if (record.Count() < record.Basis().Count()) throw ListIndexError(record.Count());
  TFileDbfFile& table = *level.table;
  const bool is_new = record.RecNo == 0;
  if (is_new) {
    table.BlankRecord();
  } else if (table.GoTo(record.RecNo) != DbfStatus::kOk) {
    return;  // a row beyond the table is posted nowhere
  }
  WriteFields(level, record, is_new);
  if (is_new) {
    if (!table.Append()) ThrowCannotOpen(table.file_name());
    record.RecNo = static_cast<std::int32_t>(table.current_record());
    ++level.appended;
  } else if (table.Post() != DbfStatus::kOk) {
    ThrowCannotOpen(table.file_name());  // replaced on disk since it was opened
  }
  const auto behind = std::lower_bound(level.deleted.begin(), level.deleted.end(), record.RecNo);
  record.RecNo -= static_cast<std::int32_t>(behind - level.deleted.begin());
}

void TableWriter::WriteFields(const Level& level, const TDocFieldList& record, bool is_new) {
  TFileDbfFile& table = *level.table;
  // Columns that hold a part of another field's text: their own values do not overwrite it.
  std::vector<int> continued;
  for (const Field& field : level.fields) {
    const std::string_view text = record.Text(field.position);
    if (!continued.empty() &&
        std::find(continued.begin(), continued.end(), field.column) != continued.end()) {
      continue;
    }
    if (text.size() > ShortText::kMaxSize) {
      const int parts = table.SetLongField(field.column, text, false);
      for (int n = 2; n <= parts; ++n) continued.push_back(table.Continuation(field.column, n));
      if (counts_losses_ && is_new) CountLong(level, field.column, parts, text);
    } else if (!text.empty() || !is_new || !level.columns_differ) {
      table.SetField(field.column, text, false);
      if (counts_losses_ && is_new && !text.empty()) {
        losses_.Count(table.FieldAt(field.column), text, table.StoredField(field.column));
      }
    }
  }
}

void TableWriter::CountLong(const Level& level, int column, int parts, std::string_view text) {
  const TFileDbfFile& table = *level.table;
  if (table.FieldAt(column).type != column_type::kCharacter) {
    losses_.Count(table.FieldAt(column), CutToShort(text), table.StoredField(column));
    return;
  }
  std::size_t width = table.FieldAt(column).length;
  for (int n = 2; n <= parts; ++n) width += table.FieldAt(table.Continuation(column, n)).length;
  losses_.CountLong(text, width);
}

void DeleteRows(TDbfCache& cache, std::string_view folder, const DeletedRows& rows) {
  for (auto of_table = rows.rbegin(); of_table != rows.rend(); ++of_table) {
    const auto table = Open(cache, std::string(folder) + of_table->first);
    for (auto row = of_table->second.rbegin(); row != of_table->second.rend(); ++row) {
      table->DeleteRecord(*row);
    }
  }
}

}  // namespace customsconv
