#ifndef CUSTOMSCONV_TEXT_CHAR_SET_H_
#define CUSTOMSCONV_TEXT_CHAR_SET_H_

#include <array>
#include <cstdint>
#include <string_view>

namespace customsconv {

// A set of byte values: the delimiter argument of the word and split functions.
//
//   constexpr CharSet kSeparators{" ,;"};
//   if (kSeparators.Has(c)) …
//
// Made while compiling, asked in a few instructions.
class CharSet {
 public:
  constexpr CharSet() = default;
  constexpr CharSet(std::string_view members) {  // implicit on purpose: " ,;"
    for (const char c : members) Add(c);
  }
  constexpr CharSet(const char* members) : CharSet(std::string_view(members)) {}

  constexpr void Add(char c) { Word(c) |= Bit(c); }
  constexpr void AddRange(unsigned char first, unsigned char last) {
    for (int byte = first; byte <= last; ++byte) Add(static_cast<char>(byte));
  }
  constexpr void Remove(char c) { Word(c) &= ~Bit(c); }
  [[nodiscard]] constexpr bool Has(char c) const {
    return (words_[static_cast<unsigned char>(c) >> 6] & Bit(c)) != 0;
  }
  [[nodiscard]] constexpr bool empty() const {
    return (words_[0] | words_[1] | words_[2] | words_[3]) == 0;
  }

 private:
  constexpr std::uint64_t& Word(char c) { return words_[static_cast<unsigned char>(c) >> 6]; }
  static constexpr std::uint64_t Bit(char c) {
    return std::uint64_t{1} << (static_cast<unsigned char>(c) & 63);
  }
  std::array<std::uint64_t, 4> words_{};
};

// Digits, Latin letters and the Cyrillic letters of code page 1251, Ё and ё included.
inline constexpr CharSet kLettersAndDigits = [] {
  CharSet set;
  set.AddRange('0', '9');
  set.AddRange('A', 'Z');
  set.AddRange('a', 'z');
  set.AddRange(0xC0, 0xFF);
  set.Add('\xA8');
  set.Add('\xB8');
  return set;
}();
[[nodiscard]] constexpr bool IsLetterOrDigit(char c) { return kLettersAndDigits.Has(c); }

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_CHAR_SET_H_
