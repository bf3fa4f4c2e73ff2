// Reads the tree of tables from the Files section alone; no table is opened.

#include "tables/rows/set_levels.h"

#include <algorithm>
#include <set>

#include "base/characters.h"
#include "base/cp1251_literal.h"
#include "base/error.h"
#include "base/letter_case.h"
#include "catalogue/files_reader.h"
#include "text/char_set.h"
#include "text/file_names.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr CharSet kKeySeparators("+,");

std::vector<std::string> NamesOf(std::string_view list) {
  std::vector<std::string> names;
  for (const std::string_view name : Words(list, kKeySeparators)) names.emplace_back(Trim(name));
  return names;
}

// Turns the lines of a Files section into levels, line by line.
class LevelReader {
 public:
  LevelReader(std::string_view type, SetLevels& levels) : type_(type), levels_(levels) {}

  // False when the line ends the set.
  bool Take(std::string_view text) {
    const FilesLine line = ParseFilesLine(text);
    const bool is_blank = Trim(text).empty();
    if (open_.empty() && is_blank) return false;
    while (!open_.empty() && line.level <= open_.back().depth) {
      if (open_.size() == 1) return false;
      open_.pop_back();
    }
    if (!is_blank) Open(line);
    return true;
  }

 private:
  struct OpenLevel {
    int depth;
    int position;
  };

  void Open(const FilesLine& line) {
    SetLevel level;
    level.type = type_;
    level.table = ForceExtension(line.table_file, "DBF");
    level.keys = NamesOf(line.key_fields);
    if (!open_.empty()) {
      level.parent = open_.back().position;
      const std::string& above = levels_[static_cast<std::size_t>(level.parent)].block;
      level.block = above.empty() ? line.block_name : above + "\\" + line.block_name;
      level.parent_keys = line.link_fields.empty() ? level.keys : NamesOf(line.link_fields);
    }
    open_.push_back({line.level, static_cast<int>(levels_.size())});
    levels_.push_back(std::move(level));
  }

  std::string type_;
  SetLevels& levels_;
  std::vector<OpenLevel> open_;
};

}  // namespace

void AppendLevels(TDocInfo& type, Environment& environment, SetLevels& levels) {
  const auto* const top = dynamic_cast<const TDbfBasis*>(&type.GetBasis(environment));
  if (top == nullptr) {
    throw Error(std::string("Документ не описан как набор таблиц: "_cp1251) + type.Code);
  }
  LevelReader reader(type.Code, levels);
  for (const std::string& line : top->file_list) {
    if (!reader.Take(line)) break;
  }
}

SetLevels LevelsOfTables(const TDocTypeList& types, const std::vector<std::string>& tables,
                         Environment& environment) {
  const std::set<std::string, NoCaseLess> present(tables.begin(), tables.end());
  std::set<const TDocInfo*> taken;
  SetLevels levels;
  for (int i = 0; i < types.Count(); ++i) {
    const TDocInfo& named = types.Item(i);
    if (!named.HasDbfName || !present.contains(named.DbfName)) continue;
    TDocInfo* const type = types.TableSetOf(named.DbfName);
    if (taken.insert(type).second) AppendLevels(*type, environment, levels);
  }
  return levels;
}

std::vector<std::string> RowKeyOf(const SetLevels& levels, std::string_view table) {
  std::vector<std::string> longest;
  const auto consider = [&longest](const std::vector<std::string>& names) {
    if (names.size() > longest.size()) longest = names;
  };
  for (const SetLevel& level : levels) {
    if (SameTextRu(level.table, table)) consider(level.keys);
    const bool below = level.parent >= 0 &&
                       SameTextRu(levels[static_cast<std::size_t>(level.parent)].table, table);
    if (below) consider(level.parent_keys);
  }
  return longest;
}

}  // namespace customsconv
