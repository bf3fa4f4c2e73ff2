#ifndef CUSTOMSCONV_CLI_TABLES_COMMAND_H_
#define CUSTOMSCONV_CLI_TABLES_COMMAND_H_

#include "cli/command.h"

namespace customsconv::cli {

// Adds "tables", which lists, shows and creates dBase tables, to `app`; when the arguments
// choose it, `chosen` becomes what runs it.
void AddTablesCommand(CLI::App& app, Command& chosen);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_TABLES_COMMAND_H_
