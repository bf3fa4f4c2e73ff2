// From the head down: the rows found in a table give the keys by which rows below are found.

#include "tables/rows/declaration_rows.h"

#include <algorithm>

#include "base/letter_case.h"

namespace customsconv {
namespace {

RowKey KeyOf(const TableRows& rows, const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) list += name + "+";
  return RowKey(rows.table(), list);
}

}  // namespace

DeclarationRows::DeclarationRows(Host& host, std::string_view folder, const SetLevels& levels,
                                 const DeclarationNumber& number, bool deleted)
    : levels_(levels), number_(number), keys_(levels.size()) {
  for (std::size_t i = 0; i < levels.size(); ++i) Gather(host, std::string(folder), i, deleted);
}

// A level's rows come before those below it, as the levels do.
void DeclarationRows::Gather(Host& host, const std::string& folder, std::size_t position,
                             bool deleted) {
  const SetLevel& level = levels_[position];
  std::vector<std::size_t> below;
  for (std::size_t i = 0; i < levels_.size(); ++i) {
    if (levels_[i].parent == static_cast<int>(position)) below.push_back(i);
  }
  const bool is_head = level.parent < 0;
  const bool may_have_rows = is_head || !keys_[position].empty();
  if (!may_have_rows || (below.empty() && !is_head)) return;
  if (!host.files.Exists(folder + level.table)) return;
  TableRows rows(host, folder + level.table);
  const Filter filter = FilterOf(level, rows);
  std::vector<RowKey> keys;
  for (const std::size_t child : below) keys.push_back(KeyOf(rows, levels_[child].parent_keys));
  while (rows.Next()) {
    if ((rows.Deleted() && !deleted) || !filter.Wants(rows)) continue;
    found_ = found_ || is_head;
    for (std::size_t i = 0; i < below.size(); ++i) {
      keys_[below[i]].insert(keys[i].Of(rows.table()).str());
    }
  }
}

DeclarationRows::Filter DeclarationRows::FilterOf(const SetLevel& level,
                                                  const TableRows& rows) const {
  Filter filter;
  if (level.parent < 0) {
    filter.number_ = &number_;
  } else {
    const auto position = static_cast<std::size_t>(&level - levels_.data());
    filter.places_.push_back({KeyOf(rows, level.keys), &keys_[position]});
  }
  return filter;
}

DeclarationRows::Filter DeclarationRows::FilterFor(std::string_view table,
                                                   const TableRows& rows) const {
  Filter filter;
  for (const SetLevel& level : levels_) {
    if (!SameTextRu(level.table, table)) continue;
    Filter one = FilterOf(level, rows);
    if (one.number_ != nullptr) filter.number_ = one.number_;
    for (Filter::Place& place : one.places_) filter.places_.push_back(std::move(place));
  }
  return filter;
}

bool DeclarationRows::Filter::Wants(const TableRows& rows) const {
  if (number_ != nullptr && number_->IsOf(rows.table())) return true;
  return std::any_of(places_.begin(), places_.end(), [&rows](const Place& place) {
    return place.keys->contains(place.key.Of(rows.table()).str());
  });
}

}  // namespace customsconv
