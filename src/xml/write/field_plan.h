#ifndef CUSTOMSCONV_XML_WRITE_FIELD_PLAN_H_
#define CUSTOMSCONV_XML_WRITE_FIELD_PLAN_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/basis.h"
#include "xml/write/pattern_cache.h"

namespace customsconv {

// What is done for one field of a level, in this order.
struct FieldStep {
  int position = 0;  // in the level
  const TFieldInfo* field = nullptr;
  std::size_t closes = 0;      // elements to leave
  std::size_t first_open = 0;  // elements to enter, in FieldPlan::entered
  std::size_t opens = 0;
  std::string_view rest;  // the last word of the name: the value's, or the block's element
  std::string element;    // `rest` as a valid element name
  std::string attribute;  // " Name=..." when it had to be changed
  int piece_width = 0;    // of a value that is written in pieces
  const Pattern* pattern = nullptr;
};

// How the fields of one level become nested elements. The names of the fields alone decide which
// elements are entered and left, so this is worked out once for all records of the level. Refers to
// the level's texts. Names and attributes of values are in UTF-8 when `utf8` is set, else in code
// page 1251 like all the rest.
struct FieldPlan {
  FieldPlan(const TBasis& basis, bool utf8, PatternCache& patterns);

  std::vector<FieldStep> steps;
  std::vector<std::string_view> entered;
};

// `word` with "_" for each character that no element name can hold, and a "_" in
// front if there was one; "G_" in front of a name that begins with no letter.
[[nodiscard]] std::string ValidElementName(std::string_view word);

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_WRITE_FIELD_PLAN_H_
