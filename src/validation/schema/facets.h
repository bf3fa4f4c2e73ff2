#ifndef CUSTOMSCONV_VALIDATION_SCHEMA_FACETS_H_
#define CUSTOMSCONV_VALIDATION_SCHEMA_FACETS_H_

#include "validation/schema/components.h"
#include "validation/schema/schema_files.h"

namespace customsconv::schema {

// Gives the type the limits that stand in the restriction at the node.
void TakeFacets(SimpleType& type, const SchemaFiles::Node& restriction);
// Gives a type, which has its own limits, those of its base, too.
void AddLimitsOf(const SimpleType& base, SimpleType& type);

// How many characters a value has at most, by length, patterns, enumeration, digits or by the
// form of its built-in type ("date"). Empty when nothing limits it.
[[nodiscard]] std::optional<int> MostCharacters(const SimpleType& type);

// Groups of built-in types by what their values are.
[[nodiscard]] bool IsNumber(const SimpleType& type);   // decimal and what is derived from it
[[nodiscard]] bool IsLogical(const SimpleType& type);  // boolean
[[nodiscard]] bool IsDate(const SimpleType& type);     // date, no time
[[nodiscard]] bool IsBinary(const SimpleType& type);   // base64Binary
[[nodiscard]] bool IsInteger(const SimpleType& type);  // a number without decimals

}  // namespace customsconv::schema

#endif  // CUSTOMSCONV_VALIDATION_SCHEMA_FACETS_H_
