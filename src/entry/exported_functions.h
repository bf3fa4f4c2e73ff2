#ifndef CUSTOMSCONV_ENTRY_EXPORTED_FUNCTIONS_H_
#define CUSTOMSCONV_ENTRY_EXPORTED_FUNCTIONS_H_

#include "base/short_text.h"
#include "entry/line_list.h"

// What the two exports do once their arguments are copies of our own. The calling layer
// (exports.cc) knows nothing else of the library, so it can also be linked, and tried with
// the calling convention of another processor, over functions that only note their calls.
namespace customsconv::exported {

// Both work on the one state of the process. Results and errors are those of class Library.
bool Xml2ArmTi(const ShortText& program_dir, const ShortText& rules_file, const ShortText& xml_file,
               const ShortText& output_dir);
bool CheckXsd(const ShortText& program_dir, const ShortText& schema_path, const ShortText& xml_file,
              LineList& errors);

}  // namespace customsconv::exported

#endif  // CUSTOMSCONV_ENTRY_EXPORTED_FUNCTIONS_H_
