#include "support/text.h"

#include <stdexcept>

#include "base/code_pages.h"

namespace customsconv {

std::string Win(std::string_view utf8) {
  const std::string win = WinFromUtf8(utf8).value();
  if (Utf8FromWin(win) != utf8) {
    throw std::invalid_argument("code page 1251 cannot hold: " + std::string(utf8));
  }
  return win;
}

std::string Utf8(std::string_view win) { return Utf8FromWin(win); }

}  // namespace customsconv
