#ifndef CUSTOMSCONV_CLI_CONVERT_COMMAND_H_
#define CUSTOMSCONV_CLI_CONVERT_COMMAND_H_

#include "cli/command.h"

namespace customsconv::cli {

// Adds "convert", which brings XML files into the tables of a folder, to `app`; when the
// arguments choose it, `chosen` becomes what runs it.
void AddConvertCommand(CLI::App& app, Command& chosen);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_CONVERT_COMMAND_H_
