#include "catalogue/files_reader.h"

#include <memory>
#include <utility>

#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "base/short_text.h"
#include "dbf/dbf_file.h"
#include "text/blanks.h"
#include "text/char_set.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr CharSet kBlockDelimiters(" [");  // not "=", which may so become part of the name
constexpr CharSet kTableDelimiters(" =");
constexpr std::size_t kBlanksPerLevel = 2;

// A wider field is shown on lines of kLineWidth characters.
constexpr int kWidestLine = 250;
constexpr int kLineWidth = 101;

int LevelOf(std::string_view line) {
  const std::size_t blanks = line.find_first_not_of(' ');
  return static_cast<int>((blanks == std::string_view::npos ? line.size() : blanks) /
                          kBlanksPerLevel);
}

// "[KEYS|LINKS]" or "[KEYS]|LINKS"
void ParseKeys(std::string_view line, FilesLine& result) {
  const std::size_t open = line.find('[');
  if (open == std::string_view::npos) return;
  const std::string_view keys = line.substr(open + 1);
  result.key_fields = keys.substr(0, keys.find_first_of("]|"));
  const std::size_t bar = keys.find('|');
  if (bar == std::string_view::npos) return;
  const std::string_view links = keys.substr(bar + 1);
  result.link_fields = links.substr(0, links.find(']'));
}

TFieldInfo FieldOf(const FieldDescriptor& descriptor) {
  TFieldInfo field;
  field.name = Trim(descriptor.name);
  field.type = descriptor.type;
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
  // The tables that could not be opened, each behind CR LF.
  [[nodiscard]] const std::string& failed() const { return failed_; }

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
      failed_ += "\r\n" + name;
      return;
    }
    for (const FieldDescriptor& descriptor : table.fields()) basis.Append(FieldOf(descriptor));
    table.Close();
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
  std::string failed_;
};

}  // namespace

std::vector<std::string> ReadFilesSection(TReadStream& stream) {
  std::vector<std::string> lines;
  ShortText line;
  while (!stream.AtEnd()) {
    stream.ReadLnSection(line);
    if (line.empty() || line[0] == ';') continue;
    if (line[0] == '[') break;
    lines.push_back(line.str());
  }
  return lines;
}

FilesLine ParseFilesLine(std::string_view text) {
  const std::string line = UpperCaseRu(text);
  FilesLine result;
  result.level = LevelOf(line);
  result.block_name = ExtractWord(1, line, kBlockDelimiters);
  result.table_file = CutToShort(ExtractWord(2, line, kTableDelimiters));
  ParseKeys(line, result);
  return result;
}

void LoadTableLevels(TDbfBasis& top, std::string_view folder, TDbfCache& cache, Dialogs& dialogs) {
  top.Clear();
  LevelLoader loader(top, folder, cache);
  loader.Load();
  if (!loader.failed().empty()) {
    dialogs.Message(std::string("Не могу открыть:"_cp1251) + loader.failed());
  }
}

}  // namespace customsconv
