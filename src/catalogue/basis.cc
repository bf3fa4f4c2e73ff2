#include "catalogue/basis.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <numeric>

#include "base/letter_case.h"
#include "base/short_text.h"
#include "text/char_set.h"
#include "text/numbers.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr CharSet kPathSeparator("\\");

constexpr std::array<std::uint32_t, 256> kCrcTable = [] {
  constexpr std::uint32_t kPolynomial = 0xEDB88320;  // reflected
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t i = 0; i < table.size(); ++i) {
    std::uint32_t value = i;
    for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ ((value & 1) != 0 ? kPolynomial : 0);
    table[i] = value;
  }
  return table;
}();

// Without the inversions at both ends that the usual checksum has.
std::uint32_t UpdateCrc(std::uint32_t value, std::string_view bytes) {
  for (const char c : bytes) {
    value = kCrcTable[(value ^ static_cast<unsigned char>(c)) & 0xFF] ^ (value >> 8);
  }
  return value;
}

// "a:X#b:Y" becomes "X#Y": within each part everything up to the last ":" goes. Replaces `to`.
void StripPrefixes(std::string_view xml_path, std::string& to) {
  to.clear();
  for (;;) {
    const std::size_t end = xml_path.find('#');
    const std::string_view part = xml_path.substr(0, end);
    to += part.substr(part.rfind(':') + 1);  // from its start when there is none
    if (end == std::string_view::npos) return;
    to += '#';
    xml_path.remove_prefix(end + 1);
  }
}

bool IsRecordNumber(std::string_view part) { return IntOr(part, 0) > 0; }

void MoveBlocks(std::vector<TFieldInfo>& items, std::vector<std::unique_ptr<TBasis>>& to) {
  for (TFieldInfo& item : items) {
    if (item.block != nullptr) to.push_back(std::move(item.block));
  }
}

}  // namespace

TBasis::~TBasis() { Clear(); }

TFieldInfo& TBasis::Append(TFieldInfo&& field) { return items_.emplace_back(std::move(field)); }

TFieldInfo& TBasis::AppendBlock(TFieldInfo&& block, std::unique_ptr<TBasis> level) {
  level->parent = this;
  level->owner_position_ = Count();
  TFieldInfo& entry = Append(std::move(block));
  entry.is_block = true;
  entry.block = std::move(level);
  return entry;
}

void TBasis::Clear() {
  // Levels are taken off their entries before they are freed, so that freeing one never
  // frees another from within.
  std::vector<std::unique_ptr<TBasis>> pending;
  MoveBlocks(items_, pending);
  while (!pending.empty()) {
    const std::unique_ptr<TBasis> level = std::move(pending.back());
    pending.pop_back();
    MoveBlocks(level->items_, pending);
  }
  items_.clear();
  names_.Clear();
  xml_paths_.Clear();
  indexed_ = false;
  checksum_ = 0;
}

int TBasis::IndexOfName(std::string_view name) const {
  if (indexed_) return names_.Find(name);
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [name](const TFieldInfo& item) { return item.name == name; });
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

int TBasis::IndexOfBlock(std::string_view name) const {
  const int position = IndexOfName(name);
  return position >= 0 && Item(position).is_block ? position : -1;
}

const TFieldInfo& TBasis::FieldByName(std::string_view name) const {
  const int position = IndexOfName(name);
  assert(position >= 0);
  return Item(position);
}

int TBasis::IndexOfXmlPath(std::string_view path) const {
  return xml_paths_.Find(CutToShort(path));
}

const TBasis& TBasis::FindSubBasis(std::string_view path) const {
  if (!indexed_ || path == "root" || SameTextRu(path, "MAIN")) return *this;
  const TBasis* basis = this;
  for (const std::string_view part : Words(path, kPathSeparator)) {
    if (IsRecordNumber(part)) continue;
    const int position = basis->IndexOfName(part);
    if (position < 0 || basis->Item(position).block == nullptr) break;
    basis = basis->Item(position).block.get();
  }
  return *basis;
}

int TBasis::TotalWidth(int position) const {
  const TFieldInfo& field = Item(position);
  if (!field.line_widths.empty()) {
    return std::accumulate(field.line_widths.begin(), field.line_widths.end(), 0);
  }
  return field.lines >= 2 ? field.width * field.lines : field.width;
}

void TBasis::Reindex() {
  names_.Clear();
  xml_paths_.Clear();
  names_.Reserve(items_.size());
  xml_paths_.Reserve(items_.size());
  checksum_ = 0;
  std::string stripped;
  for (int i = 0; i < Count(); ++i) {
    const TFieldInfo& item = Item(i);
    if (item.block != nullptr) checksum_ ^= item.block->checksum();
    checksum_ = UpdateCrc(checksum_, item.name);
    names_.Add(item.name, i);
    StripPrefixes(item.xml_path, stripped);
    // What is looked up is cut at 255 bytes: a longer path is never found.
    if (stripped.size() <= ShortText::kMaxSize) xml_paths_.Add(stripped, i);
  }
  indexed_ = true;
}

std::string TBasis::Path() const {
  std::vector<const std::string*> names;
  for (const TBasis* level = this; level->parent != nullptr; level = level->parent) {
    names.push_back(&level->Owner()->name);
  }
  std::string path;
  for (auto name = names.rbegin(); name != names.rend(); ++name) {
    if (!path.empty()) path += '\\';
    path += **name;
  }
  return path;
}

}  // namespace customsconv
