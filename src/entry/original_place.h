#ifndef CUSTOMSCONV_ENTRY_ORIGINAL_PLACE_H_
#define CUSTOMSCONV_ENTRY_ORIGINAL_PLACE_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "validation/schema_check.h"
#include "xml/read/xml_container.h"

namespace customsconv {

// A schema check looks at a text that the program wrote; a person wants to know where the fault is
// in the file.
struct OriginalPlace {
  // Of the element that the verdict names, without prefixes: "ESADout_CU/Goods[2]/Code"; empty
  // when it names none.
  std::string path;
  // The line of the file, from 1, in which that element begins or, where the file does not have
  // it, the innermost one around it; 0 without a path.
  std::size_t line = 0;
};

// `written` is the text that the verdict is about, made of the document that the container yielded
// last. Takes time in proportion to both texts.
[[nodiscard]] OriginalPlace OriginalPlaceOf(const SchemaVerdict& verdict, std::string_view written,
                                            const TXMLContainer& container);

}  // namespace customsconv

#endif  // CUSTOMSCONV_ENTRY_ORIGINAL_PLACE_H_
