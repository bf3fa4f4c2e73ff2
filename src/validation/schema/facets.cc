#include "validation/schema/facets.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "text/numbers.h"
#include "validation/schema/value_pattern.h"

namespace customsconv::schema {
namespace {

constexpr std::string_view kIntegers[] = {"integer",
                                          "long",
                                          "int",
                                          "short",
                                          "byte",
                                          "unsignedLong",
                                          "unsignedInt",
                                          "unsignedShort",
                                          "unsignedByte",
                                          "positiveInteger",
                                          "negativeInteger",
                                          "nonNegativeInteger",
                                          "nonPositiveInteger"};

// Forms of a fixed width; a time zone and fractions of seconds come on top.
constexpr std::pair<std::string_view, int> kWidths[] = {
    {"date", 10},   {"dateTime", 35}, {"time", 24},      {"gYear", 10}, {"gYearMonth", 13},
    {"gMonth", 10}, {"gDay", 11},     {"gMonthDay", 13}, {"boolean", 5}};

std::optional<int> Smaller(std::optional<int> a, std::optional<int> b) {
  if (!a || !b) return a ? a : b;
  return std::min(*a, *b);
}

std::optional<int> Larger(std::optional<int> a, std::optional<int> b) {
  if (!a || !b) return a ? a : b;
  return std::max(*a, *b);
}

// Own limits narrow the base's, so they win where they are set.
template <typename Limit>
void Inherit(const std::optional<Limit>& base, std::optional<Limit>& own) {
  if (!own) own = base;
}

std::size_t Characters(std::string_view utf8) {
  return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

std::optional<int> LongestValue(const SimpleType& type) {
  if (type.enumeration.empty()) return std::nullopt;
  std::size_t longest = 0;
  for (const std::string& value : type.enumeration) longest = std::max(longest, Characters(value));
  return static_cast<int>(longest);
}

// The longest match of a group of patterns of which one must match.
std::optional<int> LongestMatch(const std::vector<std::string>& group) {
  int longest = 0;
  for (const std::string& text : group) {
    const auto pattern = ValuePattern::Parse(text);
    const std::optional<int> most = pattern ? pattern->MostCharacters() : std::nullopt;
    if (!most) return std::nullopt;
    longest = std::max(longest, *most);
  }
  return longest;
}

std::optional<int> WidthOfForm(const SimpleType& type) {
  for (const auto& [name, width] : kWidths) {
    if (type.built_in == name) return width;
  }
  if (!IsNumber(type) || !type.total_digits) return std::nullopt;
  constexpr int kSign = 1;
  const int point = type.fraction_digits.value_or(*type.total_digits) > 0 ? 1 : 0;
  return *type.total_digits + kSign + point;
}

}  // namespace

void TakeFacets(SimpleType& type, const SchemaFiles::Node& restriction) {
  std::vector<std::string> patterns;
  for (const xmlNode* facet : SchemaChildren(*restriction.node)) {
    const std::string_view kind = LocalName(*facet);
    const std::string value = AttributeText(*facet, "value");
    if (kind == "pattern") patterns.push_back(value);
    if (kind == "enumeration") type.enumeration.push_back(value);
    if (kind == "length") type.min_length = type.max_length = ParseInt(value);
    if (kind == "minLength") type.min_length = ParseInt(value);
    if (kind == "maxLength") type.max_length = ParseInt(value);
    if (kind == "totalDigits") type.total_digits = ParseInt(value);
    if (kind == "fractionDigits") type.fraction_digits = ParseInt(value);
    if (kind == "minInclusive") type.min_inclusive = value;
    if (kind == "maxInclusive") type.max_inclusive = value;
    if (kind == "minExclusive") type.min_exclusive = value;
    if (kind == "maxExclusive") type.max_exclusive = value;
  }
  if (!patterns.empty()) type.patterns.push_back(std::move(patterns));
}

void AddLimitsOf(const SimpleType& base, SimpleType& type) {
  type.built_in = base.built_in;
  if (type.variety == SimpleType::Variety::kAtomic) {
    type.variety = base.variety;
    type.members = base.members;
  }
  type.patterns.insert(type.patterns.begin(), base.patterns.begin(), base.patterns.end());
  if (type.enumeration.empty()) type.enumeration = base.enumeration;
  type.min_length = Larger(type.min_length, base.min_length);
  type.max_length = Smaller(type.max_length, base.max_length);
  type.total_digits = Smaller(type.total_digits, base.total_digits);
  type.fraction_digits = Smaller(type.fraction_digits, base.fraction_digits);
  Inherit(base.min_inclusive, type.min_inclusive);
  Inherit(base.max_inclusive, type.max_inclusive);
  Inherit(base.min_exclusive, type.min_exclusive);
  Inherit(base.max_exclusive, type.max_exclusive);
}

std::optional<int> MostCharacters(const SimpleType& type) {
  if (type.variety == SimpleType::Variety::kUnion) {
    std::optional<int> most = 0;
    for (const SimpleType* member : type.members) {
      const std::optional<int> longest = MostCharacters(*member);
      most = longest && most ? Larger(most, longest) : std::nullopt;
    }
    return most;
  }
  if (type.variety == SimpleType::Variety::kList) return LongestValue(type);
  std::optional<int> most = Smaller(type.max_length, LongestValue(type));
  for (const std::vector<std::string>& group : type.patterns) {
    most = Smaller(most, LongestMatch(group));
  }
  return Smaller(most, WidthOfForm(type));
}

bool IsInteger(const SimpleType& type) {
  return std::find(std::begin(kIntegers), std::end(kIntegers), type.built_in) !=
         std::end(kIntegers);
}

bool IsNumber(const SimpleType& type) {
  return type.variety == SimpleType::Variety::kAtomic &&
         (type.built_in == "decimal" || IsInteger(type));
}

bool IsLogical(const SimpleType& type) {
  return type.variety == SimpleType::Variety::kAtomic && type.built_in == "boolean";
}

bool IsDate(const SimpleType& type) {
  return type.variety == SimpleType::Variety::kAtomic && type.built_in == "date";
}

bool IsBinary(const SimpleType& type) { return type.built_in == "base64Binary"; }

}  // namespace customsconv::schema
