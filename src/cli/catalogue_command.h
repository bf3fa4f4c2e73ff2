#ifndef CUSTOMSCONV_CLI_CATALOGUE_COMMAND_H_
#define CUSTOMSCONV_CLI_CATALOGUE_COMMAND_H_

#include "cli/command.h"

namespace customsconv::cli {

// Adds "catalogue", which shows the types of the catalogue and their fields, to `app`; when the
// arguments choose it, `chosen` becomes what runs it.
void AddCatalogueCommand(CLI::App& app, Command& chosen);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_CATALOGUE_COMMAND_H_
