#ifndef CUSTOMSCONV_VALIDATION_SCHEMA_VALUE_PATTERN_H_
#define CUSTOMSCONV_VALIDATION_SCHEMA_VALUE_PATTERN_H_

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"
#include "validation/schema/components.h"

namespace customsconv::schema {

// A regular expression as schemas write them, taken apart: it always means a whole value, "^" and
// "$" are letters of it.
//
//   const auto pattern = ValuePattern::Parse("[0-9]{2}|\\d{8}");
//   pattern->MostCharacters();   // 8
//   pattern->PerlExpression();   // "[0-9]{2}|[0-9]{8}"
//
// Nodes live in one list; a node's parts are indices into it.
class ValuePattern {
 public:
  enum class Kind : std::uint8_t { kCharacter, kSequence, kBranches };

  struct Node {
    Kind kind = Kind::kSequence;
    Occurs occurs;
    std::bitset<256> characters;     // of kCharacter: those that may stand, code page 1251
    std::vector<std::size_t> parts;  // of kSequence and kBranches
  };

  // Empty for an expression that is malformed or uses what is not understood: categories of
  // characters (\p{...}, \w, \i, \c), subtraction of classes, characters that code page 1251
  // lacks. Values inside the system hold no others, so classes are cut down to that page.
  [[nodiscard]] static std::optional<ValuePattern> Parse(std::string_view utf8);

  [[nodiscard]] const Node& At(std::size_t index) const CUSTOMSCONV_LIFETIME_BOUND {
    return nodes_[index];
  }
  [[nodiscard]] std::size_t root() const { return root_; }
  // Empty when a value may be of any length.
  [[nodiscard]] std::optional<int> MostCharacters() const;
  // The same as a Perl-compatible expression in code page 1251, without anchors and without the
  // characters that a catalogue line cannot hold between quotes.
  [[nodiscard]] std::string PerlExpression() const;

 private:
  friend class ValuePatternParser;
  std::vector<Node> nodes_;  // parts come before what they are parts of
  std::size_t root_ = 0;
};

}  // namespace customsconv::schema

#endif  // CUSTOMSCONV_VALIDATION_SCHEMA_VALUE_PATTERN_H_
