#ifndef CUSTOMSCONV_BASE_CP1251_LITERAL_H_
#define CUSTOMSCONV_BASE_CP1251_LITERAL_H_

#include <cstddef>
#include <string_view>

#include "base/internal/cp1251_table.h"

namespace customsconv {

namespace internal {

struct Utf8Char {
  char32_t code;
  std::size_t length;
};

// Decodes one well-formed character of a source file.
constexpr Utf8Char DecodeUtf8Literal(const char* text) {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byte(0) < 0x80) return {byte(0), 1};
  if (byte(0) < 0xE0) {
    return {static_cast<char32_t>((byte(0) & 0x1F) << 6 | (byte(1) & 0x3F)), 2};
  }
  if (byte(0) < 0xF0) {
    return {
        static_cast<char32_t>((byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F)),
        3};
  }
  throw "code page 1251 holds no character beyond the basic plane";
}

consteval char Cp1251OfLiteral(char32_t code) {
  const unsigned char byte = ByteOf1251(code);
  if (byte == 0) throw "code page 1251 lacks this character";
  return static_cast<char>(byte);
}

}  // namespace internal

// Russian texts of the sources, which are UTF-8, as code page 1251 bytes:
//
//   throw Error(std::string("Не найден файл "_cp1251).append(name));
//   if (SameTextRu(answer, "да"_cp1251)) …
//
// The conversion happens while compiling: a letter that the code page lacks does not compile.
template <std::size_t N>
struct Cp1251Literal {
  char bytes[N] = {};
  std::size_t size = 0;

  consteval Cp1251Literal(const char (&utf8)[N]) {  // implicit: "..."_cp1251
    for (std::size_t i = 0; i + 1 < N;) {
      const internal::Utf8Char c = internal::DecodeUtf8Literal(utf8 + i);
      bytes[size++] = internal::Cp1251OfLiteral(c.code);
      i += c.length;
    }
  }
};

namespace internal {

template <Cp1251Literal Text>
inline constexpr std::string_view kLiteralView{Text.bytes, Text.size};

}  // namespace internal

// The view points into static storage and never dangles. (A class as template
// argument rather than a plain consteval function: gcc 12 and clang 14 agree. The
// result is a reference because clang 14 crashes where it wants to name a view
// made here, as in `std::string text("..."_cp1251);`.)
template <Cp1251Literal Text>
constexpr const std::string_view& operator""_cp1251() {
  return internal::kLiteralView<Text>;
}

}  // namespace customsconv

#endif  // CUSTOMSCONV_BASE_CP1251_LITERAL_H_
