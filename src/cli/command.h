#ifndef CUSTOMSCONV_CLI_COMMAND_H_
#define CUSTOMSCONV_CLI_COMMAND_H_

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/error.h"
#include "cli/interrupt.h"
#include "cli/json_writer.h"
#include "cli/output.h"
#include "cli/terminal_dialogs.h"
#include "platform/host.h"
#include "text/foreign_encoding.h"

namespace CLI {
class App;
}

namespace customsconv {
class StartUpState;
}

namespace customsconv::cli {

// A subcommand is one source of this folder with its header: a function that adds its options to
// the parser and one that does the work with what the options hold.
//
//   void AddDumpCommand(CLI::App& app, Command& chosen) {
//     const auto options = std::make_shared<DumpOptions>();
//     CLI::App* command = app.add_subcommand("dump", "Show every document …");
//     AddProgramOption(*command, options->program);
//     command->callback([options, &chosen] {
//       chosen = [options](CommandContext& context) { return Dump(*options, context); };
//     });
//   }
//
// Results go to the result stream of the output and nothing else does; with --json they are one
// JSON object, which ends as FinishJson ends it, also after an error. What people need to know
// goes to the remark stream. A command throws UsageError before it touches anything, and asks
// StopIfInterrupted where nothing is half done.

// What a subcommand works with. Borrowed.
struct CommandContext {
  Host& host;
  TerminalDialogs& dialogs;
  Output& output;
  Pauses& pauses;
  bool json = false;
  bool quiet = false;  // results and errors only
};

// Runs the subcommand that the arguments chose.
using Command = std::function<ExitStatus(CommandContext&)>;

// The option of all commands that read documents or types; `folder` becomes what it names.
void AddProgramOption(CLI::App& command, std::string& folder);

// Loads configuration and catalogue of the program folder (UTF-8). False, and the
// cause is told, when the catalogue cannot be loaded. Throws Error when kord.ini is missing.
[[nodiscard]] bool StartProgram(std::string_view program_folder, StartUpState& state,
                                CommandContext& context);

// Tells that files of the program were saved in an encoding or with line ends that are not read.
void WarnOf(const std::vector<ForeignFile>& files, CommandContext& context);

// What an error of the library tells people, in UTF-8.
[[nodiscard]] std::string ToldBy(const Error& error);

// Closes the object of a JSON result, as all end: "messages" and, when there is an error, "error".
void FinishJson(JsonWriter& json, const TerminalDialogs& dialogs, std::string_view error = {});

// The whole JSON result of a command that failed before it printed any; without --json nothing.
void FinishFailure(CommandContext& context, std::string_view error);

// Tells an error on the remark stream ("error: TEXT").
void TellError(CommandContext& context, std::string_view error);

// Both, for a command that an error of the library ends: the command's exit status.
[[nodiscard]] ExitStatus FinishWithError(CommandContext& context, const Error& error);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_COMMAND_H_
