#include "base/letter_case.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace customsconv {
namespace {

constexpr std::array<char, 256> kUpper = [] {
  std::array<char, 256> table{};
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = UpperCaseChar(static_cast<char>(i));
  return table;
}();

char Upper(char c) { return kUpper[static_cast<unsigned char>(c)]; }

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
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
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
  std::uint64_t hash = 0xCBF29CE484222325ULL;
  for (const char c : text) {
    hash = (hash ^ static_cast<unsigned char>(Upper(c))) * 0x100000001B3ULL;
  }
  return static_cast<std::size_t>(hash ^ (hash >> 29));
}

}  // namespace customsconv
