// The text stays in one piece; lines and names are views of it.

#include "mapping/rules_file.h"

#include <algorithm>

#include "base/error.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr CharSet kHeaderDelimiters{" []"};

bool EndsLine(char c) { return c == '\r' || c == '\n'; }

}  // namespace

RulesFile::RulesFile(std::string_view text, std::string_view name)
    : text_(text), name_(ShortText::Cut(name)) {
  std::string_view rest = text_;
  while (!rest.empty()) {
    const auto* const line_end = std::find_if(rest.begin(), rest.end(), EndsLine);
    const auto end = static_cast<std::size_t>(line_end - rest.begin());
    lines_.push_back(rest.substr(0, end));
    if (end == rest.size()) break;
    const bool pair = rest[end] == '\r' && end + 1 < rest.size() && rest[end + 1] == '\n';
    rest.remove_prefix(end + (pair ? 2 : 1));
  }
}

RulesFile RulesFile::Load(const Files& files, std::string_view name) {
  return RulesFile(files.Read(name), name);
}

std::string_view RulesFile::ShortLine(int index) const {
  if (index < 0 || index >= Count()) throw ListIndexError(index);
  return CutToShort(Line(index));
}

std::optional<int> RulesFile::FindSection(std::string_view kind) const {
  for (int i = 0; i + 1 < Count(); ++i) {
    if (Line(i).starts_with('[') && Line(i + 1).starts_with('=') &&
        ContainsNoCase(Line(i + 1), kind)) {
      return i;
    }
  }
  return std::nullopt;
}

std::string_view RulesFile::TableName(int header_line) const {
  return ExtractWord(1, ShortLine(header_line), kHeaderDelimiters);
}

int RulesFile::NextHeader(int line) const {
  int next = line + 1;
  while (next < Count() && !Line(next).starts_with('[')) ++next;
  return next;
}

}  // namespace customsconv
