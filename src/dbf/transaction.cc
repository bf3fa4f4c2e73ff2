#include "dbf/transaction.h"

#include <algorithm>
#include <utility>

#include "base/cp1251_literal.h"
#include "base/date_time.h"
#include "base/error.h"
#include "dbf/journal.h"
#include "text/date_format.h"
#include "text/file_names.h"

namespace customsconv {
namespace {

constexpr FileMode kShared = kModeReadWrite | kShareDenyNone;

std::string ReadAt(FileStream& file, std::int64_t at, std::int64_t count) {
  if (count <= 0) return {};
  std::string bytes(static_cast<std::size_t>(count), '\0');
  file.Seek(at, SeekOrigin::kBegin);
  bytes.resize(file.Read(bytes.data(), bytes.size()));
  return bytes;
}

void WriteAt(FileStream& file, std::int64_t at, std::string_view bytes) {
  if (bytes.empty()) return;
  file.Seek(at, SeekOrigin::kBegin);
  file.Write(bytes.data(), bytes.size());
}

void DeleteSurely(Files& files, const std::string& path) {
  if (!files.Delete(path) && files.Exists(path)) {
    throw FileError(FileError::Kind::kWrite, path, "не могу удалить"_cp1251);
  }
}

}  // namespace

void GiveSpareRoomBack(FileStream& file) {
  try {
    file.Resize(file.Size());
  } catch (const FileError&) {
    // The table's next rows will take it.
  }
}

namespace {

// What stands in the old table and what is added to it are ranges of their own: cutting the table
// off leaves the one as it is and takes the other away.
journal::Table Noted(const TableChange& change) {
  journal::Table noted;
  noted.name = FileNameOf(change.path);
  noted.new_size = change.new_size;
  if (change.file != nullptr) noted.old_size = change.file->Size();
  const std::int64_t old_end = std::max<std::int64_t>(noted.old_size, 0);
  const auto add = [&](std::int64_t at, std::string_view bytes, std::int64_t old_length) {
    if (bytes.empty() && old_length == 0) return;
    journal::Range range;
    range.at = at;
    range.new_length = static_cast<std::int64_t>(bytes.size());
    if (old_length > 0) range.old_bytes = ReadAt(*change.file, at, old_length);
    range.new_sums = journal::SectorSums(at, range.length(), bytes);
    noted.ranges.push_back(std::move(range));
  };
  for (const TableChange::Piece& piece : change.pieces) {
    const auto length = static_cast<std::int64_t>(piece.bytes.size());
    const std::int64_t inside = std::clamp<std::int64_t>(old_end - piece.at, 0, length);
    add(piece.at, piece.bytes.substr(0, static_cast<std::size_t>(inside)), inside);
    add(piece.at + inside, piece.bytes.substr(static_cast<std::size_t>(inside)), 0);
  }
  if (change.new_size < old_end) add(change.new_size, {}, old_end - change.new_size);
  return noted;
}

// Rows first, the record count in the header last: until then the rows do not count.
void WriteChange(Host& host, const TableChange& change) {
  std::unique_ptr<FileStream> made;
  if (change.file == nullptr) made = host.files.Open(change.path, kModeCreate);
  FileStream& file = made ? *made : *change.file;
  for (auto piece = change.pieces.rbegin(); piece != change.pieces.rend(); ++piece) {
    WriteAt(file, piece->at, piece->bytes);
  }
  if (change.new_size < file.Size()) file.Resize(change.new_size);
  made ? file.Sync() : file.StartSync();
}

// One sector's part of a range: the old bytes, the new ones, or where the table has grown nothing
// yet. Anything else has been written by somebody else.
bool IsOurs(const journal::Range& range, std::size_t sector, std::int64_t from,
            std::string_view now) {
  const std::string_view old = std::string_view(range.old_bytes)
                                   .substr(std::min(static_cast<std::size_t>(from),
                                                    range.old_bytes.size()))
                                   .substr(0, now.size());
  const bool is_old = now.substr(0, old.size()) == old &&
                      now.find_first_not_of('\0', old.size()) == std::string_view::npos;
  return is_old || journal::Checksum(now) == range.new_sums[sector];
}

bool IsOurs(FileStream& file, const journal::Table& table) {
  const std::int64_t size = file.Size();
  const auto [least, most] = std::minmax(table.old_size, table.new_size);
  if (size < least || size > most) return false;
  for (const journal::Range& range : table.ranges) {
    std::string now = ReadAt(file, range.at, std::min(range.length(), size - range.at));
    now.resize(static_cast<std::size_t>(range.length()), '\0');
    std::size_t sector = 0;
    for (std::int64_t at = 0; at < range.length(); ++sector) {
      const std::int64_t part =
          journal::SectorPart(range.at + at, range.at + range.length());
      const auto sector_now = std::string_view(now).substr(static_cast<std::size_t>(at),
                                                           static_cast<std::size_t>(part));
      if (!IsOurs(range, sector, at, sector_now)) return false;
      at += part;
    }
  }
  return true;
}

// A table whose old content comes back, or one that did not stand there.
struct Undoing {
  const journal::Table* table;
  std::unique_ptr<FileStream> file;
};

// False when the table has its old bytes already.
bool Restore(FileStream& file, const journal::Table& table) {
  bool changed = false;
  for (const journal::Range& range : table.ranges) {
    const auto length = static_cast<std::int64_t>(range.old_bytes.size());
    if (ReadAt(file, range.at, length) == range.old_bytes) continue;
    WriteAt(file, range.at, range.old_bytes);
    changed = true;
  }
  if (file.Size() == table.old_size) {
    GiveSpareRoomBack(file);
    return changed;
  }
  file.Resize(table.old_size);
  return true;
}

// The tables are safe. At worst a loss of power brings the journal back, as it may where folders
// cannot be made safe at all; to call the save a failure now would be wrong, as its rows are in.
void SettleRemoval(Files& files, const std::string& path) {
  try {
    files.SyncFolder(path);
  } catch (const FileError&) {
    return;
  }
}

// `all_safe`: what is not changed now has been safe on the disk before.
void Undo(Host& host, const std::string& folder, const std::vector<Undoing>& tables,
          bool all_safe) {
  for (const Undoing& undoing : tables) {
    if (undoing.file != nullptr) {
      if (Restore(*undoing.file, *undoing.table) || !all_safe) undoing.file->Sync();
    } else {
      DeleteSurely(host.files, folder + undoing.table->name);
    }
  }
  const std::string path = folder + std::string(journal::kFileName);
  host.files.SyncFolder(path);  // what was made is gone before the journal is
  DeleteSurely(host.files, path);
  SettleRemoval(host.files, path);
}

// Opens the tables that were touched; the name of one that is somebody else's now. Who holds the
// locks since it wrote (`own`) need not ask: a write that ended anywhere is its own.
std::string OpenToUndo(Host& host, const std::string& folder, const journal::Journal& journal,
                       bool own, std::vector<Undoing>& opened) {
  for (const journal::Table& table : journal.tables) {
    const std::string path = folder + table.name;
    const bool was_there = table.old_size != journal::kAbsent;
    auto file = host.files.Exists(path) ? host.files.Open(path, kShared) : nullptr;
    if (file == nullptr ? was_there : !own && !IsOurs(*file, table)) return table.name;
    opened.push_back({&table, was_there ? std::move(file) : nullptr});
  }
  return {};
}

std::string KeepAside(Files& files, const std::string& folder) {
  for (int number = 1;; ++number) {
    std::string name = "ccsave-" + std::to_string(number) + ".jnl";
    if (files.Exists(folder + name)) continue;
    const std::string path = folder + std::string(journal::kFileName);
    if (!files.Rename(path, folder + name)) {
      throw FileError(FileError::Kind::kWrite, path, "не могу переименовать"_cp1251);
    }
    files.SyncFolder(path);
    return name;
  }
}

Recovery RollBack(Host& host, const std::string& folder, const journal::Journal& journal,
                  bool all_safe) {
  Recovery recovery{Recovery::Outcome::kUndone, journal.moment, journal.note, {}, {}};
  std::vector<Undoing> opened;
  recovery.table = OpenToUndo(host, folder, journal, all_safe, opened);
  if (recovery.table.empty()) {
    Undo(host, folder, opened, all_safe);
  } else {
    recovery.outcome = Recovery::Outcome::kForeign;
    recovery.kept_as = KeepAside(host.files, folder);
  }
  return recovery;
}

void WriteJournal(Host& host, const std::string& path, const std::string& bytes) {
  const auto file = host.files.Open(path, kModeCreate);
  file->Reserve(static_cast<std::int64_t>(bytes.size()));
  WriteAt(*file, 0, bytes);
  file->Sync();
  host.files.SyncFolder(path);
}

std::string BrokenSave(std::string_view folder, std::string_view moment, std::string_view note) {
  std::string text("Прерванное сохранение таблиц в папке "_cp1251);
  text.append(folder);
  if (moment.empty()) return text;
  text.append(" (").append(moment);
  if (!note.empty()) text.append(", ").append(note);
  return text.append(")");
}

std::string MomentText(DateTime moment) {
  return std::string(FormatDateTime("yyyy-mm-dd hh:nn:ss", moment));
}

}  // namespace

std::optional<TransactionFailure> WriteTables(Host& host, const std::string& folder,
                                              std::string_view note,
                                              const std::vector<TableChange>& tables) {
  const std::string path = folder + std::string(journal::kFileName);
  std::optional<std::size_t> table;
  journal::Journal journal{MomentText(host.clock.Now()), std::string(note), {}};
  bool touched = false;
  try {
    bool made = false;
    for (const TableChange& change : tables) {
      journal.tables.push_back(Noted(change));
      made = made || change.file == nullptr;
    }
    WriteJournal(host, path, journal::Bytes(journal));
    touched = true;
    for (table = 0; *table < tables.size(); ++*table) WriteChange(host, tables[*table]);
    for (table = 0; *table < tables.size(); ++*table) {
      if (tables[*table].file != nullptr) tables[*table].file->Sync();
    }
    table.reset();
    if (made) host.files.SyncFolder(path);
    DeleteSurely(host.files, path);
  } catch (const std::exception&) {
    TransactionFailure failure{table, std::current_exception()};
    try {
      if (touched) {
        failure.undone = RollBack(host, folder, journal, true).outcome == Recovery::Outcome::kUndone;
      } else {
        host.files.Delete(path);
      }
    } catch (const std::exception&) {
      failure.undone = false;
    }
    return failure;
  }
  SettleRemoval(host.files, path);
  return std::nullopt;
}

bool HasJournal(const Files& files, const std::string& folder) {
  return files.ExistsAsWritten(folder + std::string(journal::kFileName));
}

Recovery Recover(Host& host, const std::string& folder) {
  if (!HasJournal(host.files, folder)) return {};
  const std::string path = folder + std::string(journal::kFileName);
  const journal::Reading reading = journal::Read(host.files.Read(path));
  if (reading.form == journal::Form::kWhole) return RollBack(host, folder, reading.journal, false);
  if (reading.form == journal::Form::kUnknown) {
    throw FileError(FileError::Kind::kRead, path, "журнал другой версии программы"_cp1251);
  }
  DeleteSurely(host.files, path);
  return {};
}

std::vector<KeptJournal> KeptJournals(Host& host, const std::string& folder) {
  std::vector<KeptJournal> kept;
  for (std::string& name : host.files.Find(folder, "ccsave-*.jnl")) {
    KeptJournal journal{std::move(name), {}, {}};
    try {
      journal::Journal read = journal::Read(host.files.Read(folder + journal.name)).journal;
      journal.moment = std::move(read.moment);
      journal.note = std::move(read.note);
    } catch (const FileError&) {
      // It stands there all the same.
    }
    kept.push_back(std::move(journal));
  }
  return kept;
}

std::string Told(const KeptJournal& kept, std::string_view folder) {
  std::string text = BrokenSave(folder, kept.moment, kept.note);
  text.append(" осталось не отменено, его журнал "_cp1251).append(kept.name);
  return text.append(
      " можно удалить, когда таблицы проверены (customsconv tables verify)"_cp1251);
}

std::string Told(const Recovery& recovery, std::string_view folder) {
  if (recovery.outcome == Recovery::Outcome::kNone) return {};
  std::string text = BrokenSave(folder, recovery.moment, recovery.note);
  if (recovery.outcome == Recovery::Outcome::kUndone) {
    return text.append(" отменено"_cp1251);
  }
  text.append(" не отменено: таблицу "_cp1251).append(recovery.table);
  text.append(" с тех пор изменила другая программа. Журнал сохранен под именем "_cp1251);
  text.append(recovery.kept_as);
  return text.append("; что в таблицах, показывает customsconv tables verify"_cp1251);
}

}  // namespace customsconv
