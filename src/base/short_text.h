#ifndef CUSTOMSCONV_BASE_SHORT_TEXT_H_
#define CUSTOMSCONV_BASE_SHORT_TEXT_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

#include "base/lifetime.h"

namespace customsconv {

// At most 255 bytes of code page 1251 text, stored in place: no allocation, cheap to copy.
//
//   ShortText path = ShortText::Cut(folder);  // what goes beyond 255 bytes is cut, …
//   path += "DBRHEAD.DBF";                    // … here, too
//   const std::string_view view = path;
//
// A text becomes short by Cut, JoinShort or +=, never by itself; only a literal, whose size the
// compiler checks, may stand where a short text is wanted.
//
// The type of the exports' arguments, of file and folder names, of field keys and of most texts
// that the mapping works on. Where no text may be lost, use std::string. Comparison is by bytes.
class ShortText {
 public:
  static constexpr std::size_t kMaxSize = 255;

  ShortText() = default;
  template <std::size_t N>
  requires(N <= kMaxSize + 1) ShortText(const char (&literal)[N]) {  // implicit on purpose
    *this += std::string_view(literal, N - 1);
  }
  ShortText(const ShortText& other) : size_(other.size_) {
    std::memcpy(bytes_, other.bytes_, other.size_);
  }
  ShortText& operator=(const ShortText& other) {
    size_ = other.size_;
    std::memmove(bytes_, other.bytes_, other.size_);
    return *this;
  }

  // The first 255 bytes of `text`.
  [[nodiscard]] static ShortText Cut(std::string_view text) {
    ShortText result;
    result += text;
    return result;
  }
  // The first 255 bytes of `source`, each through `convert`.
  template <typename Convert>
  [[nodiscard]] static ShortText Mapped(std::string_view source, Convert convert) {
    ShortText result;
    result.size_ = static_cast<std::uint8_t>(std::min(source.size(), kMaxSize));
    for (std::size_t i = 0; i < result.size_; ++i) result.bytes_[i] = convert(source[i]);
    return result;
  }

  // `tail` may be our own text.
  ShortText& operator+=(std::string_view tail) {
    const std::size_t added = std::min(tail.size(), kMaxSize - size_);
    if (added > 0) std::memmove(bytes_ + size_, tail.data(), added);
    size_ = static_cast<std::uint8_t>(size_ + added);
    return *this;
  }
  ShortText& operator+=(char c) { return *this += std::string_view(&c, 1); }

  operator std::string_view() const CUSTOMSCONV_LIFETIME_BOUND { return {bytes_, size_}; }
  [[nodiscard]] std::string_view view() const CUSTOMSCONV_LIFETIME_BOUND { return {bytes_, size_}; }
  [[nodiscard]] std::string str() const { return {bytes_, size_}; }

  [[nodiscard]] std::size_t size() const { return size_; }
  [[nodiscard]] bool empty() const { return size_ == 0; }
  [[nodiscard]] const char* data() const CUSTOMSCONV_LIFETIME_BOUND { return bytes_; }
  char operator[](std::size_t position) const { return bytes_[position]; }
  void clear() { size_ = 0; }

  friend bool operator==(const ShortText& a, const ShortText& b) { return a.view() == b.view(); }
  // A template, so that a literal is not compared as one type or the other.
  template <typename Text>
  requires std::is_convertible_v<const Text&, std::string_view>
  friend bool operator==(const ShortText& a, const Text& b) {
    return a.view() == std::string_view(b);
  }
  friend auto operator<=>(const ShortText& a, const ShortText& b) { return a.view() <=> b.view(); }

 private:
  std::uint8_t size_ = 0;
  char bytes_[kMaxSize];  // past size_: never read
};

// The parts one behind the other, cut at 255 bytes.
[[nodiscard]] inline ShortText JoinShort(std::initializer_list<std::string_view> parts) {
  ShortText joined;
  for (const std::string_view part : parts) joined += part;
  return joined;
}

// The first 255 bytes of `text`, without a copy: for functions that are defined
// on short text and only look at it.
[[nodiscard]] constexpr std::string_view CutToShort(
    std::string_view text CUSTOMSCONV_LIFETIME_BOUND) {
  return text.substr(0, ShortText::kMaxSize);
}

}  // namespace customsconv

#endif  // CUSTOMSCONV_BASE_SHORT_TEXT_H_
