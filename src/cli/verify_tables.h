#ifndef CUSTOMSCONV_CLI_VERIFY_TABLES_H_
#define CUSTOMSCONV_CLI_VERIFY_TABLES_H_

#include <string>

#include "cli/command.h"

namespace customsconv::cli {

// `tables verify`: looks through the tables of a folder and says what is wrong with them. Which
// rows belong to which says the catalogue of a program folder; without one (empty) only the form
// of each table is looked at. Both folders are UTF-8.
[[nodiscard]] ExitStatus VerifyTables(const std::string& program, const std::string& folder,
                                      CommandContext& context);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_VERIFY_TABLES_H_
