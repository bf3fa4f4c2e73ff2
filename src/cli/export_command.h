#ifndef CUSTOMSCONV_CLI_EXPORT_COMMAND_H_
#define CUSTOMSCONV_CLI_EXPORT_COMMAND_H_

#include "cli/command.h"

namespace customsconv::cli {

// Adds "export", which writes documents back as XML, as the schema check gets them, to `app`;
// when the arguments choose it, `chosen` becomes what runs it.
void AddExportCommand(CLI::App& app, Command& chosen);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_EXPORT_COMMAND_H_
