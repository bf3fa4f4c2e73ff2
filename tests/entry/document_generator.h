#ifndef CUSTOMSCONV_TESTS_ENTRY_DOCUMENT_GENERATOR_H_
#define CUSTOMSCONV_TESTS_ENTRY_DOCUMENT_GENERATOR_H_

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "base/unicode.h"
#include "text/char_set.h"
#include "validation/schema/facets.h"
#include "validation/schema/value_pattern.h"

namespace customsconv {

// How much of a schema a generated document shows.
enum class Fullness {
  kLean,   // only what must stand
  kFull,   // everything that may stand; what repeats stands twice, values fill their lengths
  kMixed,  // of what may stand or be left out some
};

// Makes an XML document of UTF-8 that is valid against a schema, nearly every value another one.
// Of each choice it takes the branch `number` (from 0; behind the last one it begins anew); in
// mixed documents another number is another mixture. The same arguments give the same bytes.
class DocumentGenerator {
 public:
  DocumentGenerator(Fullness fullness, unsigned number)
      : fullness_(fullness), number_(number), mixture_(number), values_(number) {}

  std::string Document(const schema::Element& root) {
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
  [[nodiscard]] bool Full() const { return fullness_ == Fullness::kFull; }
  template <typename List>
  typename List::value_type AnyOf(const List& list) {
    return list[values_() % list.size()];
  }

  // --- Values

  std::string PatternValue(const schema::ValuePattern& pattern, std::size_t at) {
    const schema::ValuePattern::Node& node = pattern.At(at);
    std::string words, others, text;
    for (std::size_t byte = ' '; byte < node.characters.size(); ++byte) {
      const char c = static_cast<char>(byte);
      if (node.characters[byte]) (IsLetterOrDigit(c) ? words : others) += c;
    }
    const int most = std::min(node.occurs.max, node.occurs.min + 3);
    for (int i = 0; i < (Full() ? most : node.occurs.min); ++i) {
      if (node.kind == schema::ValuePattern::Kind::kCharacter) {
        text += AnyOf(words.empty() ? others : words);
      } else if (node.kind == schema::ValuePattern::Kind::kBranches) {
        text += PatternValue(pattern, AnyOf(node.parts));
      } else {
        for (const std::size_t part : node.parts) text += PatternValue(pattern, part);
      }
    }
    return text;
  }

  std::string Number(const schema::SimpleType& type) {
    if (type.max_inclusive && Full()) return *type.max_inclusive;
    if (type.min_inclusive && *type.min_inclusive != "0" && !Full()) return *type.min_inclusive;
    std::string text = std::to_string(values_() % 8 + 1);
    if (!Full()) return text;
    const int decimals = IsInteger(type) ? 0 : std::min(type.fraction_digits.value_or(2), 6);
    const int whole = std::max(std::min(type.total_digits.value_or(6), 15) - decimals, 1);
    text.append(static_cast<std::size_t>(whole - 1), '3');
    if (decimals == 0) return text;
    // The last digit is not 0, so that the number is written back with all of them.
    return text + "." + std::string(static_cast<std::size_t>(decimals - 1), '0') + "7";
  }

  std::string Value(const schema::SimpleType& type) {
    if (!type.enumeration.empty()) return AnyOf(type.enumeration);
    if (!type.members.empty()) return Value(*type.members.front());
    if (!type.patterns.empty()) {
      const auto pattern = schema::ValuePattern::Parse(AnyOf(type.patterns.back())).value();
      return Utf8FromWin(PatternValue(pattern, pattern.root()));
    }
    if (IsNumber(type)) return Number(type);
    if (IsLogical(type)) return values_() % 2 == 0 ? "true" : "false";
    const std::string two_digits = std::to_string(10 + values_() % 18);
    const std::string month = "20" + two_digits + "-" + std::to_string(10 + values_() % 3);
    const std::string time = "10:" + two_digits + ":30.5+03:00", day = month + "-" + two_digits;
    const std::map<std::string, std::string> forms = {{"date", day},
                                                      {"dateTime", day + "T" + time},
                                                      {"time", time},
                                                      {"gYearMonth", month},
                                                      {"gYear", "20" + two_digits},
                                                      {"duration", "P" + two_digits + "D"}};
    const auto form = forms.find(type.built_in);
    if (form != forms.end()) return form->second;
    const auto most = static_cast<std::size_t>(std::min(type.max_length.value_or(400), 400));
    const auto least = static_cast<std::size_t>(type.min_length.value_or(1));
    std::string digits = std::to_string(values_() % 1'000'000).substr(0, most), text;
    for (std::size_t size = Full() ? most : least; size > digits.size(); --size) text += "ж";
    return text + digits;
  }

  // --- Elements

  std::string Qualified(const schema::Name& name) {
    if (name.name_space.empty() || name.name_space == root_namespace_) return name.local;
    const auto known =
        prefixes_.try_emplace(name.name_space, "n" + std::to_string(prefixes_.size() + 1)).first;
    return known->second + ":" + name.local;
  }

  void Write(const schema::Element& element) {
    const std::string name = Qualified(element.name);
    text_ += "\n<" + name;
    if (element.complex != nullptr) WriteAttributes(*element.complex);
    text_ += ">";
    if (const schema::SimpleType* type = TextOf(element); type != nullptr) {
      text_ += element.fixed ? *element.fixed : Value(*type);
    } else if (element.complex != nullptr) {
      open_.push_back(element.complex);
      for (const schema::Particle* part : ContentOf(*element.complex)) Write(*part);
      open_.pop_back();
    }
    text_ += "</" + name + ">";
  }

  void WriteAttributes(const schema::ComplexType& type) {
    for (const schema::Attribute* attribute : AttributesOf(type)) {
      if (!attribute->required && !Full()) continue;
      const std::string value = attribute->fixed ? *attribute->fixed : Value(*attribute->type);
      text_ += " " + attribute->name.local + "=\"" + value + "\"";
    }
  }

  int CountOf(const schema::Occurs& occurs) {
    const int most = std::min(occurs.max, std::max(occurs.min, 2));
    // Types that hold themselves end after the second round.
    const bool deep = !open_.empty() && std::count(open_.begin(), open_.end(), open_.back()) > 2;
    if (deep || fullness_ == Fullness::kLean) return occurs.min;
    if (Full()) return most;
    return occurs.min + static_cast<int>(mixture_() % static_cast<unsigned>(most - occurs.min + 1));
  }

  void Write(const schema::Particle& particle) {
    for (int count = CountOf(particle.occurs); count > 0; --count) {
      if (particle.kind == schema::Particle::Kind::kElement) {
        Write(*particle.element);
      } else if (particle.kind == schema::Particle::Kind::kChoice && !particle.parts.empty()) {
        const std::size_t branch = fullness_ == Fullness::kMixed ? mixture_() : number_;
        Write(*particle.parts[branch % particle.parts.size()]);
      } else {
        for (const schema::Particle* part : particle.parts) Write(*part);
      }
    }
  }

  Fullness fullness_;
  unsigned number_;
  std::minstd_rand mixture_, values_;  // the same numbers everywhere
  std::string root_namespace_;
  std::map<std::string, std::string> prefixes_;
  std::vector<const schema::ComplexType*> open_;
  std::string text_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_ENTRY_DOCUMENT_GENERATOR_H_
