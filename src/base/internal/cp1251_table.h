#ifndef CUSTOMSCONV_BASE_INTERNAL_CP1251_TABLE_H_
#define CUSTOMSCONV_BASE_INTERNAL_CP1251_TABLE_H_

#include <array>
#include <cstddef>
#include <cstdint>

namespace customsconv::internal {

// Characters of the bytes 0x80 to 0xBF; 0xC0 to 0xFF are U+0410 to U+044F. The
// one unassigned byte, 0x98, stands for the control character of that number,
// so that every text survives the way to Unicode and back.
inline constexpr std::array<char16_t, 64> kCp1251Signs = {
    0x0402, 0x0403, 0x201A, 0x0453, 0x201E, 0x2026, 0x2020, 0x2021,  //
    0x20AC, 0x2030, 0x0409, 0x2039, 0x040A, 0x040C, 0x040B, 0x040F,  //
    0x0452, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  //
    0x0098, 0x2122, 0x0459, 0x203A, 0x045A, 0x045C, 0x045B, 0x045F,  //
    0x00A0, 0x040E, 0x045E, 0x0408, 0x00A4, 0x0490, 0x00A6, 0x00A7,  //
    0x0401, 0x00A9, 0x0404, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x0407,  //
    0x00B0, 0x00B1, 0x0406, 0x0456, 0x0491, 0x00B5, 0x00B6, 0x00B7,  //
    0x0451, 0x2116, 0x0454, 0x00BB, 0x0458, 0x0405, 0x0455, 0x0457,
};

// The character of a byte of code page 1251.
[[nodiscard]] constexpr char16_t UnicodeOf1251(unsigned char byte) {
  if (byte < 0x80) return byte;
  if (byte < 0xC0) return kCp1251Signs[byte - 0x80u];
  return static_cast<char16_t>(0x410 + byte - 0xC0);
}

// Bytes of the characters of one 256-character page of Unicode; 0 where code
// page 1251 lacks the character.
using UnicodePage = std::array<unsigned char, 256>;

consteval UnicodePage MakeUnicodePage(unsigned high_byte) {
  UnicodePage page{};
  for (unsigned byte = 1; byte < 256; ++byte) {
    const char16_t c = UnicodeOf1251(static_cast<unsigned char>(byte));
    if (c >> 8 == static_cast<int>(high_byte)) {
      page[c & 0xFFu] = static_cast<unsigned char>(byte);
    }
  }
  return page;
}

inline constexpr UnicodePage kLatinPage = MakeUnicodePage(0x00);
inline constexpr UnicodePage kCyrillicPage = MakeUnicodePage(0x04);
inline constexpr UnicodePage kPunctuationPage = MakeUnicodePage(0x20);
inline constexpr UnicodePage kLetterlikePage = MakeUnicodePage(0x21);

// The byte of a character, or 0 when code page 1251 lacks it (and for U+0000).
[[nodiscard]] constexpr unsigned char ByteOf1251(char32_t c) {
  switch (c >> 8) {
    case 0x00:
      return kLatinPage[c];
    case 0x04:
      return kCyrillicPage[c & 0xFF];
    case 0x20:
      return kPunctuationPage[c & 0xFF];
    case 0x21:
      return kLetterlikePage[c & 0xFF];
    default:
      return 0;
  }
}

}  // namespace customsconv::internal

#endif  // CUSTOMSCONV_BASE_INTERNAL_CP1251_TABLE_H_
