#ifndef CUSTOMSCONV_MAPPING_SECTION_MAPPER_H_
#define CUSTOMSCONV_MAPPING_SECTION_MAPPER_H_

#include <string_view>

#include "base/lifetime.h"
#include "catalogue/basis.h"
#include "mapping/mapping_run.h"

namespace customsconv {

// The mapping copies a source document into a table-set document by a section of the rules and by
// the built-in rules:
//
//   const RulesFile rules = RulesFile::Load(files, "C:\\RULES\\armti.txt");
//   MappingRun run{environment, rules};              // for all documents of a file
//   MapTableSection({run, source, target}, *rules.FindSection("ESADout"));
//
// Applies the section of the rules file that begins at `start_line` to a
// source and its target document: the header lines once, each sub-section once a
// source record. Sub-sections that name unknown tables or blocks are reported by
// one message each and skipped. Errors of the documents pass through; the rest of the
// section is then not mapped.
void MapTableSection(const DocumentPair& documents, int start_line);

// Name of the entry of `structure` whose table is `table_name` (extension and letter case
// ignored); empty when there is none or the level is no table.
[[nodiscard]] std::string_view FindTableBlock(const TBasis& structure CUSTOMSCONV_LIFETIME_BOUND,
                                              std::string_view table_name);

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_SECTION_MAPPER_H_
