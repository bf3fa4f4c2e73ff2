#include "cli/command.h"

#include <CLI/CLI.hpp>

#include "base/unicode.h"
#include "cli/arguments.h"
#include "entry/start_up.h"

namespace customsconv::cli {

void AddProgramOption(CLI::App& command, std::string& folder) {
  command.add_option("--program", folder, "program folder (kord.ini, Data\\*.dcf)")->required();
}

bool StartProgram(std::string_view program_folder, StartUpState& state, CommandContext& context) {
  const ShortText program = FolderArgument(program_folder);
  // With the data folder as auxiliary folder no further catalogue files are read.
  if (state.StartUp(program, program.str() + "Data\\")) return true;
  if (!state.quiet_failure().empty()) TellError(context, state.quiet_failure());
  return false;
}

void FinishJson(JsonWriter& json, const TerminalDialogs& dialogs, std::string_view error_1251) {
  json.Key("messages").BeginArray();
  for (const TerminalDialogs::Shown& shown : dialogs.shown()) {
    json.BeginObject();
    json.Key("kind").Text(shown.kind);
    json.Key("text").Text(shown.text);
    json.EndObject();
  }
  json.EndArray();
  if (!error_1251.empty()) {
    json.Key("error").WinText(error_1251);
  }
  json.EndObject();
  json.Finish();
}

void FinishFailure(CommandContext& context, std::string_view error_1251) {
  if (!context.json) return;
  JsonWriter json(context.output);
  json.BeginObject();
  FinishJson(json, context.dialogs, error_1251);
}

void TellError(CommandContext& context, std::string_view text_1251) {
  context.dialogs.ClearProgressLine();
  context.output.Remark("error: " + OneLine(Utf8FromWin(text_1251)) + "\n");
}

}  // namespace customsconv::cli
