#ifndef CUSTOMSCONV_MAPPING_MAPPING_LINE_H_
#define CUSTOMSCONV_MAPPING_MAPPING_LINE_H_

#include <string_view>
#include <vector>

#include "base/lifetime.h"
#include "catalogue/basis.h"
#include "mapping/rules_file.h"

namespace customsconv {

// Remembers where a name stands in the level that was asked last: the records
// of a block share one level, so a section looks each name up once a block.
class FieldLookup {
 public:
  // Position or -1.
  int In(const TBasis& basis, std::string_view name) {
    if (basis_ != &basis) {
      basis_ = &basis;
      position_ = basis.IndexOfName(name);
    }
    return position_;
  }

 private:
  const TBasis* basis_ = nullptr;
  int position_ = -1;
};

// One line "field = expression" of the rules. "!" and blanks separate like "=".
struct MappingLine {
  int index = 0;                // in the rules file, from 0
  std::string_view field;       // of the target
  std::string_view expression;  // over the source; empty when the line has one word
  FieldLookup source_field;
  FieldLookup target_field;
};

// The mapping lines of the section or sub-section whose header is line
// `header`: from two lines below it to the next header.
[[nodiscard]] std::vector<MappingLine> MappingLinesOf(
    const RulesFile& rules CUSTOMSCONV_LIFETIME_BOUND, int header);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_MAPPING_LINE_H_
