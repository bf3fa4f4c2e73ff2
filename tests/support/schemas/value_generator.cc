#include "support/schemas/value_generator.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "base/unicode.h"
#include "text/char_set.h"
#include "validation/schema/facets.h"
#include "validation/schema/value_pattern.h"

namespace customsconv {
namespace {

using schema::SimpleType;
using schema::ValuePattern;

std::string Padded(int number, std::size_t width) {
  std::string text = std::to_string(number);
  return text.size() < width ? std::string(width - text.size(), '0') + text : text;
}

// The digits of a growing number chosen for the places of a pattern, one after the other.
class PatternValue {
 public:
  PatternValue(const ValuePattern& pattern, int number, bool longest)
      : pattern_(pattern), number_(number), longest_(longest) {}

  std::string Text() {
    Append(pattern_.root());
    return text_;
  }

 private:
  void Append(std::size_t index) {
    const ValuePattern::Node& node = pattern_.At(index);
    const int most = std::min(node.occurs.max, node.occurs.min + 3);
    for (int i = 0; i < (longest_ ? most : node.occurs.min); ++i) AppendOnce(node);
  }

  void AppendOnce(const ValuePattern::Node& node) {
    if (node.kind == ValuePattern::Kind::kCharacter) {
      text_ += Character(node);
    } else if (node.kind == ValuePattern::Kind::kBranches) {
      Append(node.parts[static_cast<std::size_t>(Next()) % node.parts.size()]);
    } else {
      for (const std::size_t part : node.parts) Append(part);
    }
  }

  char Character(const ValuePattern::Node& node) {
    std::string choice;
    for (std::size_t byte = 0; byte < node.characters.size(); ++byte) {
      const char c = static_cast<char>(byte);
      if (node.characters[byte] && IsLetterOrDigit(c)) choice += c;
    }
    for (std::size_t byte = '!'; choice.empty() && byte <= '~'; ++byte) {
      if (node.characters[byte]) choice += static_cast<char>(byte);
    }
    return choice.empty() ? ' ' : choice[static_cast<std::size_t>(Next()) % choice.size()];
  }

  int Next() { return number_ + (number_ / 7) * places_++; }

  const ValuePattern& pattern_;
  int number_;
  bool longest_;
  int places_ = 1;
  std::string text_;  // code page 1251
};

std::string Text(const SimpleType& type, int number, bool longest) {
  constexpr int kEnough = 400;
  constexpr std::string_view kLetters = "абвгдежзиклмнопрстуфхцчшщэюя";
  const int least = type.min_length.value_or(1);
  const int most = std::min(type.max_length.value_or(kEnough), kEnough);
  std::string digits = std::to_string(number);
  if (digits.size() > static_cast<std::size_t>(most)) {
    digits.erase(0, digits.size() - static_cast<std::size_t>(most));
  }
  const int letters = (longest ? most : std::max(least, 1)) - static_cast<int>(digits.size());
  std::string text;
  for (int i = 0; i < letters; ++i)
    text += kLetters.substr(static_cast<std::size_t>(i) % 28 * 2, 2);
  return text + digits;
}

std::string Number(const SimpleType& type, int number, bool longest) {
  if (type.max_inclusive && longest) return *type.max_inclusive;
  if (type.min_inclusive && *type.min_inclusive != "0" && !longest) return *type.min_inclusive;
  const int decimals = IsInteger(type) ? 0 : std::min(type.fraction_digits.value_or(2), 6);
  const int digits = std::min(type.total_digits.value_or(6), 15);
  const int whole = std::max(digits - decimals, 1);
  std::string text = std::to_string(number % 9 + 1);
  const std::string tail = std::to_string(number);
  while (static_cast<int>(text.size()) < (longest ? whole : 1)) text += tail;
  text.resize(static_cast<std::size_t>(longest ? whole : 1));
  if (decimals == 0 || !longest) return text;
  // The last digit is not 0, so that the number is written back with all of them.
  return text + "." + std::string(static_cast<std::size_t>(decimals - 1), '0') +
         std::to_string(number % 8 + 1);
}

std::string Base64(int number) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  return "0KLQ" + std::string(1, kDigits[static_cast<std::size_t>(number) % 26]) + "tdGB";
}

}  // namespace

std::string GenerateValue(const SimpleType& type, int number, bool longest) {
  if (!type.enumeration.empty()) {
    return type.enumeration[static_cast<std::size_t>(number) % type.enumeration.size()];
  }
  if (!type.members.empty()) return GenerateValue(*type.members.front(), number, longest);
  if (!type.patterns.empty()) {
    const std::vector<std::string>& group = type.patterns.back();
    const auto pattern =
        ValuePattern::Parse(group[static_cast<std::size_t>(number) % group.size()]);
    if (pattern) return Utf8FromWin(PatternValue(*pattern, number, longest).Text());
  }
  const std::string day = Padded(number % 28 + 1, 2);
  const std::string month = Padded(number / 28 % 12 + 1, 2);
  const std::string year = std::to_string(2000 + number / 336 % 25);
  if (IsNumber(type)) return Number(type, number, longest);
  if (IsLogical(type)) return number % 2 == 0 ? "true" : "false";
  if (IsDate(type)) return year + "-" + month + "-" + day;
  if (IsBinary(type)) return Base64(number);
  if (type.built_in == "dateTime") return year + "-" + month + "-" + day + "T10:20:30.5+03:00";
  if (type.built_in == "time") return "10:" + Padded(number % 60, 2) + ":30.5+03:00";
  if (type.built_in == "gYear") return year;
  if (type.built_in == "gYearMonth") return year + "-" + month;
  if (type.built_in == "duration") return "P" + std::to_string(number) + "D";
  return Text(type, number, longest);
}

}  // namespace customsconv
