#ifndef CUSTOMSCONV_VALIDATION_FORMATS_TYPE_DRAFT_H_
#define CUSTOMSCONV_VALIDATION_FORMATS_TYPE_DRAFT_H_

#include <string>

#include "validation/schema/schema_set.h"

namespace customsconv {

// What a draft is made for; empty texts take what the schema says.
struct DraftOptions {
  std::string root;    // name of the root element, UTF-8
  std::string prefix;  // of the root's namespace in documents; without it the namespace is xmlns
  std::string code;    // of the type; the root's name
};

// A type of the catalogue for the documents of a schema, as the text of a catalogue file: code
// page 1251, lines end with CR LF. The same schema gives the same bytes.
//
// An element that repeats becomes a block; one that does not lends its name to the fields inside.
// A repeated short text is gathered in a field with SEQ, a long one is a block with NodeText.
// Fields have type, width, decimals, pattern and caption of the schema; a choice gets a field for
// the number of its branch. What the catalogue's language cannot say stands in comments.
//
// Throws Error when the schema has no such root or cannot be read.
[[nodiscard]] std::string DraftType(schema::SchemaSet& schemas, const DraftOptions& options);

}  // namespace customsconv

#endif  // CUSTOMSCONV_VALIDATION_FORMATS_TYPE_DRAFT_H_
