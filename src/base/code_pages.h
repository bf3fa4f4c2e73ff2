#ifndef CUSTOMSCONV_BASE_CODE_PAGES_H_
#define CUSTOMSCONV_BASE_CODE_PAGES_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/short_text.h"

namespace customsconv {

// Code pages as configuration files and tables name them.
enum class CodePage : std::uint8_t {
  kUnknown = 0,  // detect from the text
  kDos = 1,      // 866
  kWindows = 2,  // 1251
  kUtf8 = 3,
};

// Code page 866 to 1251 and back, byte by byte, by the family's own tables.
// They follow the standard mapping for every character that both pages have;
// box drawing, quotes and dashes become look-alikes, so a round trip of those
// does not give the same text.
[[nodiscard]] char WinFromDos(char dos);
[[nodiscard]] std::string WinFromDos(std::string_view dos);
[[nodiscard]] ShortText WinFromDosShort(std::string_view dos);
void WinFromDosInPlace(std::string& text);
[[nodiscard]] char DosFromWin(char win);
[[nodiscard]] std::string DosFromWin(std::string_view win);
[[nodiscard]] ShortText DosFromWinShort(std::string_view win);
// Writes as many bytes as `win` has.
void DosFromWinTo(char* to, std::string_view win);
void DosFromWinInPlace(std::string& text);

// Guesses the code page of a text: UTF-8 when its first 255 bytes name "UTF-8" in
// double quotes or it begins with a byte order mark, else by counting letters
// that are frequent in Russian text; 1251 when nothing speaks for 866.
[[nodiscard]] CodePage DetectCodePage(std::string_view text);

// `text` in code page 1251. kUnknown is detected first. Malformed UTF-8 gives
// empty text.
[[nodiscard]] std::string ToWindows(std::string_view text, CodePage code_page);

// Strict decoding: empty optional for anything that is not well-formed UTF-8
// (overlong forms, surrogates, above U+10FFFF included). A byte order mark at
// the start is dropped; a character that code page 1251 lacks becomes "?".
[[nodiscard]] std::optional<std::string> WinFromUtf8(std::string_view utf8);
// The same in the memory of `text`, for files of any size; what stands before `start`
// is dropped. False for what is malformed; nothing useful is left of the text then.
[[nodiscard]] bool WinFromUtf8InPlace(std::string& text, std::size_t start = 0);
[[nodiscard]] std::string Utf8FromWin(std::string_view win);
void AppendUtf8FromWin(std::string& utf8, std::string_view win);

// Little-endian UTF-16; a surrogate pair is one character, a lone surrogate or
// a character that code page 1251 lacks becomes "?", an odd last byte is dropped.
[[nodiscard]] std::string WinFromUtf16(std::string_view utf16);

}  // namespace customsconv

#endif  // CUSTOMSCONV_BASE_CODE_PAGES_H_
