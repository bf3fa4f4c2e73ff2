#ifndef CUSTOMSCONV_CLI_VALIDATE_COMMAND_H_
#define CUSTOMSCONV_CLI_VALIDATE_COMMAND_H_

#include "cli/command.h"

namespace customsconv::cli {

// Adds "validate", which checks the documents of XML files against their schemas, to `app`; when
// the arguments choose it, `chosen` becomes what runs it.
void AddValidateCommand(CLI::App& app, Command& chosen);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_VALIDATE_COMMAND_H_
