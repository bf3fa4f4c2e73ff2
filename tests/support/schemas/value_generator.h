#ifndef CUSTOMSCONV_TESTS_SUPPORT_SCHEMAS_VALUE_GENERATOR_H_
#define CUSTOMSCONV_TESTS_SUPPORT_SCHEMAS_VALUE_GENERATOR_H_

#include <string>

#include "validation/schema/components.h"

namespace customsconv {

// The value number `number` (from 0) of a type, UTF-8: valid, and another for another number as
// far as the type has enough values. With `longest` it fills the type's length or digits.
[[nodiscard]] std::string GenerateValue(const schema::SimpleType& type, int number, bool longest);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_SCHEMAS_VALUE_GENERATOR_H_
