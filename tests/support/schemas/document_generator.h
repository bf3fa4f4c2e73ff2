#ifndef CUSTOMSCONV_TESTS_SUPPORT_SCHEMAS_DOCUMENT_GENERATOR_H_
#define CUSTOMSCONV_TESTS_SUPPORT_SCHEMAS_DOCUMENT_GENERATOR_H_

#include <string>

#include "validation/schema/schema_set.h"

namespace customsconv {

// How much of a schema a generated document shows.
enum class Fullness {
  kLean,   // only what must stand
  kFull,   // everything that may stand; what repeats stands twice
  kMixed,  // of what may stand or be left out some
};

struct DocumentPlan {
  Fullness fullness = Fullness::kLean;
  // Of each choice the branch of this number (from 0; behind the last one it begins anew). In
  // mixed documents another number is another mixture.
  int number = 0;
};

// An XML document of UTF-8 that is valid against the schema, with a different value in each
// element as far as its type has enough of them. The same arguments give the same bytes.
[[nodiscard]] std::string GenerateDocument(schema::SchemaSet& schemas, const std::string& root,
                                           const DocumentPlan& plan);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_SCHEMAS_DOCUMENT_GENERATOR_H_
