#include "xml/read/base64.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace customsconv {
namespace {

constexpr std::uint8_t kPadding = 0xFE;
constexpr std::uint8_t kSkipped = 0xFF;

constexpr std::array<std::uint8_t, 256> kValues = [] {
  std::array<std::uint8_t, 256> values{};
  for (auto& value : values) value = kSkipped;
  constexpr std::string_view kAlphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
    values[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::uint8_t>(i);
  }
  values['='] = kPadding;
  return values;
}();

// Four characters of six bits become three bytes; `add` takes one character,
// `finish` ends a group of two or three characters early. Output never overtakes
// the input, so both share one buffer.
class Group {
 public:
  explicit Group(char* out) : out_(out) {}
  void Add(std::uint8_t value) {
    bits_ = bits_ << 6 | value;
    if (++count_ == 4) Finish(3);
  }
  void Finish(int bytes) {
    for (int shift = 16 - 6 * (4 - count_); bytes > 0; --bytes, shift -= 8) {
      *out_++ = static_cast<char>(shift >= 0 ? bits_ >> shift : bits_ << -shift);
    }
    bits_ = 0;
    count_ = 0;
  }
  [[nodiscard]] int count() const { return count_; }
  [[nodiscard]] const char* out() const { return out_; }

 private:
  char* out_;
  std::uint32_t bits_ = 0;
  int count_ = 0;
};

}  // namespace

bool Base64DecodeInPlace(std::string& text, std::size_t* decoded_size) {
  Group group(text.data());
  bool second_padding_due = false;
  std::size_t read = 0;
  for (; read < text.size(); ++read) {
    const std::uint8_t value = kValues[static_cast<unsigned char>(text[read])];
    if (value == kSkipped) continue;
    if (second_padding_due ? value != kPadding : value == kPadding && group.count() < 2) break;
    if (value != kPadding) {
      group.Add(value);
    } else if (group.count() == 3) {
      group.Finish(2);
    } else {
      if (second_padding_due) group.Finish(1);
      second_padding_due = !second_padding_due;
    }
  }
  const bool well_formed = read == text.size() && !second_padding_due;
  const auto decoded = static_cast<std::size_t>(group.out() - text.data());
  text.erase(decoded, read - decoded);
  if (decoded_size != nullptr) *decoded_size = decoded;
  return well_formed;
}

}  // namespace customsconv
