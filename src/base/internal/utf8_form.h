#ifndef CUSTOMSCONV_BASE_INTERNAL_UTF8_FORM_H_
#define CUSTOMSCONV_BASE_INTERNAL_UTF8_FORM_H_

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace customsconv::internal {

// The UTF-8 form of a character below U+10000.
struct Utf8Form {
  std::array<char, 3> bytes;
  unsigned char length;
};

[[nodiscard]] constexpr Utf8Form Utf8FormOf(char16_t character) {
  const unsigned c = character;
  if (c < 0x80) return {{static_cast<char>(c), 0, 0}, 1};
  const char last = static_cast<char>(0x80 | (c & 0x3F));
  if (c < 0x800) return {{static_cast<char>(0xC0 | c >> 6), last, 0}, 2};
  return {{static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)), last}, 3};
}

// The forms of the 256 bytes of a code page.
using Utf8Forms = std::array<Utf8Form, 256>;

template <typename UnicodeOf>
[[nodiscard]] constexpr Utf8Forms MakeUtf8Forms(UnicodeOf unicode_of) {
  Utf8Forms forms{};
  for (unsigned byte = 0; byte < forms.size(); ++byte) {
    forms[byte] = Utf8FormOf(unicode_of(static_cast<unsigned char>(byte)));
  }
  return forms;
}

// Appends `text`, each byte in its form.
inline void AppendForms(std::string& utf8, std::string_view text, const Utf8Forms& forms) {
  constexpr std::size_t kChars = 256;
  // One place more than needed: every form is copied as three bytes.
  std::array<char, 3 * (kChars + 1)> piece;
  while (!text.empty()) {
    char* to = piece.data();
    for (const char c : text.substr(0, kChars)) {
      const Utf8Form& form = forms[static_cast<unsigned char>(c)];
      std::copy_n(form.bytes.begin(), form.bytes.size(), to);
      to += form.length;
    }
    utf8.append(piece.data(), static_cast<std::size_t>(to - piece.data()));
    text.remove_prefix(std::min(text.size(), kChars));
  }
}

}  // namespace customsconv::internal

#endif  // CUSTOMSCONV_BASE_INTERNAL_UTF8_FORM_H_
