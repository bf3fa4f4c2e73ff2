// Searches marks in the text itself; nothing of its structure is kept.

#include "document/composite_value.h"

#include <algorithm>
#include <vector>

#include "text/blanks.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr std::size_t kMarkSize = 2;  // the mark and the byte of the part's number
constexpr char kCr = '\r';

// A mark with the part's number behind it.
struct Mark {
  Mark(char mark, int number) : bytes{mark, static_cast<char>(number)} {}
  operator std::string_view() const { return {bytes, kMarkSize}; }
  char bytes[kMarkSize];
};

// Where the first mark stands at `from` or behind for which `is_wanted` holds; npos without one.
// The byte behind a mark is a number, also when it reads like a mark.
template <class Condition>
std::size_t FindMark(std::string_view text, std::size_t from, Condition is_wanted) {
  constexpr char kMarks[] = {kPartMark, kPartValueMark};
  while ((from = text.find_first_of({kMarks, sizeof kMarks}, from)) != std::string_view::npos) {
    if (is_wanted(text.substr(from, kMarkSize))) return from;
    from += kMarkSize;
  }
  return std::string_view::npos;
}

// Where `mark` stands inside `range`; npos when it does not.
std::size_t FindInside(std::string_view text, std::string_view mark, TextRange range) {
  return FindMark(text.substr(0, range.end), range.begin,
                  [mark](std::string_view found) { return found == mark; });
}

// End of the part whose content begins at `begin`: the next part mark, or `limit`.
std::size_t PartEnd(std::string_view text, std::size_t begin, std::size_t limit) {
  const auto is_part = [](std::string_view found) { return found.front() == kPartMark; };
  return std::min(FindMark(text.substr(0, limit), begin, is_part), limit);
}

// The same without the CRs that stand directly before the next part mark, so that the
// next part stays on its own line.
std::size_t ReplacedEnd(std::string_view text, std::size_t begin, std::size_t limit) {
  std::size_t end = PartEnd(text, begin, limit);
  if (end == limit) return end;
  while (end > begin && text[end - 1] == kCr) --end;
  return end;
}

// A part that the catalogue does not describe has no prefix and level 0.
const TSubField& PartOf(const TSubFieldsList& parts, int number) {
  static const TSubField kUnknown;
  const auto index = static_cast<std::size_t>(number) - 1;
  return number >= 1 && index < parts.size() ? parts[index] : kUnknown;
}

// The part and the parts that it lies in, outermost first.
std::vector<int> NestingChain(const TSubFieldsList& parts, int number) {
  std::vector<int> chain{number};
  int level = PartOf(parts, number).number;
  for (int earlier = number - 1; earlier >= 1 && level > 0; --earlier) {
    if (PartOf(parts, earlier).number >= level) continue;
    chain.push_back(earlier);
    level = PartOf(parts, earlier).number;
  }
  std::reverse(chain.begin(), chain.end());
  return chain;
}

// End of the area that begins at `begin` and takes parts of `level` and deeper.
std::size_t AreaEnd(std::string_view text, const TSubFieldsList& parts, std::size_t begin,
                    int level) {
  const auto ends_area = [&parts, level](std::string_view found) {
    if (found.front() != kPartMark || found.size() < kMarkSize) return false;
    const int number = static_cast<unsigned char>(found[1]);
    const bool described = number >= 1 && static_cast<std::size_t>(number) <= parts.size();
    return described && PartOf(parts, number).number < level;
  };
  return std::min(FindMark(text, begin, ends_area), text.size());
}

// Position of the part's value inside `area`; the part is created at the area's end
// when it is not there.
std::size_t EnsureInArea(std::string& text, const TSubField& part, int number, TextRange area) {
  const Mark value_mark(kPartValueMark, number);
  const std::size_t found = FindInside(text, value_mark, area);
  if (found != std::string::npos) return found + kMarkSize;
  std::string opening = PrefixVariant(part.prefix);
  opening += value_mark;
  const std::size_t inserted = InsertPartText(text, opening, area.end);
  text.insert(area.end, Mark(kPartMark, number));
  return area.end + kMarkSize + inserted;
}

// The same for a part in the whole text, with the parts that it lies in.
std::size_t EnsurePart(std::string& text, const TSubFieldsList& parts, int number) {
  std::size_t position = 0;
  bool nested = false;
  for (const int part_number : NestingChain(parts, number)) {
    const TSubField& part = PartOf(parts, part_number);
    TextRange area{0, text.size()};
    if (nested) area = {position, AreaEnd(text, parts, position, part.number)};
    position = EnsureInArea(text, part, part_number, area);
    nested = true;
  }
  return position;
}

// Replaces what the part holds; false when the part is not there.
bool ReplacePart(std::string& text, int number, std::string_view value, TextRange range) {
  // Emptying takes the prefix, too: only the part mark and its number stay.
  const Mark mark(value.empty() ? kPartMark : kPartValueMark, number);
  const std::size_t found = FindInside(text, mark, range);
  if (found == std::string::npos) return false;
  const std::size_t begin = found + kMarkSize;
  text.erase(begin, ReplacedEnd(text, begin, range.end) - begin);
  InsertPartText(text, value, begin);
  return true;
}

TextRange Clamped(TextRange range, std::size_t size) {
  const std::size_t end = std::min(range.end, size);
  return {std::min(range.begin, end), end};
}

}  // namespace

std::string_view PartValue(std::string_view composite, int number, TextRange range) {
  range = Clamped(range, composite.size());
  const std::size_t found = FindInside(composite, Mark(kPartValueMark, number), range);
  if (found == std::string_view::npos) return {};
  const std::size_t begin = found + kMarkSize;
  return Trim(composite.substr(begin, PartEnd(composite, begin, range.end) - begin));
}

std::string WithPart(std::string_view composite, const TSubFieldsList& parts, int number,
                     std::string_view value, std::optional<TextRange> range) {
  const TextRange searched =
      Clamped(range.value_or(TextRange{0, composite.size()}), composite.size());
  std::string text(composite);
  if (ReplacePart(text, number, value, searched)) return text;
  text = composite.substr(searched.begin, searched.end - searched.begin);
  const std::size_t position = EnsurePart(text, parts, number);
  InsertPartText(text, value, position);
  text.insert(0, composite.substr(0, searched.begin));
  text += composite.substr(searched.end);
  return text;
}

std::string PrefixVariant(std::string_view prefix) {
  const std::vector<std::string_view> variants = Words(prefix, "|");
  const auto is_quoted = [](std::string_view variant) { return variant.front() == '\''; };
  for (const std::string_view variant : variants) {
    if (is_quoted(variant) || Contains(variant, "PROC")) continue;
    std::string text(variant);
    const std::size_t star = text.find('*');
    if (star != std::string::npos) text.erase(star, 1);
    return text;
  }
  const auto quoted = std::find_if(variants.begin(), variants.end(), is_quoted);
  if (quoted != variants.end()) return std::string(quoted->substr(1, 1));
  return variants.empty() ? std::string() : std::string(variants.back());
}

std::size_t InsertPartText(std::string& target, std::string_view text, std::size_t position) {
  if (text.empty()) return 0;
  const auto is_letter = [&target](std::size_t at) {
    return at < target.size() && IsLetterOrDigit(target[at]);
  };
  // Between the letter before and the place stand a mark and its number.
  const bool blank_before =
      position > kMarkSize && is_letter(position - kMarkSize - 1) && IsLetterOrDigit(text.front());
  const bool mark_follows =
      position + kMarkSize + 2 < target.size() && static_cast<unsigned char>(target[position]) < 32;
  const bool blank_after =
      IsLetterOrDigit(text.back()) &&
      (is_letter(position) || (mark_follows && is_letter(position + kMarkSize)));
  if (position == 0 && text.front() == kCr) text.remove_prefix(1);
  std::string inserted(blank_before ? 1 : 0, ' ');
  inserted += text;
  if (blank_after) inserted += ' ';
  target.insert(position, inserted);
  return inserted.size();
}

}  // namespace customsconv
