// A level is complete when the line of another one ends it; it is hung on its parent then.

#include "tables/table_levels.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "catalogue/files_reader.h"
#include "dbf/dbf_file.h"
#include "text/blanks.h"

namespace customsconv {
namespace {

// A wider field is shown on lines of kLineWidth characters.
constexpr int kWidestLine = 250;
constexpr int kLineWidth = 101;

TFieldInfo FieldOf(const FieldDescriptor& descriptor) {
  TFieldInfo field;
  field.name = Trim(descriptor.name);
  // Character, number, date and logical fields have the same letters in the catalogue. A memo's is
  // that of a composite there, and is read like it: as long text.
  field.type = static_cast<FieldType>(descriptor.type);
  field.decimals = descriptor.decimals;
  field.table_width = descriptor.length;
  if (descriptor.length > kWidestLine) {
    field.width = kLineWidth;
    field.lines = static_cast<std::int16_t>(descriptor.length / kLineWidth + 1);
  } else {
    field.width = static_cast<std::int16_t>(descriptor.length);
  }
  return field;
}

// Loads the levels line by line and keeps those that are open.
class LevelLoader {
 public:
  LevelLoader(TDbfBasis& top, std::string_view folder, TDbfCache& cache)
      : top_(top), folder_(folder), cache_(cache) {}

  void Load() {
    for (const std::string& text : top_.file_list) {
      if (!TakeLine(text)) break;
    }
    while (CloseLevel()) {
    }
  }
  // The tables that could not be opened.
  [[nodiscard]] std::vector<MissingTable> TakeMissing() { return std::move(missing_); }

 private:
  struct Level {
    int depth;
    std::string block_name;
    std::unique_ptr<TDbfBasis> owned;  // none for the top level
    TDbfBasis* basis;
    bool has_table;
  };

  // False when the line ends the top level, or is no table for it.
  bool TakeLine(const std::string& text) {
    const bool is_blank = Trim(text).empty();
    if (levels_.empty()) {
      if (is_blank) return false;
      Open(ParseFilesLine(text), nullptr);
      return true;
    }
    const FilesLine line = ParseFilesLine(text);
    while (line.level <= levels_.back().depth) {
      if (levels_.size() == 1) return false;
      CloseLevel();
    }
    if (!is_blank) Open(line, std::make_unique<TDbfBasis>());
    return true;
  }

  void Open(const FilesLine& line, std::unique_ptr<TDbfBasis> owned) {
    TDbfBasis& basis = owned == nullptr ? top_ : *owned;
    basis.table_file = line.table_file;
    basis.key_fields = line.key_fields;
    basis.link_fields = line.link_fields;
    AppendTableFields(basis);
    const bool has_table = basis.Count() > 0;
    levels_.push_back({line.level, line.block_name, std::move(owned), &basis, has_table});
  }

  void AppendTableFields(TDbfBasis& basis) {
    const std::string name = folder_ + basis.table_file;
    TFileDbfFile table(cache_);
    if (table.Open(name, kModeRead | kShareDenyNone, OnError::kReturn) != DbfStatus::kOk) {
      missing_.push_back({basis.table_file, CauseOf(name)});
      return;
    }
    for (const FieldDescriptor& descriptor : table.fields()) basis.Append(FieldOf(descriptor));
    table.Close();
  }

  // Why the table cannot be opened.
  std::string CauseOf(const std::string& name) {
    try {
      TFileDbfFile(cache_).Open(name, kModeRead | kShareDenyNone, OnError::kThrow);
    } catch (const Error& error) {
      return error.told();
    }
    return name;  // it can be, by now
  }

  // False when no level was open.
  bool CloseLevel() {
    if (levels_.empty()) return false;
    Level level = std::move(levels_.back());
    levels_.pop_back();
    level.basis->Reindex();
    if (level.owned != nullptr && level.has_table) {
      TFieldInfo entry;
      entry.name = std::move(level.block_name);
      levels_.back().basis->AppendBlock(std::move(entry), std::move(level.owned));
    }
    return true;
  }

  TDbfBasis& top_;
  std::string folder_;
  TDbfCache& cache_;
  std::vector<Level> levels_;
  std::vector<MissingTable> missing_;
};

void Warn(const std::vector<MissingTable>& missing, std::string_view folder, Dialogs& dialogs) {
  if (missing.empty()) return;
  std::string text("Не могу открыть:"_cp1251);
  for (const MissingTable& table : missing) text.append("\r\n").append(folder).append(table.file);
  dialogs.Message(text);
}

}  // namespace

std::vector<MissingTable> LoadFromDbf(TDocInfo& type, std::string_view folder, TDbfCache& cache,
                                      Environment& environment) {
  auto* const top = dynamic_cast<TDbfBasis*>(&type.GetBasis(environment));
  if (top == nullptr) {
    throw Error(std::string("Документ не описан как набор таблиц: "_cp1251) + type.Code);
  }
  top->Clear();
  LevelLoader loader(*top, folder, cache);
  loader.Load();
  std::vector<MissingTable> missing = loader.TakeMissing();
  Warn(missing, folder, environment.host.dialogs);
  type.LevelsChanged();
  return missing;
}

}  // namespace customsconv
