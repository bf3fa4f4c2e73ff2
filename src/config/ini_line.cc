// What a line of an ini file is: section, key with value, or a key that a ";" switches off.

#include "config/ini_line.h"

#include <cstddef>

#include "base/short_text.h"
#include "text/blanks.h"

namespace customsconv {

std::optional<std::string_view> ParseSectionHeader(std::string_view line) {
  if (line.empty() || line.front() != '[') return std::nullopt;
  line = CutToShort(line);
  const std::size_t end = line.find(']');
  if (end == std::string_view::npos) return std::string_view();
  return Trim(line.substr(1, end - 1));
}

std::optional<IniKeyLine> ParseKeyLine(std::string_view line) {
  if (line.empty() || line.front() == ';') return std::nullopt;
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  return IniKeyLine{CutToShort(Trim(line.substr(0, equals))), Trim(line.substr(equals + 1))};
}

std::optional<std::string_view> ParseCommentedKey(std::string_view line) {
  constexpr std::size_t kLongestKey = 28;
  if (line.empty() || line.front() != ';') return std::nullopt;
  line.remove_prefix(1);
  const std::size_t equals = line.substr(0, kLongestKey + 1).find('=');
  if (equals == 0 || equals == std::string_view::npos) return std::nullopt;
  const auto parsed = ParseKeyLine(line);
  if (!parsed) return std::nullopt;
  return parsed->key;
}

}  // namespace customsconv
