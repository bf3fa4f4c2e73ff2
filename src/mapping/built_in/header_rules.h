#ifndef CUSTOMSCONV_MAPPING_BUILT_IN_HEADER_RULES_H_
#define CUSTOMSCONV_MAPPING_BUILT_IN_HEADER_RULES_H_

#include <string>
#include <string_view>

#include "mapping/record_scope.h"

namespace customsconv {

// What a document's header record gets before the header lines, in this order: the parts
// of its registration number, its transport records, and, for a transit
// declaration, the reshaping of the source.
void ApplyHeaderRules(RecordScope& record);

// What a header record gets behind its mapping lines: the container indicator as
// "1" or "0", and for a declaration adjustment a number of its own in place of the
// customs office.
void ApplyClosingHeaderRules(RecordScope& record);

// Date of a registration number (DDMMY, DDMMYY or DDMMYYYY) as "dd.mm.yy"; empty
// for another length and for a day up to 01.01.1990 or 400 days and more after `today`.
[[nodiscard]] std::string RegistrationDate(std::string_view digits, Date today);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_BUILT_IN_HEADER_RULES_H_
