#ifndef CUSTOMSCONV_TEXT_WORDS_H_
#define CUSTOMSCONV_TEXT_WORDS_H_

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/letter_case.h"
#include "base/lifetime.h"
#include "text/char_set.h"

namespace customsconv {

// Words, places and pieces of texts:
//
//   ExtractWord(2, "10702020/110615/0001234", "/")      "110615"
//   for (const std::string_view word : Words(line, " =")) …
//   if (ContainsNoCase(kind, "dts")) …
//   ReplaceAll("1,5", ",", ".")                         "1.5"
//
// Views point into the argument; nothing is copied unless a std::string is returned.

// Words are maximal runs of characters outside the delimiter set: runs of delimiters separate
// once, leading and trailing ones do not count. Word numbers count from 1.
[[nodiscard]] std::size_t WordCount(std::string_view text, const CharSet& delimiters);
[[nodiscard]] std::string_view ExtractWord(std::size_t number,
                                           std::string_view text CUSTOMSCONV_LIFETIME_BOUND,
                                           const CharSet& delimiters);
// All words in order, in one walk: for loops over words.
[[nodiscard]] std::vector<std::string_view> Words(std::string_view text CUSTOMSCONV_LIFETIME_BOUND,
                                                  const CharSet& delimiters);

// The same, but a delimiter inside double quotes (behind an odd and before an even quote) does
// not separate; the quotes stay in the word.
[[nodiscard]] std::size_t WordCountQuoted(std::string_view text, const CharSet& delimiters);
[[nodiscard]] std::string_view ExtractWordQuoted(std::size_t number,
                                                 std::string_view text CUSTOMSCONV_LIFETIME_BOUND,
                                                 const CharSet& delimiters);
[[nodiscard]] std::vector<std::string_view> WordsQuoted(
    std::string_view text CUSTOMSCONV_LIFETIME_BOUND, const CharSet& delimiters);

// Everything from the start of word `number` (from 0 here) to the end of the
// text, trimmed of bytes up to 32; empty when there are not number + 1 words.
[[nodiscard]] std::string_view TextFromWord(std::size_t number,
                                            std::string_view text CUSTOMSCONV_LIFETIME_BOUND,
                                            const CharSet& delimiters);

// Positions count from 1; 0 means absent, also for an empty pattern.
[[nodiscard]] std::size_t PosFrom(std::string_view pattern, std::string_view text,
                                  std::size_t start);
[[nodiscard]] std::size_t PosFromNoCase(std::string_view pattern, std::string_view text,
                                        std::size_t start);
// `text` is short text: only its first 255 bytes are looked at.
[[nodiscard]] std::size_t LastPos(std::string_view pattern, std::string_view text);
[[nodiscard]] std::size_t PosChar(std::string_view text, char c, std::size_t start);
// Searches `buffer` from offset `from` up to offset `to` (exclusive, from 0); the
// result counts from 1 at `from`.
[[nodiscard]] std::size_t PosInRange(std::string_view pattern, std::string_view buffer,
                                     std::size_t from, std::size_t to);
// `count` bytes from offset `from`, but not beyond offset `limit`.
[[nodiscard]] std::string_view CopyRange(std::string_view buffer CUSTOMSCONV_LIFETIME_BOUND,
                                         std::size_t from, std::size_t count, std::size_t limit);
// `pattern` stands somewhere in `text`, exact bytes / without regard to case. An
// empty pattern stands nowhere.
[[nodiscard]] bool Contains(std::string_view text, std::string_view pattern);
[[nodiscard]] bool ContainsNoCase(std::string_view text, std::string_view pattern);
// Takes `prefix` off the front of `text`; false when it does not stand there.
bool TakePrefix(std::string_view& text, std::string_view prefix);
// The parts one behind the other (JoinShort of base/short_text.h: cut at 255 bytes).
[[nodiscard]] std::string Join(std::initializer_list<std::string_view> parts);

// Offset (from 0) where `pattern` begins at `from` or behind; npos when it does not. For whole
// files: many times quicker than std::string_view::find where the pattern's first character is
// frequent, as "<" is.
[[nodiscard]] std::size_t FindInLong(std::string_view text, std::string_view pattern,
                                     std::size_t from);

// Every occurrence, left to right, without overlap, exact bytes.
[[nodiscard]] std::string ReplaceAll(std::string_view text, std::string_view old_text,
                                     std::string_view new_text);

// Comparison of texts that may be missing: two missing ones are equal, a missing one equals nothing
// else. SameStr is exact, SameTextFast without regard to case (SameTextRu of base/letter_case.h on
// texts that are there).
[[nodiscard]] bool SameStr(std::optional<std::string_view> a, std::optional<std::string_view> b);
[[nodiscard]] bool SameTextFast(std::optional<std::string_view> a,
                                std::optional<std::string_view> b);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_WORDS_H_
