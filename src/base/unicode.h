#ifndef CUSTOMSCONV_BASE_UNICODE_H_
#define CUSTOMSCONV_BASE_UNICODE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace customsconv {

// UTF-8 and UTF-16 to code page 1251, which all text is in here, and back:
//
//   const std::optional<std::string> text = WinFromUtf8(argument);
//   if (!text) return "not well-formed UTF-8";
//   terminal << Utf8FromWin(*text);
//
// Decoding is strict: overlong forms, surrogates and what lies above U+10FFFF make a text
// malformed. A byte order mark at the start is dropped; a character that code page 1251
// lacks becomes "?". Every byte of code page 1251 survives the way to UTF-8 and back.
[[nodiscard]] std::optional<std::string> WinFromUtf8(std::string_view utf8);
// The same in the memory of `text`, for files of any size; what stands before `start`
// is dropped. False for what is malformed; nothing useful is left of the text then.
[[nodiscard]] bool WinFromUtf8InPlace(std::string& text, std::size_t start = 0);
[[nodiscard]] std::string Utf8FromWin(std::string_view win);
void AppendUtf8FromWin(std::string& utf8, std::string_view win);

// Little-endian UTF-16; a surrogate pair is one character, a lone surrogate or a character that
// code page 1251 lacks becomes "?", an odd last byte is dropped.
[[nodiscard]] std::string WinFromUtf16(std::string_view utf16);

}  // namespace customsconv

#endif  // CUSTOMSCONV_BASE_UNICODE_H_
