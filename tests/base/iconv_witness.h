#ifndef CUSTOMSCONV_TESTS_BASE_ICONV_WITNESS_H_
#define CUSTOMSCONV_TESTS_BASE_ICONV_WITNESS_H_

#include <iconv.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace customsconv {

// The C library's conversion, as a second way to the answer. Empty when it
// refuses the text. For results of up to four times the input's bytes.
inline std::optional<std::string> Iconv(const char* from, const char* to, std::string_view text) {
  const iconv_t converter = iconv_open(to, from);
  std::string source(text);
  std::string result(4 * text.size() + 16, '\0');
  char* in = source.data();
  char* out = result.data();
  std::size_t in_left = source.size();
  std::size_t out_left = result.size();
  const std::size_t outcome = iconv(converter, &in, &in_left, &out, &out_left);
  iconv_close(converter);
  if (outcome == static_cast<std::size_t>(-1) || in_left > 0) return std::nullopt;
  result.resize(result.size() - out_left);
  return result;
}

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_BASE_ICONV_WITNESS_H_
