#ifndef CUSTOMSCONV_CATALOGUE_TYPE_SECTIONS_H_
#define CUSTOMSCONV_CATALOGUE_TYPE_SECTIONS_H_

#include <memory>
#include <string>
#include <string_view>

#include "catalogue/doc_info.h"
#include "services/environment.h"

namespace customsconv {

inline constexpr std::string_view kHeaderSection = ".HEADER]";
inline constexpr std::string_view kFieldsSection = ".Fields]";
inline constexpr std::string_view kFilesSection = ".Files]";

// The line that begins a section of a type: "[", the code and `section`. The DOS catalogue's
// codes carry a "_" that stands in no file; at most ten characters behind it count.
[[nodiscard]] std::string SectionLine(std::string_view code, std::string_view section);

// Reads the type's own sections of its catalogue file as it is on disk now: the Fields or
// Files section, which become the basis, then once more the HEADER section for the numbers
// of the date and rate fields, which go into `info`. Throws Error with file and section in its
// text.
[[nodiscard]] std::unique_ptr<TBasis> ReadTypeSections(TDocInfo& info, Environment& environment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_TYPE_SECTIONS_H_
