#ifndef CUSTOMSCONV_CATALOGUE_FIELDS_READER_H_
#define CUSTOMSCONV_CATALOGUE_FIELDS_READER_H_

#include <memory>
#include <string>

#include "catalogue/basis.h"
#include "catalogue/field_line.h"
#include "platform/dialogs.h"
#include "streams/read_stream.h"

namespace customsconv {

// How a type wants its Fields section read.
struct FieldsOptions {
  NameCase name_case = NameCase::kUpper;
  std::string main_block;  // name of the block that a "&&BLOCK" line opens
};

// Reads a Fields section from the line behind its section line on; blocks may nest to any
// depth. A field without a format is shown as a message and kept. Throws Error for
// a line that cannot be understood.
[[nodiscard]] std::unique_ptr<TBasis> ReadFieldsSection(TReadStream& stream,
                                                        const FieldsOptions& options,
                                                        Dialogs& dialogs);

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_FIELDS_READER_H_
