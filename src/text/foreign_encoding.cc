#include "text/foreign_encoding.h"

#include <algorithm>

#include "base/unicode.h"

namespace customsconv {

namespace {

// Number, from 1, of the line at a place of a text.
std::size_t LineAt(std::string_view text, std::size_t place) {
  return 1 + static_cast<std::size_t>(
                 std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(place), '\n'));
}

}  // namespace

std::optional<ForeignEncoding> ForeignEncodingOf(std::string_view bytes) {
  const bool has_mark = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
  if (has_mark || (bytes.size() > 1 && (bytes[0] == '\0' || bytes[1] == '\0'))) {
    return ForeignEncoding{"UTF-16", 1};
  }
  const auto is_ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  const auto first = std::find_if_not(bytes.begin(), bytes.end(), is_ascii);
  if (first == bytes.end() || !WinFromUtf8({first, bytes.end()})) return std::nullopt;
  return ForeignEncoding{"UTF-8", LineAt(bytes, static_cast<std::size_t>(first - bytes.begin()))};
}

std::optional<ForeignEncoding> LoneLineFeedIn(std::string_view bytes) {
  for (std::size_t lf = bytes.find('\n'); lf != std::string_view::npos;
       lf = bytes.find('\n', lf + 1)) {
    if (lf == 0 || bytes[lf - 1] != '\r') return ForeignEncoding{"LF", LineAt(bytes, lf)};
  }
  return std::nullopt;
}

}  // namespace customsconv
