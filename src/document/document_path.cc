// Walks block names and record numbers down the tree, allocating nothing.

#include "document/document_path.h"

#include <algorithm>
#include <cstdint>

#include "base/characters.h"
#include "base/cp1251_literal.h"
#include "base/error.h"
#include "text/numbers.h"

namespace customsconv {
namespace {

// The record number that a path part names, 0 when it is none. Nearly all are plain digits.
std::int32_t RecordNumberOf(std::string_view part) {
  constexpr std::size_t kFewDigits = 9;
  if (part.size() > kFewDigits) return IntOr(part, 0);
  std::int32_t number = 0;
  for (const char c : part) {
    if (!IsDigit(c)) return IntOr(part, 0);
    number = number * 10 + (c - '0');
  }
  return number;
}

bool EnterBlock(std::string_view name, DocumentPlace& place) {
  const int position = place.basis->IndexOfBlock(name);
  if (position < 0) return false;
  RecordList* const list = BlockRecords(*place.record, position);
  if (list == nullptr) return false;
  place = {&list->basis(), nullptr, list};
  return true;
}

bool EnterRecord(std::string_view part, DocumentPlace& place) {
  const std::int32_t number = RecordNumberOf(part);
  if (number < 1 || number > place.list->Count()) return false;
  place = {place.basis, &place.list->Record(number), nullptr};
  return true;
}

}  // namespace

RecordList* BlockRecords(const TDocFieldList& record, int position) {
  if (position >= record.Count()) {
    throw Error(std::string("Неправильный номер поля "_cp1251) + std::to_string(position) + " " +
                record.Basis().Path());
  }
  return record.Records(position);
}

bool WalkPath(std::string_view path, DocumentPlace& place) {
  DocumentPlace reached = place;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find('\\'), path.size());
    const std::string_view part = path.substr(0, std::min(end, kLongestPathPart));
    if (part.empty()) break;
    const bool entered =
        reached.record != nullptr ? EnterBlock(part, reached) : EnterRecord(part, reached);
    if (!entered) return false;
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  place = reached;
  return true;
}

SplitPath SplitLastPart(std::string_view path) {
  const std::size_t separator = path.rfind('\\');
  const std::size_t start = separator == std::string_view::npos ? 0 : separator + 1;
  return {path.substr(0, start), path.substr(start, kLongestPathPart)};
}

}  // namespace customsconv
