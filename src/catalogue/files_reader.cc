// A line names a block and its table; how far it is indented tells which block it lies in. Lines
// are short text here: what stands behind 255 bytes is not seen.

#include "catalogue/files_reader.h"

#include <cstddef>

#include "base/letter_case.h"
#include "base/short_text.h"
#include "text/char_set.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr CharSet kBlockDelimiters(" [");  // not "=", which may so become part of the name
constexpr CharSet kTableDelimiters(" =");
constexpr std::size_t kBlanksPerLevel = 2;

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

}  // namespace customsconv
