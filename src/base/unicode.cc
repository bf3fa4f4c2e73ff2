// A declaration file is markup in ASCII with Russian words between, so blocks that hold
// nothing else take a quick way; the rest goes character by character.

#include "base/unicode.h"

#include <algorithm>
#include <array>

#include "base/internal/cp1251_table.h"
#include "base/internal/utf8_blocks.h"
#include "base/internal/utf8_form.h"

namespace customsconv {
namespace {

constexpr char kReplacement = '?';
constexpr std::ptrdiff_t kBlock = 16;      // bytes between two tries of the quick way
constexpr std::size_t kPiece = 32 * 1024;  // bytes converted before they are handed on
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

char WinCharOf(char32_t c) {
  if (c == 0) return '\0';
  const unsigned char byte = internal::ByteOf1251(c);
  return byte == 0 ? kReplacement : static_cast<char>(byte);
}

// Decodes the multi-byte character at `from`, of which `left` bytes are there,
// into `code`. Its length, or 0 when it is malformed.
std::size_t DecodeLongChar(const unsigned char* from, std::size_t left, char32_t& code) {
  const unsigned lead = from[0];
  std::size_t length = 0;
  char32_t smallest = 0;
  if (lead >= 0xC2 && lead < 0xE0) {
    length = 2, smallest = 0x80, code = lead & 0x1F;
  } else if (lead >= 0xE0 && lead < 0xF0) {
    length = 3, smallest = 0x800, code = lead & 0x0F;
  } else if (lead >= 0xF0 && lead < 0xF5) {
    length = 4, smallest = 0x10000, code = lead & 0x07;
  } else {
    return 0;
  }
  if (left < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((from[i] & 0xC0) != 0x80) return 0;
    code = code << 6 | (from[i] & 0x3Fu);
  }
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  return code < smallest || surrogate || code > 0x10FFFF ? 0 : length;
}

// Converts whole characters from `from` to `to`, which has room for as many
// bytes. The end of what was written, or null when the text is malformed.
char* ConvertUtf8(const char* from, const char* end, char* to) {
  while (from != end) {
    const internal::Utf8Progress plain = internal::ConvertPlainBlocks({from, to}, end);
    from = plain.from;
    to = plain.to;
    // The block that stopped it, or the rest.
    const char* const stop = end - from > kBlock ? from + kBlock : end;
    while (from < stop) {
      if (IsAscii(*from)) {
        *to++ = *from++;
        continue;
      }
      char32_t code = 0;
      const std::size_t length = DecodeLongChar(reinterpret_cast<const unsigned char*>(from),
                                                static_cast<std::size_t>(end - from), code);
      if (length == 0) return nullptr;
      *to++ = WinCharOf(code);
      from += length;
    }
  }
  return to;
}

// The size of the next piece of `text`, at most `limit`: where it is well-formed,
// the piece ends with a whole character.
std::size_t PieceSize(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text.size();
  std::size_t size = limit;
  for (int back = 0; back < 3 && (text[size] & 0xC0) == 0x80; ++back) --size;
  return size;
}

// Converts the text, a byte order mark apart, and hands it on by pieces that stay in the
// processor's cache, so that the memory of a large result is touched once and only as far as
// it is used. False when the text is malformed.
template <class Take>
bool ConvertByPieces(std::string_view utf8, Take take) {
  if (utf8.starts_with(kByteOrderMark)) utf8.remove_prefix(kByteOrderMark.size());
  std::array<char, kPiece> piece;
  while (!utf8.empty()) {
    const std::size_t size = PieceSize(utf8, kPiece);
    const char* const end = ConvertUtf8(utf8.data(), utf8.data() + size, piece.data());
    if (end == nullptr) return false;
    take(std::string_view(piece.data(), static_cast<std::size_t>(end - piece.data())));
    utf8.remove_prefix(size);
  }
  return true;
}

constexpr internal::Utf8Forms kUtf8Forms = internal::MakeUtf8Forms(internal::UnicodeOf1251);

}  // namespace

std::optional<std::string> WinFromUtf8(std::string_view utf8) {
  std::string win;
  win.reserve(utf8.size());
  if (!ConvertByPieces(utf8, [&win](std::string_view piece) { win += piece; })) return std::nullopt;
  return win;
}

// A text is never longer in code page 1251, so what is written stays behind what is read.
bool WinFromUtf8InPlace(std::string& text, std::size_t start) {
  char* to = text.data();
  const bool well_formed = ConvertByPieces(
      std::string_view(text).substr(start),
      [&to](std::string_view piece) { to = std::copy(piece.begin(), piece.end(), to); });
  text.resize(static_cast<std::size_t>(to - text.data()));
  return well_formed;
}

std::string Utf8FromWin(std::string_view win) {
  std::size_t size = 0;
  for (const char c : win) size += kUtf8Forms[static_cast<unsigned char>(c)].length;
  std::string utf8;
  utf8.reserve(size);
  AppendUtf8FromWin(utf8, win);
  return utf8;
}

void AppendUtf8FromWin(std::string& utf8, std::string_view win) {
  internal::AppendForms(utf8, win, kUtf8Forms);
}

std::string WinFromUtf16(std::string_view utf16) {
  const std::size_t count = utf16.size() / 2;
  const auto unit = [utf16](std::size_t i) {
    return static_cast<char16_t>(static_cast<unsigned char>(utf16[2 * i]) |
                                 static_cast<unsigned char>(utf16[2 * i + 1]) << 8);
  };
  std::string win;
  win.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const char16_t c = unit(i);
    const bool pair = (c & 0xFC00) == 0xD800 && i + 1 < count && (unit(i + 1) & 0xFC00) == 0xDC00;
    win += WinCharOf(c);  // no surrogate has a byte: one "?"
    if (pair) ++i;
  }
  return win;
}

}  // namespace customsconv
