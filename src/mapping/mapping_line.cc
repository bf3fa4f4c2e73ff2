// Splits the lines of a section into field and expression; further words are a comment.

#include "mapping/mapping_line.h"

#include "text/words.h"

namespace customsconv {
namespace {

constexpr CharSet kLineDelimiters{" !="};

}  // namespace

std::vector<MappingLine> MappingLinesOf(const RulesFile& rules, int header) {
  std::vector<MappingLine> lines;
  for (int i = header + 2; i < rules.Count(); ++i) {
    const std::string_view text = rules.ShortLine(i);
    if (text.empty() || text.front() == ';') continue;
    if (text.front() == '[') break;
    const std::string_view field = ExtractWord(1, text, kLineDelimiters);
    if (field.empty()) continue;
    MappingLine& line = lines.emplace_back();
    line.index = i;
    line.field = field;
    line.expression = ExtractWord(2, text, kLineDelimiters);
  }
  return lines;
}

}  // namespace customsconv
