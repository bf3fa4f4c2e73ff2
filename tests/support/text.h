#ifndef CUSTOMSCONV_TESTS_SUPPORT_TEXT_H_
#define CUSTOMSCONV_TESTS_SUPPORT_TEXT_H_

#include <string>
#include <string_view>

#include "base/error.h"

namespace customsconv {

// UTF-8 of a test source as code page 1251 bytes. Throws std::invalid_argument
// for a character that the code page lacks.
[[nodiscard]] std::string Win(std::string_view utf8);

// Code page 1251 bytes as UTF-8, so that a failed expectation can be read.
[[nodiscard]] std::string Utf8(std::string_view win);

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

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_TEXT_H_
