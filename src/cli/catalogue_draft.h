#ifndef CUSTOMSCONV_CLI_CATALOGUE_DRAFT_H_
#define CUSTOMSCONV_CLI_CATALOGUE_DRAFT_H_

#include "cli/command.h"

namespace customsconv::cli {

// Adds "draft", which writes a type of the catalogue from a schema, to the command "catalogue";
// when the arguments choose it, `chosen` becomes what runs it.
void AddDraftAction(CLI::App& catalogue, Command& chosen);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_CATALOGUE_DRAFT_H_
