// UTF-8 and UTF-16 to code page 1251 and back.
//
// A declaration file is markup in ASCII with Russian words between, so the
// UTF-8 decoder takes steps of up to 16 ASCII bytes and of up to 8 Russian
// letters; everything else goes character by character.

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "base/code_pages.h"
#include "base/internal/cp1251_table.h"

namespace customsconv {
namespace {

constexpr char kReplacement = '?';
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

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

#if defined(__SSE2__)

constexpr std::size_t kStep = 16;  // input bytes that a step looks at

// Copies the ASCII bytes that the next kStep bytes begin with; their number.
// Writes up to kStep bytes.
std::size_t CopyAscii(const char* from, char* to) {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes);
  const auto high_bits = static_cast<unsigned>(_mm_movemask_epi8(bytes));
  return static_cast<std::size_t>(std::countr_zero(high_bits | 0x10000u));
}

// Converts the letters А to я that the next kStep bytes begin with; their
// number. Writes up to 8 bytes.
//
// A 16-bit lane holds one letter, lead byte (0xD0 or 0xD1) low. Its number from
// U+0400 is the lead's last bit and the six bits of the second byte, and the
// letters in question are 0x10 to 0x4F there and 0xC0 to 0xFF in the code page.
std::size_t CopyLetters(const char* from, char* to) {
  const __m128i pairs = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
  const __m128i is_pair =
      _mm_cmpeq_epi16(_mm_and_si128(pairs, _mm_set1_epi16(static_cast<short>(0xC0FE))),
                      _mm_set1_epi16(static_cast<short>(0x80D0)));
  const __m128i row =
      _mm_slli_epi16(_mm_and_si128(pairs, _mm_set1_epi16(static_cast<short>(0x0001))), 6);
  const __m128i column = _mm_and_si128(_mm_srli_epi16(pairs, 8), _mm_set1_epi16(0x3F));
  const __m128i number = _mm_or_si128(row, column);
  const __m128i is_letter = _mm_and_si128(_mm_cmpgt_epi16(number, _mm_set1_epi16(0x0F)),
                                          _mm_cmplt_epi16(number, _mm_set1_epi16(0x50)));
  const __m128i letters = _mm_add_epi16(number, _mm_set1_epi16(0xB0));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(letters, letters));
  const auto good = static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(is_pair, is_letter)));
  return static_cast<std::size_t>(std::countr_one(good)) / 2;
}

#else

constexpr std::size_t kStep = 8;

std::size_t CopyAscii(const char* from, char* to) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, from, sizeof bytes);
  if ((bytes & 0x8080808080808080ULL) == 0) {
    std::memcpy(to, &bytes, sizeof bytes);
    return kStep;
  }
  std::size_t count = 0;
  for (; static_cast<unsigned char>(from[count]) < 0x80; ++count) to[count] = from[count];
  return count;
}

std::size_t CopyLetters(const char* from, char* to) {
  std::size_t count = 0;
  for (; count < kStep / 2; ++count) {
    const unsigned lead = static_cast<unsigned char>(from[2 * count]);
    const unsigned second = static_cast<unsigned char>(from[2 * count + 1]);
    const unsigned number = (lead & 1) << 6 | (second & 0x3F);
    if ((lead & 0xFE) != 0xD0 || (second & 0xC0) != 0x80) break;
    if (number < 0x10 || number >= 0x50) break;
    to[count] = static_cast<char>(number + 0xB0);
  }
  return count;
}

#endif

// Converts from `from` to `to`, which has room for as many bytes. The end of
// what was written, or null when the text is malformed.
char* ConvertUtf8(const char* from, const char* end, char* to) {
  while (from != end) {
    // What a step writes never reaches past the room: no character of the code
    // page is longer than its UTF-8 form.
    if (static_cast<std::size_t>(end - from) >= kStep) {
      const std::size_t ascii = CopyAscii(from, to);
      from += ascii, to += ascii;
      if (ascii == kStep) continue;
      if (static_cast<std::size_t>(end - from) >= kStep) {
        const std::size_t letters = CopyLetters(from, to);
        from += 2 * letters, to += letters;
        if (letters > 0) continue;
      }
    }
    if (static_cast<unsigned char>(*from) < 0x80) {
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
  return to;
}

// UTF-8 form of a byte of the upper half of code page 1251.
struct Utf8Form {
  std::array<char, 3> bytes;
  unsigned char length;
};

constexpr std::array<Utf8Form, 128> kUtf8Forms = [] {
  std::array<Utf8Form, 128> forms{};
  for (unsigned i = 0; i < forms.size(); ++i) {
    const unsigned c = internal::UnicodeOf1251(static_cast<unsigned char>(i + 0x80));
    if (c < 0x800) {
      forms[i] = {{static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F)), 0}, 2};
    } else {
      forms[i] = {{static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)),
                   static_cast<char>(0x80 | (c & 0x3F))},
                  3};
    }
  }
  return forms;
}();

const Utf8Form& Utf8FormOf(char c) { return kUtf8Forms[static_cast<unsigned char>(c) & 0x7Fu]; }

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

}  // namespace

std::optional<std::string> WinFromUtf8(std::string_view utf8) {
  if (utf8.starts_with(kByteOrderMark)) utf8.remove_prefix(kByteOrderMark.size());
  std::string win(utf8.size(), '\0');
  const char* end = ConvertUtf8(utf8.data(), utf8.data() + utf8.size(), win.data());
  if (end == nullptr) return std::nullopt;
  win.resize(static_cast<std::size_t>(end - win.data()));
  return win;
}

std::string Utf8FromWin(std::string_view win) {
  std::size_t size = 0;
  for (const char c : win) size += IsAscii(c) ? 1u : Utf8FormOf(c).length;
  std::string utf8(size, '\0');
  char* to = utf8.data();
  for (const char c : win) {
    if (IsAscii(c)) {
      *to++ = c;
    } else {
      const Utf8Form& form = Utf8FormOf(c);
      to = std::copy_n(form.bytes.begin(), form.length, to);
    }
  }
  return utf8;
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
