#ifndef CUSTOMSCONV_ENTRY_REGISTRATION_NUMBER_H_
#define CUSTOMSCONV_ENTRY_REGISTRATION_NUMBER_H_

#include <string_view>

#include "base/short_text.h"
#include "dbf/dbf_cache.h"
#include "services/environment.h"

namespace customsconv {

struct RegistrationNumber {
  ShortText text;
  bool drawn = false;  // from the numbering, which is one further now
};

// The declaration number of an XML file, "10702020/110615/0001234": from the file's name,
// from its text (code page 1251), from the number register "g07esad.dbf" beside it, or a fresh
// one of the numbering. Always code, date DDMMYY and number unless the
// numbering's own pattern says otherwise.
[[nodiscard]] RegistrationNumber RegistrationNumberOf(std::string_view xml_file,
                                                      std::string_view text, TDbfCache& tables,
                                                      Environment& environment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_ENTRY_REGISTRATION_NUMBER_H_
