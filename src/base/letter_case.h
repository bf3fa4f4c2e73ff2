#ifndef CUSTOMSCONV_BASE_LETTER_CASE_H_
#define CUSTOMSCONV_BASE_LETTER_CASE_H_

#include <string>
#include <string_view>

namespace customsconv {

// Letter case in code page 1251:
//
//   UpperCaseRu("ёлка"_cp1251)   "ЁЛКА"
//   if (SameTextRu(code, "esadout")) …
//   std::unordered_map<std::string, int, NoCaseHash, NoCaseEqual> types;
//
// All but UpperCaseLatin know the Russian letters. Comparing is by the upper-cased bytes.

// Letter case in code page 1251: a-z, the 32 letters 0xE0-0xFF and "ё" have an
// upper-case form; every other byte is its own.
[[nodiscard]] constexpr char UpperCaseChar(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if ((byte >= 'a' && byte <= 'z') || byte >= 0xE0) return static_cast<char>(byte - 0x20);
  return byte == 0xB8 ? static_cast<char>(0xA8) : c;
}

// Latin letters only: what the catalogue upper-cases field names with.
[[nodiscard]] constexpr char UpperCaseLatinChar(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c;
}

[[nodiscard]] std::string UpperCaseRu(std::string_view text);
[[nodiscard]] std::string UpperCaseLatin(std::string_view text);

// Equal without regard to letter case.
[[nodiscard]] bool SameTextRu(std::string_view a, std::string_view b);

// Below zero, zero or above zero as the upper-cased bytes compare.
[[nodiscard]] int CompareTextRu(std::string_view a, std::string_view b);

// `text` begins with `prefix`, without regard to letter case.
[[nodiscard]] bool StartsWithRu(std::string_view text, std::string_view prefix);

// Hash and equality for unordered containers keyed without regard to letter
// case; both take views, so that a lookup allocates nothing.
struct NoCaseHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const;
};
struct NoCaseEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const { return SameTextRu(a, b); }
};
// Ordering for sorted containers, by upper-cased bytes.
struct NoCaseLess {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const { return CompareTextRu(a, b) < 0; }
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_BASE_LETTER_CASE_H_
