#include "base/letter_case.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace customsconv {
namespace {

constexpr std::array<char, 256> kUpper = [] {
  std::array<char, 256> table{};
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = UpperCaseChar(static_cast<char>(i));
  return table;
}();

char Upper(char c) { return kUpper[static_cast<unsigned char>(c)]; }

template <class Number>
std::uint64_t NumberAt(const char* bytes) {
  Number number;
  std::memcpy(&number, bytes, sizeof number);
  return number;
}

// A number of all the bytes of a text of one to eight bytes.
std::uint64_t NumberOf(std::string_view text) {
  const std::size_t size = text.size();
  if (size >= 4) {
    return NumberAt<std::uint32_t>(text.data()) | NumberAt<std::uint32_t>(text.data() + size - 4)
                                                      << 32;
  }
  const auto byte = [&text](std::size_t i) { return NumberAt<unsigned char>(&text[i]); };
  return byte(0) | byte(size / 2) << 8 | byte(size - 1) << 16;
}

// The two cases of a letter differ in one bit: 0x20, or 0x10 for "ё". Without these bits they
// are alike, as are some other bytes, which costs a hash little. Latin letters keep 0x10.
std::uint64_t WithoutCase(std::uint64_t bytes) {
  constexpr std::uint64_t kEveryByte = 0x0101010101010101ULL;
  const std::uint64_t high_bits = bytes & (kEveryByte * 0x80);
  return bytes & ~(kEveryByte * 0x20) & ~(high_bits >> 3);
}

}  // namespace

std::string UpperCaseRu(std::string_view text) {
  std::string result(text.size(), '\0');
  std::transform(text.begin(), text.end(), result.begin(), Upper);
  return result;
}

std::string UpperCaseLatin(std::string_view text) {
  std::string result(text.size(), '\0');
  std::transform(text.begin(), text.end(), result.begin(), UpperCaseLatinChar);
  return result;
}

bool SameTextRu(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  return a == b || std::equal(a.begin(), a.end(), b.begin(),
                              [](char x, char y) { return Upper(x) == Upper(y); });
}

int CompareTextRu(std::string_view a, std::string_view b) {
  const std::size_t shared = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < shared; ++i) {
    const auto x = static_cast<unsigned char>(Upper(a[i]));
    const auto y = static_cast<unsigned char>(Upper(b[i]));
    if (x != y) return x < y ? -1 : 1;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

bool StartsWithRu(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && SameTextRu(text.substr(0, prefix.size()), prefix);
}

std::size_t NoCaseHash::operator()(std::string_view text) const {
  std::uint64_t hash = text.size();
  const auto mix_in = [&hash](std::uint64_t bytes) {
    hash = (hash ^ WithoutCase(bytes)) * 0x9E3779B97F4A7C15ULL;
    hash ^= hash >> 32;
  };
  for (; text.size() > sizeof hash; text.remove_prefix(sizeof hash)) {
    mix_in(NumberAt<std::uint64_t>(text.data()));
  }
  if (!text.empty()) mix_in(NumberOf(text));
  return static_cast<std::size_t>(hash);
}

}  // namespace customsconv
