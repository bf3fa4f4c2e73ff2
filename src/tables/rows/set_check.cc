// Twice over the tables: first those that have others below them give their keys, then each row is
// looked at.

#include "tables/rows/set_check.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "base/error.h"
#include "base/letter_case.h"
#include "dbf/dbf_format.h"
#include "tables/rows/table_rows.h"
#include "tables/table_keys.h"

namespace customsconv {
namespace {

using Keys = std::unordered_set<std::string>;

std::string Joined(const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) list.append(list.empty() ? "" : "+").append(name);
  return list;
}

bool HasEndMark(Host& host, const std::string& path) {
  const auto file = host.files.Open(path, kModeRead | kShareDenyNone);
  std::string head(dbf::kHeaderSize, '\0');
  if (file->Read(head.data(), head.size()) != head.size()) return false;
  char mark = 0;
  file->Seek(dbf::ReadHeader(head).SizeOfRecords(), SeekOrigin::kBegin);
  return file->Read(&mark, 1) == 1 && mark == dbf::kEndOfTable;
}

class SetChecker {
 public:
  SetChecker(Host& host, const std::string& folder, const SetLevels& levels)
      : host_(host), folder_(folder), levels_(levels), keys_(levels.size()) {}

  SetCheck Run() {
    const std::vector<std::string> tables = host_.files.Find(folder_, "*.DBF");
    for (std::size_t i = 0; i < levels_.size(); ++i) {
      const auto is_level = [&](const std::string& table) {
        return SameTextRu(table, levels_[i].table);
      };
      const auto table = std::find_if(tables.begin(), tables.end(), is_level);
      if (table != tables.end()) Read(*table, [&] { GatherKeys(*table, i); });
    }
    for (const std::string& table : tables) Read(table, [&] { LookThrough(table); });
    for (const std::string& journal : host_.files.Find(folder_, "ccsave-*.jnl")) {
      check_.findings.push_back({SetFinding::Kind::kJournal, journal, {}});
    }
    return std::move(check_);
  }

 private:
  // One level at which rows of a table may hang.
  struct Place {
    RowKey key;
    const Keys* parents;
  };

  // A table that cannot be read is found once, and left out from then on.
  template <typename Action>
  void Read(const std::string& table, const Action& action) {
    if (unreadable_.contains(table)) return;
    try {
      action();
    } catch (const Error& error) {
      unreadable_.insert(table);
      check_.findings.push_back({SetFinding::Kind::kUnreadable, table, error.text()});
    }
  }

  // What rows below the level are found by, and its own rows that cannot be told apart by that.
  void GatherKeys(const std::string& table, std::size_t position) {
    TableRows rows(host_, folder_ + table);
    std::vector<std::pair<RowKey, Keys*>> below;
    for (std::size_t i = 0; i < levels_.size(); ++i) {
      if (levels_[i].parent != static_cast<int>(position)) continue;
      keys_[i].known = true;
      below.emplace_back(RowKey(rows.table(), Joined(levels_[i].parent_keys)), &keys_[i].keys);
    }
    if (below.empty() && levels_[position].parent >= 0) return;
    const std::string names = Joined(RowKeyOf(levels_, table));
    const RowKey own(rows.table(), names);
    SetFinding twice{SetFinding::Kind::kTwice, table, names};
    Keys seen;
    while (rows.Next()) {
      if (rows.Deleted()) continue;
      for (auto& [key, keys] : below) keys->insert(key.Of(rows.table()).str());
      if (!seen.insert(own.Of(rows.table()).str()).second) Count(twice, rows.Number());
    }
    Add(std::move(twice));
  }

  void LookThrough(const std::string& table) {
    TableRows rows(host_, folder_ + table);
    if (!HasEndMark(host_, folder_ + table)) {
      check_.findings.push_back({SetFinding::Kind::kNoEndMark, table, {}});
    }
    SetFinding lonely{SetFinding::Kind::kNoParent, table, {}};
    const std::vector<Place> places = PlacesOf(table, rows, lonely.detail);
    while (!places.empty() && rows.Next()) {
      const auto hangs = [&rows](const Place& place) {
        return place.parents->contains(place.key.Of(rows.table()).str());
      };
      const bool is_lonely =
          !rows.Deleted() && std::none_of(places.begin(), places.end(), hangs);
      if (is_lonely) Count(lonely, rows.Number());
    }
    Add(std::move(lonely));
    check_.tables.push_back({table, rows.Count()});
  }

  // Empty when the table is a head, or nothing is known of what stands above it.
  std::vector<Place> PlacesOf(const std::string& table, const TableRows& rows,
                              std::string& above) const {
    std::vector<Place> places;
    for (std::size_t i = 0; i < levels_.size(); ++i) {
      const SetLevel& level = levels_[i];
      if (!SameTextRu(level.table, table)) continue;
      if (level.parent < 0 || !keys_[i].known) return {};
      places.push_back({RowKey(rows.table(), Joined(level.keys)), &keys_[i].keys});
      above.append(above.empty() ? "" : ", ");
      above.append(levels_[static_cast<std::size_t>(level.parent)].table);
    }
    return places;
  }

  static void Count(SetFinding& finding, std::int64_t row) {
    if (finding.rows++ == 0) finding.first = row;
  }
  void Add(SetFinding finding) {
    if (finding.rows > 0) check_.findings.push_back(std::move(finding));
  }

  Host& host_;
  const std::string& folder_;
  const SetLevels& levels_;
  struct Parents {
    bool known = false;  // the table above could be opened
    Keys keys;
  };
  std::vector<Parents> keys_;  // a level
  std::unordered_set<std::string> unreadable_;
  SetCheck check_;
};

}  // namespace

SetCheck CheckSet(Host& host, const std::string& folder, const SetLevels& levels) {
  return SetChecker(host, folder, levels).Run();
}

}  // namespace customsconv
