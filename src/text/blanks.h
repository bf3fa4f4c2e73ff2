#ifndef CUSTOMSCONV_TEXT_BLANKS_H_
#define CUSTOMSCONV_TEXT_BLANKS_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "base/characters.h"
#include "base/lifetime.h"

namespace customsconv {

// Blanks around and inside texts, and other small changes:
//
//   TrimBlanks("  G32 ")         "G32"
//   PadLeft("42", '0', 7)        "0000042"
//   CollapseBlanks("a   b")      "a b"
//   StripControls(value, true)   one line, without blanks at its end
//
// Trimming takes every byte up to 32, all else means the blank itself (32). Views point
// into the argument.

// Trim, TrimLeft and TrimRight of base/characters.h on short text: the argument is cut at 255
// bytes first.
[[nodiscard]] std::string_view TrimBlanks(std::string_view text CUSTOMSCONV_LIFETIME_BOUND);
[[nodiscard]] std::string_view TrimBlanksLeft(std::string_view text CUSTOMSCONV_LIFETIME_BOUND);
[[nodiscard]] std::string_view TrimBlanksRight(std::string_view text CUSTOMSCONV_LIFETIME_BOUND);

// Appends (PadRight) or prepends (PadLeft, short text) `fill` until the text has `length`
// bytes, at most 255; longer texts stay as they are.
[[nodiscard]] std::string PadRight(std::string_view text, char fill, std::size_t length);
[[nodiscard]] std::string PadLeft(std::string_view text, char fill, std::size_t length);
[[nodiscard]] std::string PadRightBlanks(std::string_view text, std::size_t length);
[[nodiscard]] std::string PadLeftBlanks(std::string_view text, std::size_t length);

// Every run of two or more bytes 32 becomes one.
[[nodiscard]] std::string CollapseBlanks(std::string_view text);
// CR becomes a blank, every other byte below 32 is removed; `trim_end` removes
// trailing blanks (bytes up to 32) afterwards.
[[nodiscard]] std::string StripControls(std::string_view text, bool trim_end);
[[nodiscard]] std::string ReplaceChar(std::string_view text, char from, char to);
[[nodiscard]] std::string RemoveChar(std::string_view text, char c);
// Without its last `count` characters (empty when it has fewer).
[[nodiscard]] std::string_view DropTail(std::string_view text CUSTOMSCONV_LIFETIME_BOUND,
                                        std::size_t count);
[[nodiscard]] std::string_view IfEmpty(std::string_view text CUSTOMSCONV_LIFETIME_BOUND,
                                       std::string_view default_text CUSTOMSCONV_LIFETIME_BOUND);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_BLANKS_H_
