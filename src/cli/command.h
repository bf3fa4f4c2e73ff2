#ifndef CUSTOMSCONV_CLI_COMMAND_H_
#define CUSTOMSCONV_CLI_COMMAND_H_

#include <functional>
#include <string_view>

#include "cli/exit_status.h"
#include "cli/json_writer.h"
#include "cli/output.h"
#include "cli/terminal_dialogs.h"
#include "platform/host.h"

namespace CLI {
class App;
}

namespace customsconv {
class StartUpState;
}

namespace customsconv::cli {

// What a subcommand works with. Borrowed.
struct CommandContext {
  Host& host;
  TerminalDialogs& dialogs;
  Output& output;
  bool json = false;
};

// Runs the subcommand that the arguments chose.
using Command = std::function<ExitStatus(CommandContext&)>;

// Each adds one subcommand with its options to `app`; when the arguments choose it,
// `chosen` becomes what runs it.
void AddCatalogueCommand(CLI::App& app, Command& chosen);
void AddConvertCommand(CLI::App& app, Command& chosen);
void AddDumpCommand(CLI::App& app, Command& chosen);
void AddExportCommand(CLI::App& app, Command& chosen);
void AddTablesCommand(CLI::App& app, Command& chosen);
void AddValidateCommand(CLI::App& app, Command& chosen);

// Loads configuration and catalogue of the program folder (UTF-8). False, and the
// cause is told, when the catalogue cannot be loaded. Throws Error when kord.ini is missing.
[[nodiscard]] bool StartProgram(std::string_view program_folder, StartUpState& state,
                                CommandContext& context);

// Closes the object of a JSON result, as all end: "messages" and, when there is an error (code
// page 1251), "error".
void FinishJson(JsonWriter& json, const TerminalDialogs& dialogs, std::string_view error_1251 = {});

// Tells an error of the library on the remark stream ("error: TEXT"). The text is code page 1251.
void TellError(CommandContext& context, std::string_view text_1251);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_COMMAND_H_
