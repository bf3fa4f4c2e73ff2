#ifndef CUSTOMSCONV_DOCUMENT_COMPOSITE_VALUE_H_
#define CUSTOMSCONV_DOCUMENT_COMPOSITE_VALUE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/lifetime.h"
#include "catalogue/field_info.h"

namespace customsconv {

// The value of a composite field holds its parts one behind the other. Part n (from 1) is
//
//   0x1E n  prefix text  0x1F n  value
//
// and ends where the next 0x1E stands, or with the text. Parts have nesting levels
// (TSubField::number): a part of level above 0 lies inside the area of the nearest
// earlier part, by number, whose level is smaller.
inline constexpr char kPartMark = '\x1E';
inline constexpr char kPartValueMark = '\x1F';

// Characters [begin, end) of a composite value, from 0.
struct TextRange {
  std::size_t begin;
  std::size_t end;
};

// Value of part `number` inside `range` of the text, trimmed; empty when the part is not there.
[[nodiscard]] std::string_view PartValue(std::string_view composite CUSTOMSCONV_LIFETIME_BOUND,
                                         int number, TextRange range);

// The composite text with `value` stored as part `number`. A missing part is
// created with its marks and prefix, an empty value too; with a `range` only those characters
// are looked at.
[[nodiscard]] std::string WithPart(std::string_view composite, const TSubFieldsList& parts,
                                   int number, std::string_view value,
                                   std::optional<TextRange> range);

// The text that is put in front of a part: one of the "|"-separated variants of its prefix.
[[nodiscard]] std::string PrefixVariant(std::string_view prefix);

// Inserts `text` at `position` (from 0), with blanks where letters would run together
// across a mark. Returns how many characters were inserted.
std::size_t InsertPartText(std::string& target, std::string_view text, std::size_t position);

}  // namespace customsconv

#endif  // CUSTOMSCONV_DOCUMENT_COMPOSITE_VALUE_H_
