#include "cli/command.h"

#include "base/code_pages.h"
#include "cli/arguments.h"
#include "entry/start_up.h"

namespace customsconv::cli {

bool StartProgram(std::string_view program_folder, StartUpState& state, CommandContext& context) {
  const ShortText program = FolderArgument(program_folder);
  // With the data folder as auxiliary folder no further catalogue files are read.
  if (state.StartUp(program, program.str() + "Data\\")) return true;
  if (!state.quiet_failure().empty()) TellError(context, state.quiet_failure());
  return false;
}

void WriteMessages(JsonWriter& json, const TerminalDialogs& dialogs) {
  json.Key("messages");
  json.BeginArray();
  for (const TerminalDialogs::Shown& shown : dialogs.shown()) {
    json.BeginObject();
    json.Key("kind");
    json.Text(shown.kind);
    json.Key("text");
    json.Text(shown.text);
    json.EndObject();
  }
  json.EndArray();
}

void TellError(CommandContext& context, std::string_view text_1251) {
  context.dialogs.ClearProgressLine();
  context.output.Remark("error: " + Utf8FromWin(text_1251) + "\n");
}

}  // namespace customsconv::cli
