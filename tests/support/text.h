#ifndef CUSTOMSCONV_TESTS_SUPPORT_TEXT_H_
#define CUSTOMSCONV_TESTS_SUPPORT_TEXT_H_

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/error.h"
#include "base/unicode.h"

namespace customsconv {

// Code page 1251 bytes as UTF-8, so that a failed expectation can be read.
[[nodiscard]] inline std::string Utf8(std::string_view win) { return Utf8FromWin(win); }

// UTF-8 of a test source as code page 1251 bytes. Throws for a character that it lacks.
[[nodiscard]] inline std::string Win(std::string_view utf8) {
  std::string win = WinFromUtf8(utf8).value();
  if (Utf8(win) != utf8) throw std::invalid_argument("not in 1251: " + std::string(utf8));
  return win;
}

inline constexpr std::string_view kNoError = "(no error)";
inline constexpr std::string_view kSilentAbort = "(silent abort)";

// The code page 1251 message of the Error that `call` throws; kSilentAbort or
// kNoError where there is none.
template <typename Callable>
[[nodiscard]] std::string ErrorOf(Callable&& call) {
  try {
    call();
  } catch (const SilentAbort&) {
    return std::string(kSilentAbort);
  } catch (const Error& error) {
    return error.text();
  }
  return std::string(kNoError);
}

// The rows "input -> expected" of a table of cases as pairs.
[[nodiscard]] inline std::vector<std::pair<std::string, std::string>> Cases(
    std::initializer_list<std::string_view> rows) {
  std::vector<std::pair<std::string, std::string>> cases;
  for (const std::string_view row : rows) {
    const std::size_t arrow = row.find(" -> ");
    cases.emplace_back(row.substr(0, arrow), row.substr(arrow).substr(4));
  }
  return cases;
}

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_TEXT_H_
