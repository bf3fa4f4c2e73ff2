#ifndef CUSTOMSCONV_BASE_DOS_UNICODE_H_
#define CUSTOMSCONV_BASE_DOS_UNICODE_H_

#include <string>
#include <string_view>

namespace customsconv {

// Appends a text in code page 866 as UTF-8, for programs that read Unicode. Unlike the way over
// code page 1251 it keeps every character: frames and shades stay what they are. The bytes 0x0F,
// 0x14 and 0x15, as which the tables hold "¤", "¶" and "§", become these signs; other control
// bytes stay.
void AppendUtf8FromDos(std::string& utf8, std::string_view dos);

}  // namespace customsconv

#endif  // CUSTOMSCONV_BASE_DOS_UNICODE_H_
