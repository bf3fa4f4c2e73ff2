#include "text/words.h"

#include <algorithm>

#include "base/short_text.h"
#include "text/blanks.h"

namespace customsconv {
namespace {

// Walks over the words of a text, one a call, without allocating.
class PlainWords {
 public:
  PlainWords(std::string_view text, const CharSet& delimiters)
      : text_(text), delimiters_(delimiters) {}

  bool Next(std::string_view& word) {
    while (position_ < text_.size() && delimiters_.Has(text_[position_])) ++position_;
    const std::size_t start = position_;
    while (position_ < text_.size() && !delimiters_.Has(text_[position_])) ++position_;
    word = text_.substr(start, position_ - start);
    return !word.empty();
  }

 private:
  std::string_view text_;
  const CharSet& delimiters_;
  std::size_t position_ = 0;
};

// The same, with quotes that keep delimiters from separating. The quotes
// themselves always belong to a word.
class QuotedWords {
 public:
  QuotedWords(std::string_view text, const CharSet& delimiters)
      : text_(text), delimiters_(delimiters) {}

  bool Next(std::string_view& word) {
    while (position_ < text_.size() && Separates(text_[position_])) ++position_;
    const std::size_t start = position_;
    for (; position_ < text_.size() && !Separates(text_[position_]); ++position_) {
      if (text_[position_] == '"') inside_quotes_ = !inside_quotes_;
    }
    word = text_.substr(start, position_ - start);
    return !word.empty();
  }

 private:
  bool Separates(char c) const { return c != '"' && !inside_quotes_ && delimiters_.Has(c); }

  std::string_view text_;
  const CharSet& delimiters_;
  std::size_t position_ = 0;
  bool inside_quotes_ = false;
};

template <typename Walk>
std::size_t Count(std::string_view text, const CharSet& delimiters) {
  Walk walk(text, delimiters);
  std::size_t count = 0;
  for (std::string_view word; walk.Next(word);) ++count;
  return count;
}

template <typename Walk>
std::string_view Extract(std::size_t number, std::string_view text CUSTOMSCONV_LIFETIME_BOUND,
                         const CharSet& delimiters) {
  Walk walk(text, delimiters);
  for (std::string_view word; number > 0 && walk.Next(word);) {
    if (--number == 0) return word;
  }
  return {};
}

template <typename Walk>
std::vector<std::string_view> All(std::string_view text CUSTOMSCONV_LIFETIME_BOUND,
                                  const CharSet& delimiters) {
  Walk walk(text, delimiters);
  std::vector<std::string_view> words;
  for (std::string_view word; walk.Next(word);) words.push_back(word);
  return words;
}

std::size_t PositionOrZero(std::size_t offset) {
  return offset == std::string_view::npos ? 0 : offset + 1;
}

// Positions below 1 count as 1.
std::size_t OffsetOf(std::size_t start) { return start == 0 ? 0 : start - 1; }

// The other case of a letter whose upper-case form is `upper`.
constexpr char LowerOf(char upper) {
  const auto byte = static_cast<unsigned char>(upper);
  if ((byte >= 'A' && byte <= 'Z') || (byte >= 0xC0 && byte <= 0xDF)) {
    return static_cast<char>(byte + 0x20);
  }
  return byte == 0xA8 ? static_cast<char>(0xB8) : upper;
}

}  // namespace

std::size_t WordCount(std::string_view text, const CharSet& delimiters) {
  return Count<PlainWords>(text, delimiters);
}

std::string_view ExtractWord(std::size_t number, std::string_view text, const CharSet& delimiters) {
  return Extract<PlainWords>(number, text, delimiters);
}

std::vector<std::string_view> Words(std::string_view text, const CharSet& delimiters) {
  return All<PlainWords>(text, delimiters);
}

std::size_t WordCountQuoted(std::string_view text, const CharSet& delimiters) {
  return Count<QuotedWords>(text, delimiters);
}

std::string_view ExtractWordQuoted(std::size_t number, std::string_view text,
                                   const CharSet& delimiters) {
  return Extract<QuotedWords>(number, text, delimiters);
}

std::vector<std::string_view> WordsQuoted(std::string_view text, const CharSet& delimiters) {
  return All<QuotedWords>(text, delimiters);
}

std::string_view TextFromWord(std::size_t number, std::string_view text,
                              const CharSet& delimiters) {
  const std::string_view word = ExtractWord(number + 1, text, delimiters);
  if (word.empty()) return {};
  return Trim(text.substr(static_cast<std::size_t>(word.data() - text.data())));
}

std::size_t PosFrom(std::string_view pattern, std::string_view text, std::size_t start) {
  if (pattern.empty()) return 0;
  return PositionOrZero(text.find(pattern, OffsetOf(start)));
}

std::size_t PosFromNoCase(std::string_view pattern, std::string_view text, std::size_t start) {
  const std::size_t offset = OffsetOf(start);
  if (pattern.empty() || offset > text.size()) return 0;
  const char upper = UpperCaseChar(pattern.front());
  const char lower = LowerOf(upper);
  for (std::size_t i = offset; text.size() - i >= pattern.size(); ++i) {
    if ((text[i] == upper || text[i] == lower) &&
        SameTextRu(text.substr(i, pattern.size()), pattern)) {
      return i + 1;
    }
  }
  return 0;
}

std::size_t LastPos(std::string_view pattern, std::string_view text) {
  if (pattern.empty()) return 0;
  return PositionOrZero(CutToShort(text).rfind(pattern));
}

std::size_t PosChar(std::string_view text, char c, std::size_t start) {
  return PositionOrZero(text.find(c, OffsetOf(start)));
}

std::size_t PosInRange(std::string_view pattern, std::string_view buffer, std::size_t from,
                       std::size_t to) {
  to = std::min(to, buffer.size());
  if (to <= from || pattern.empty()) return 0;
  return PositionOrZero(buffer.substr(from, to - from).find(pattern));
}

std::string_view CopyRange(std::string_view buffer, std::size_t from, std::size_t count,
                           std::size_t limit) {
  limit = std::min(limit, buffer.size());
  if (from >= limit) return {};
  return buffer.substr(from, std::min(count, limit - from));
}

bool Contains(std::string_view text, std::string_view pattern) {
  return PosFrom(pattern, text, 1) != 0;
}

bool ContainsNoCase(std::string_view text, std::string_view pattern) {
  return PosFromNoCase(pattern, text, 1) != 0;
}

bool TakePrefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

std::string Join(std::initializer_list<std::string_view> parts) {
  std::string joined;
  for (const std::string_view part : parts) joined += part;
  return joined;
}

// Most blocks hold no place where the pattern's first and last character stand at its distance;
// that test of a whole block is a few vector instructions.
std::size_t FindInLong(std::string_view text, std::string_view pattern, std::size_t from) {
  constexpr std::size_t kBlock = 64;
  if (pattern.empty()) return text.find(pattern, from);
  const std::size_t distance = pattern.size() - 1;
  for (; from + kBlock + distance <= text.size(); from += kBlock) {
    const char* const first = text.data() + from;
    const char* const last = first + distance;
    unsigned char candidate = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
      const int both = static_cast<int>(first[i] == pattern.front()) &
                       static_cast<int>(last[i] == pattern.back());
      candidate = static_cast<unsigned char>(candidate | both);
    }
    if (candidate == 0) continue;
    const std::size_t found = text.substr(from, kBlock + distance).find(pattern);
    if (found != std::string_view::npos) return from + found;
  }
  return text.find(pattern, from);
}

std::string ReplaceAll(std::string_view text, std::string_view old_text,
                       std::string_view new_text) {
  std::string result;
  if (old_text.empty()) return result.assign(text);
  std::size_t count = 0;
  for (std::size_t at = text.find(old_text); at != text.npos;
       at = text.find(old_text, at + old_text.size())) {
    ++count;
  }
  result.reserve(text.size() - count * old_text.size() + count * new_text.size());
  std::size_t done = 0;
  for (; count > 0; --count) {
    const std::size_t at = text.find(old_text, done);
    result.append(text.substr(done, at - done)).append(new_text);
    done = at + old_text.size();
  }
  return result.append(text.substr(done));
}

bool SameStr(std::optional<std::string_view> a, std::optional<std::string_view> b) {
  return a == b;
}

bool SameTextFast(std::optional<std::string_view> a, std::optional<std::string_view> b) {
  if (!a || !b) return !a && !b;
  return SameTextRu(*a, *b);
}

}  // namespace customsconv
