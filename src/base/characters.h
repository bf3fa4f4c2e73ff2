#ifndef CUSTOMSCONV_BASE_CHARACTERS_H_
#define CUSTOMSCONV_BASE_CHARACTERS_H_

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "base/lifetime.h"

namespace customsconv {

// Kinds of characters, and texts without the blanks around them:
//
//   if (!value.empty() && IsDigit(value.front())) …
//   const std::string_view name = Trim(line.substr(0, line.find('=')));  // a view into `line`
//
// The C locale is never asked.

[[nodiscard]] constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
// An empty text, too.
[[nodiscard]] constexpr bool AllDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), IsDigit);
}
// Every byte up to 32, line breaks and tabs among them, is a blank around a text.
[[nodiscard]] constexpr bool IsBlank(char c) { return static_cast<unsigned char>(c) <= 32; }

[[nodiscard]] constexpr std::string_view TrimLeft(
    std::string_view text CUSTOMSCONV_LIFETIME_BOUND) {
  std::size_t start = 0;
  while (start < text.size() && IsBlank(text[start])) ++start;
  return text.substr(start);
}
[[nodiscard]] constexpr std::string_view TrimRight(
    std::string_view text CUSTOMSCONV_LIFETIME_BOUND) {
  std::size_t size = text.size();
  while (size > 0 && IsBlank(text[size - 1])) --size;
  return text.substr(0, size);
}
[[nodiscard]] constexpr std::string_view Trim(std::string_view text CUSTOMSCONV_LIFETIME_BOUND) {
  return TrimRight(TrimLeft(text));
}

}  // namespace customsconv

#endif  // CUSTOMSCONV_BASE_CHARACTERS_H_
