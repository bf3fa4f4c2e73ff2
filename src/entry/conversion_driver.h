#ifndef CUSTOMSCONV_ENTRY_CONVERSION_DRIVER_H_
#define CUSTOMSCONV_ENTRY_CONVERSION_DRIVER_H_

#include <string_view>

#include "catalogue/doc_type_list.h"
#include "dbf/dbf_cache.h"
#include "entry/conversion_account.h"

namespace customsconv {

// Converts the documents of one XML file into the table sets of `output_dir` (with closing
// separator): settles the registration number, picks the section of the rules and the table-set
// type for each document, maps it and saves it. Throws Error when a file cannot
// be read or a table set cannot be opened or saved; documents saved before stay
// saved. An error inside a mapping is shown, and what was mapped before it is saved. `account`
// (null: nobody wants it) is filled as the run goes on, and holds what was done before an error.
void RunConversion(std::string_view rules_file, std::string_view xml_file,
                   std::string_view output_dir, TDocTypeList& types, TDbfCache& tables,
                   Environment& environment, FileAccount* account = nullptr);

}  // namespace customsconv

#endif  // CUSTOMSCONV_ENTRY_CONVERSION_DRIVER_H_
