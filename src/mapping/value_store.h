#ifndef CUSTOMSCONV_MAPPING_VALUE_STORE_H_
#define CUSTOMSCONV_MAPPING_VALUE_STORE_H_

#include <string>
#include <string_view>

#include "base/short_text.h"
#include "catalogue/field_info.h"
#include "mapping/mapping_line.h"
#include "mapping/record_scope.h"

namespace customsconv {

// The value as the target field takes it, by the type of the source field that
// it was read from (null: unchanged): dates in XML form become local ones,
// logical values "1" or "0".
[[nodiscard]] ShortText ConvertBySourceType(const ShortText& value, const TFieldInfo* source_field,
                                            const Environment& environment);

// "1" or "0" of a logical value: by the bracketed pair of the field's caption
// ("[Нет/Да]": the second word means yes), without one by the usual words.
[[nodiscard]] std::string_view LogicalValue(std::string_view value, std::string_view caption);

// A date reduced to six digits DDMMYY: yyyy-mm-dd and local dates, by character
// positions; anything else stays, cut at 255 bytes.
[[nodiscard]] ShortText SixDigitDate(std::string_view value, int this_year);

// Where a value went.
enum class StoredIn { kField, kBracketField, kNowhere };

// Stores the value of a line, read from `source_field`, in the current target record: in the
// field of that name, unless it is a key of the parent record; or
// gathered in one field for the bracket forms G36[..], G37[..], K012[..]
// (appended) and PASP[..], NUMCARD[..], NUMZ[..] (joined by "/", dates as six digits).
StoredIn StoreValue(RecordScope& record, MappingLine& line, const ShortText& value,
                    const TFieldInfo* source_field);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_VALUE_STORE_H_
