#ifndef CUSTOMSCONV_VALIDATION_SCHEMA_COMPONENTS_H_
#define CUSTOMSCONV_VALIDATION_SCHEMA_COMPONENTS_H_

#include <compare>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/lifetime.h"

// What schemas declare: elements, their types, attributes. The components of one SchemaSet point
// at each other; they live as long as the set and do not change. Texts are UTF-8.
namespace customsconv::schema {

struct Name {
  std::string name_space;  // empty for none
  std::string local;
  friend auto operator<=>(const Name&, const Name&) = default;
};

// How often something may stand.
inline constexpr int kUnbounded = std::numeric_limits<int>::max();
struct Occurs {
  int min = 1;
  int max = 1;  // kUnbounded for any number
  friend bool operator==(const Occurs&, const Occurs&) = default;
};

// Product and sum of two such numbers; what an int can't hold is unbounded, none of it is none.
[[nodiscard]] constexpr int Times(int count, int factor) {
  if (count == 0 || factor == 0) return 0;
  return count > kUnbounded / factor ? kUnbounded : count * factor;
}
[[nodiscard]] constexpr int Sum(int a, int b) { return a > kUnbounded - b ? kUnbounded : a + b; }

// Where a component stands: the file below the schema's folder (code page 1251), line from 1.
struct Place {
  std::string file;
  int line = 0;
};

// The values that a text may have. All limits count, also those of the types that it was derived
// from; of a limit that was narrowed the narrowest is kept.
struct SimpleType {
  enum class Variety : std::uint8_t { kAtomic, kList, kUnion };

  Name name;                         // empty for a type without one
  const SimpleType* base = nullptr;  // null for one that restricts a type of the schema language
  std::string built_in;              // that type: "string", "date", ...; of a list its item's
  Variety variety = Variety::kAtomic;
  // A value matches one pattern of each group.
  std::vector<std::vector<std::string>> patterns;
  std::vector<std::string> enumeration;       // empty when any value may stand
  std::optional<int> min_length, max_length;  // in characters
  std::optional<int> total_digits, fraction_digits;
  std::optional<std::string> min_inclusive, max_inclusive, min_exclusive, max_exclusive;
  std::vector<const SimpleType*> members;  // of a list one, of a union all
};

struct Attribute {
  Name name;
  const SimpleType* type = nullptr;
  bool required = false;
  bool prohibited = false;  // the base has it, the restricted type does not
  std::optional<std::string> fixed;
  std::string documentation;
};

struct ComplexType;

// A declaration of an element.
struct Element {
  Name name;
  // Exactly one of them is set, but for an element of any content.
  const SimpleType* simple = nullptr;
  const ComplexType* complex = nullptr;
  bool nillable = false;
  bool abstract = false;
  std::optional<std::string> fixed;
  std::string documentation;
  Place place;
  std::vector<const Element*> substitutes;  // elements that may stand in its place
};

// A part of the content of an element: an element, a wildcard, or parts that belong together.
struct Particle {
  enum class Kind : std::uint8_t { kElement, kAny, kSequence, kChoice, kAll };

  Kind kind = Kind::kSequence;
  Occurs occurs;
  const Element* element = nullptr;  // of kElement
  std::string documentation;         // of this place of an element; its own where there is none
  std::vector<const Particle*> parts;
};

struct ComplexType {
  Name name;
  const ComplexType* base = nullptr;
  bool restricts = false;             // the own content replaces the base's
  const Particle* content = nullptr;  // null for none of its own
  const SimpleType* text = nullptr;   // of an element that holds text and attributes only
  bool mixed = false;
  bool any_attribute = false;
  std::vector<Attribute> attributes;  // the own ones
  std::string documentation;
};

// What the content of the type is put together from, in this order: its base's, then its own.
[[nodiscard]] std::vector<const Particle*> ContentOf(const ComplexType& type);
// The attributes of the type, those of its bases first.
[[nodiscard]] std::vector<const Attribute*> AttributesOf(const ComplexType& type);
// The text of the element's content; null when it holds elements, nothing or anything.
[[nodiscard]] const SimpleType* TextOf(const Element& element CUSTOMSCONV_LIFETIME_BOUND);

}  // namespace customsconv::schema

#endif  // CUSTOMSCONV_VALIDATION_SCHEMA_COMPONENTS_H_
