#ifndef CUSTOMSCONV_TEXT_TEXT_SPLIT_H_
#define CUSTOMSCONV_TEXT_TEXT_SPLIT_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "base/lifetime.h"
#include "text/char_set.h"

namespace customsconv {

// Long texts cut into pieces that fit a width:
//
//   for (std::string_view rest = text; !rest.empty();) {
//     const SplitText split = WrapSplit(rest, 80);
//     AddLine(split.head);
//     rest = split.tail;
//   }
//
// Such a loop always ends: a split takes something off, and blanks at the cut are dropped.

// Head and tail of a text that was split once.
struct SplitText {
  std::string head;
  std::string_view tail;  // into the text that was split
};

// Splits at a word boundary so that the head is not longer than `width` bytes where one can be
// found, else hard at the width. A delimiter other than a blank stays at the end of the head. A
// width below 1 leaves the whole text in the head. An empty delimiter set means the default one:
// every character that is neither a Latin or Cyrillic letter nor a digit.
[[nodiscard]] SplitText WrapSplit(std::string_view text CUSTOMSCONV_LIFETIME_BOUND,
                                  const CharSet& delimiters, bool pad_head, int width);
[[nodiscard]] SplitText WrapSplit(std::string_view text CUSTOMSCONV_LIFETIME_BOUND, int width);
// At the first line break when that stands within the width (and breaks are
// used), else WrapSplit.
[[nodiscard]] SplitText SplitFirstLine(std::string_view text CUSTOMSCONV_LIFETIME_BOUND,
                                       bool use_line_breaks, int width);
// At the first character of `set` within the width, else WrapSplit.
[[nodiscard]] SplitText SplitAtSet(std::string_view text CUSTOMSCONV_LIFETIME_BOUND,
                                   const CharSet& set, int width);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_TEXT_SPLIT_H_
