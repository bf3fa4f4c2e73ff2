#ifndef CUSTOMSCONV_BASE_CODE_PAGES_H_
#define CUSTOMSCONV_BASE_CODE_PAGES_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace customsconv {

// Text of a file that may be in one of several code pages:
//
//   const std::string text = ToWindows(bytes, CodePage::kUnknown);  // finds out which
//
// Where the code page is fixed, base/dos_code_page.h and base/unicode.h convert.

// Code pages as configuration files and tables name them.
enum class CodePage : std::uint8_t {
  kUnknown = 0,  // detect from the text
  kDos = 1,      // 866
  kWindows = 2,  // 1251
  kUtf8 = 3,
};

// Guesses the code page of a text: UTF-8 when its first 255 bytes name "UTF-8" in
// double quotes or it begins with a byte order mark, else by counting letters
// that are frequent in Russian text; 1251 when nothing speaks for 866.
[[nodiscard]] CodePage DetectCodePage(std::string_view text);

// `text` in code page 1251. kUnknown is detected first. Malformed UTF-8 gives
// empty text.
[[nodiscard]] std::string ToWindows(std::string_view text, CodePage code_page);

}  // namespace customsconv

#endif  // CUSTOMSCONV_BASE_CODE_PAGES_H_
