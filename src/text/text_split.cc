#include "text/text_split.h"

#include <algorithm>

namespace customsconv {
namespace {

constexpr CharSet kNeitherLetterNorDigit = [] {
  CharSet set;
  set.AddRange(0, 255);
  for (int byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    if (kLettersAndDigits.Has(c)) set.Remove(c);
  }
  return set;
}();

constexpr CharSet kLineBreaks{"\r\n"};
constexpr CharSet kLineBreaksAndBlank{"\r\n "};

// `size` less the blanks that end the first `size` characters.
std::size_t WithoutBlanks(std::string_view text, std::size_t size) {
  while (size > 0 && text[size - 1] == ' ') --size;
  return size;
}

// The word that stands at the end of the first `width` characters goes on behind
// them. A delimiter right behind it, or behind the blanks that follow it, ends it
// in time. (Blanks matter here where they are no delimiters themselves.)
bool WordCrosses(std::string_view text, const CharSet& delimiters, std::size_t width) {
  if (delimiters.Has(text[width - 1])) return false;
  std::size_t next = width;
  while (next < text.size() && text[next] == ' ' && !delimiters.Has(' ')) ++next;
  return next < text.size() && !delimiters.Has(text[next]);
}

// How many characters of a text that is longer than `width` make up its head.
std::size_t HeadSize(std::string_view text, const CharSet& delimiters, std::size_t width) {
  if (!WordCrosses(text, delimiters, width)) return WithoutBlanks(text, width);
  std::size_t size = width;
  while (size > 0 && !delimiters.Has(text[size - 1])) --size;
  return size == 0 ? width : WithoutBlanks(text, size);
}

// Splits around the run of `set` characters that `position` belongs to.
SplitText SplitAround(std::string_view text, std::size_t position, const CharSet& set) {
  std::size_t head = position;
  while (head > 0 && set.Has(text[head - 1])) --head;
  std::size_t tail = position;
  while (tail < text.size() && set.Has(text[tail])) ++tail;
  return {std::string(text.substr(0, head)), text.substr(tail)};
}

// Offset of the first character of `set` among the first `width`, or npos.
std::size_t FirstOf(std::string_view text, const CharSet& set, std::size_t width) {
  const std::string_view seen = text.substr(0, width);
  const auto found = std::find_if(seen.begin(), seen.end(), [&set](char c) { return set.Has(c); });
  return found == seen.end() ? seen.npos : static_cast<std::size_t>(found - seen.begin());
}

}  // namespace

SplitText WrapSplit(std::string_view text, const CharSet& delimiters, bool pad_head, int width) {
  const auto limit = static_cast<std::size_t>(std::max(width, 0));
  if (limit == 0 || text.size() <= limit) return {std::string(text), {}};
  const CharSet& used = delimiters.empty() ? kNeitherLetterNorDigit : delimiters;
  const std::size_t size = HeadSize(text, used, limit);
  std::size_t tail = size;
  while (tail < text.size() && text[tail] == ' ') ++tail;
  SplitText split{std::string(text.substr(0, size)), text.substr(tail)};
  if (pad_head) split.head.resize(limit, ' ');
  return split;
}

SplitText WrapSplit(std::string_view text, int width) {
  return WrapSplit(text, kNeitherLetterNorDigit, false, width);
}

SplitText SplitFirstLine(std::string_view text, bool use_line_breaks, int width) {
  if (use_line_breaks && width > 0) {
    const std::size_t line_break = FirstOf(text, kLineBreaks, static_cast<std::size_t>(width));
    if (line_break != text.npos) return SplitAround(text, line_break, kLineBreaksAndBlank);
  }
  return WrapSplit(text, width);
}

SplitText SplitAtSet(std::string_view text, const CharSet& set, int width) {
  if (width > 0) {
    const std::size_t separator = FirstOf(text, set, static_cast<std::size_t>(width));
    if (separator != text.npos) {
      CharSet run = set;
      run.Add(' ');
      return SplitAround(text, separator, run);
    }
  }
  return WrapSplit(text, width);
}

}  // namespace customsconv
