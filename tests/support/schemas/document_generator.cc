#include "support/schemas/document_generator.h"

#include <algorithm>
#include <map>
#include <random>
#include <vector>

#include "base/unicode.h"
#include "text/char_set.h"
#include "validation/schema/facets.h"
#include "validation/schema/value_pattern.h"

namespace customsconv {
namespace {

using schema::Element;
using schema::Particle;
using schema::SimpleType;
using schema::ValuePattern;

// The digits of a growing number chosen for the places of a pattern, one after the other.
class PatternValue {
 public:
  PatternValue(const ValuePattern& pattern, int number, bool longest)
      : pattern_(pattern), number_(number), longest_(longest) {
    Append(pattern_.root());
  }
  [[nodiscard]] std::string Text() const { return Utf8FromWin(text_); }

 private:
  void Append(std::size_t index) {
    const ValuePattern::Node& node = pattern_.At(index);
    const int most = std::min(node.occurs.max, node.occurs.min + 3);
    for (int i = 0; i < (longest_ ? most : node.occurs.min); ++i) {
      if (node.kind == ValuePattern::Kind::kCharacter) {
        text_ += ChosenOf(Characters(node));
      } else if (node.kind == ValuePattern::Kind::kBranches) {
        Append(ChosenOf(node.parts));
      } else {
        for (const std::size_t part : node.parts) Append(part);
      }
    }
  }

  // Letters and digits where the node allows any, else what it allows.
  static std::string Characters(const ValuePattern::Node& node) {
    std::string words, others;
    for (std::size_t byte = ' '; byte < node.characters.size(); ++byte) {
      const char c = static_cast<char>(byte);
      if (node.characters[byte]) (IsLetterOrDigit(c) ? words : others) += c;
    }
    return words.empty() ? others : words;
  }

  template <typename List>
  typename List::value_type ChosenOf(const List& list) {
    return list[static_cast<std::size_t>(number_ + number_ / 7 * places_++) % list.size()];
  }

  const ValuePattern& pattern_;
  int number_;
  bool longest_;
  int places_ = 1;
  std::string text_;  // code page 1251
};

std::string Text(const SimpleType& type, const std::string& digits, bool longest) {
  constexpr int kEnough = 400;
  const auto most = static_cast<std::size_t>(std::min(type.max_length.value_or(kEnough), kEnough));
  const auto least = static_cast<std::size_t>(std::max(type.min_length.value_or(1), 1));
  const std::string tail = digits.size() > most ? digits.substr(digits.size() - most) : digits;
  std::string text;
  for (std::size_t size = longest ? most : least; size > tail.size(); --size) text += "ж";
  return text + tail;
}

std::string Number(const SimpleType& type, int number, bool longest) {
  if (type.max_inclusive && longest) return *type.max_inclusive;
  if (type.min_inclusive && *type.min_inclusive != "0" && !longest) return *type.min_inclusive;
  const std::string digit = std::to_string(number % 8 + 1);
  if (!longest) return digit;
  const int decimals = IsInteger(type) ? 0 : std::min(type.fraction_digits.value_or(2), 6);
  const int whole = std::max(std::min(type.total_digits.value_or(6), 15) - decimals, 1);
  const std::string text = digit + std::string(static_cast<std::size_t>(whole - 1), '3');
  // The last digit is not 0, so that the number is written back with all of them.
  return decimals == 0
             ? text
             : text + "." + std::string(static_cast<std::size_t>(decimals - 1), '0') + digit;
}

// The value number `number` of a type: valid, and another for another number as far as the type
// has enough values. With `longest` it fills the type's length or digits.
std::string Value(const SimpleType& type, int number, bool longest) {
  const auto chosen = [number](const auto& list) {
    return list[static_cast<std::size_t>(number) % list.size()];
  };
  if (!type.enumeration.empty()) return chosen(type.enumeration);
  if (!type.members.empty()) return Value(*type.members.front(), number, longest);
  if (!type.patterns.empty()) {
    const auto pattern = ValuePattern::Parse(chosen(type.patterns.back()));
    if (pattern) return PatternValue(*pattern, number, longest).Text();
  }
  const std::string two_digits = std::to_string(10 + number % 18);
  const std::string year = std::to_string(2000 + number / 54 % 25);
  const std::string month = year + "-" + std::to_string(10 + number / 18 % 3);
  if (IsNumber(type)) return Number(type, number, longest);
  if (IsLogical(type)) return number % 2 == 0 ? "true" : "false";
  if (IsDate(type)) return month + "-" + two_digits;
  if (IsBinary(type)) return "0KLQ" + std::string(1, static_cast<char>('A' + number % 26)) + "tdGB";
  if (type.built_in == "dateTime") return month + "-" + two_digits + "T10:20:30.5+03:00";
  if (type.built_in == "time") return "10:" + two_digits + ":30.5+03:00";
  if (type.built_in == "gYear") return year;
  if (type.built_in == "gYearMonth") return month;
  if (type.built_in == "duration") return "P" + two_digits + "D";
  return Text(type, std::to_string(number), longest);
}

class Generator {
 public:
  explicit Generator(const DocumentPlan& plan)
      : plan_(plan), random_(static_cast<unsigned>(plan.number)) {}

  std::string Document(const Element& root) {
    root_namespace_ = root.name.name_space;
    Write(root);
    std::string declarations = " xmlns=\"" + root_namespace_ + "\"";
    for (const auto& [name_space, prefix] : prefixes_) {
      declarations.append(" xmlns:" + prefix + "=\"").append(name_space) += '"';
    }
    // The declarations go behind the root's name.
    text_.insert(text_.find_first_of(" >"), declarations);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>" + text_;
  }

 private:
  std::string Qualified(const schema::Name& name) {
    if (name.name_space.empty() || name.name_space == root_namespace_) return name.local;
    const auto known =
        prefixes_.try_emplace(name.name_space, "n" + std::to_string(prefixes_.size() + 1)).first;
    return known->second + ":" + name.local;
  }

  void Write(const Element& element) {
    const std::string name = Qualified(element.name);
    text_ += "\n<" + name;
    if (element.complex != nullptr) WriteAttributes(*element.complex);
    text_ += ">";
    if (const SimpleType* type = TextOf(element); type != nullptr) {
      text_ += element.fixed ? *element.fixed : Value(*type, number_++, Full());
    } else if (element.complex != nullptr) {
      open_.push_back(element.complex);
      for (const Particle* part : ContentOf(*element.complex)) Write(*part);
      open_.pop_back();
    }
    text_ += "</" + name + ">";
  }

  void WriteAttributes(const schema::ComplexType& type) {
    for (const schema::Attribute* attribute : AttributesOf(type)) {
      if (!attribute->required && !Full()) continue;
      text_ += " " + attribute->name.local + "=\"" +
               (attribute->fixed ? *attribute->fixed : Value(*attribute->type, number_++, false)) +
               "\"";
    }
  }

  [[nodiscard]] bool Full() const { return plan_.fullness == Fullness::kFull; }
  [[nodiscard]] bool Mixed() const { return plan_.fullness == Fullness::kMixed; }

  int CountOf(const schema::Occurs& occurs) {
    const int most = std::min(occurs.max, std::max(occurs.min, 2));
    // Types that hold themselves end after the second round.
    const bool deep = !open_.empty() && std::count(open_.begin(), open_.end(), open_.back()) > 2;
    if (deep || plan_.fullness == Fullness::kLean) return occurs.min;
    if (Full()) return most;
    return occurs.min + static_cast<int>(random_() % static_cast<unsigned>(most - occurs.min + 1));
  }

  void Write(const Particle& particle) {
    for (int count = CountOf(particle.occurs); count > 0; --count) {
      if (particle.kind == Particle::Kind::kElement) {
        Write(*particle.element);
      } else if (particle.kind == Particle::Kind::kChoice && !particle.parts.empty()) {
        const std::size_t branch = Mixed() ? random_() : static_cast<std::size_t>(plan_.number);
        Write(*particle.parts[branch % particle.parts.size()]);
      } else {
        for (const Particle* part : particle.parts) Write(*part);
      }
    }
  }

  DocumentPlan plan_;
  std::minstd_rand random_;  // the same numbers everywhere
  std::string root_namespace_;
  std::map<std::string, std::string> prefixes_;
  std::vector<const schema::ComplexType*> open_;
  std::string text_;
  int number_ = 1;
};

}  // namespace

std::string GenerateDocument(schema::SchemaSet& schemas, const std::string& root,
                             const DocumentPlan& plan) {
  return Generator(plan).Document(schemas.Root(root));
}

}  // namespace customsconv
