#ifndef CUSTOMSCONV_CLI_DUMP_COMMAND_H_
#define CUSTOMSCONV_CLI_DUMP_COMMAND_H_

#include "cli/command.h"

namespace customsconv::cli {

// Adds "dump", which shows the documents of XML files field by field, to `app`; when the
// arguments choose it, `chosen` becomes what runs it.
void AddDumpCommand(CLI::App& app, Command& chosen);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_DUMP_COMMAND_H_
