#ifndef CUSTOMSCONV_BASE_DOS_CODE_PAGE_H_
#define CUSTOMSCONV_BASE_DOS_CODE_PAGE_H_

#include <string>
#include <string_view>

#include "base/short_text.h"

namespace customsconv {

// Code page 866, which dBase tables and some ini files are written in, to code page 1251,
// which all text is in here, and back:
//
//   const std::string text = WinFromDos(bytes_of_a_table);
//   bytes_of_a_table = DosFromWin(text);
//
// Byte by byte, so a text keeps its size and nothing can fail. The tables are the standard
// mapping for every character that both pages have; box drawing, quotes and dashes become
// look-alikes, so a round trip of those does not give the same text.
[[nodiscard]] char WinFromDos(char dos);
[[nodiscard]] std::string WinFromDos(std::string_view dos);
[[nodiscard]] ShortText WinFromDosShort(std::string_view dos);
void WinFromDosInPlace(std::string& text);
[[nodiscard]] char DosFromWin(char win);
[[nodiscard]] std::string DosFromWin(std::string_view win);
[[nodiscard]] ShortText DosFromWinShort(std::string_view win);
void DosFromWinInPlace(std::string& text);
// Writes as many bytes as `win` has.
void DosFromWinTo(char* to, std::string_view win);

}  // namespace customsconv

#endif  // CUSTOMSCONV_BASE_DOS_CODE_PAGE_H_
