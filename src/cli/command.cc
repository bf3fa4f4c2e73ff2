#include "cli/command.h"

#include <CLI/CLI.hpp>

#include "base/unicode.h"
#include "cli/arguments.h"
#include "cli/texts.h"
#include "entry/start_up.h"

namespace customsconv::cli {

void AddProgramOption(CLI::App& command, std::string& folder) {
  command.add_option("--program", folder, "program folder (kord.ini, Data\\*.dcf)")->required();
}

bool StartProgram(std::string_view program_folder, StartUpState& state, CommandContext& context) {
  const ShortText program = FolderArgument(program_folder);
  // With the data folder as auxiliary folder no further catalogue files are read.
  if (state.StartUp(program, program.str() + "Data\\")) {
    WarnOf(state.types().ForeignFiles(), context);
    return true;
  }
  if (!state.quiet_failure().empty()) TellError(context, Utf8FromWin(state.quiet_failure()));
  return false;
}

void WarnOf(const std::vector<ForeignFile>& files, CommandContext& context) {
  for (const ForeignFile& file : files) {
    const Text text = file.encoding.name == "LF" ? texts::kLineEnds : texts::kForeignEncoding;
    context.dialogs.Warn(Say(
        text, {Utf8FromWin(file.file), std::to_string(file.encoding.line), file.encoding.name}));
  }
}

std::string ToldBy(const Error& error) { return Utf8FromWin(error.told()); }

void FinishJson(JsonWriter& json, const TerminalDialogs& dialogs, std::string_view error) {
  json.Key("messages").BeginArray();
  for (const TerminalDialogs::Shown& shown : dialogs.shown()) {
    json.BeginObject();
    json.Key("kind").Text(shown.kind);
    json.Key("text").Text(shown.text);
    json.EndObject();
  }
  json.EndArray();
  if (!error.empty()) json.Key("error").Text(error);
  json.EndObject();
  json.Finish();
}

void FinishFailure(CommandContext& context, std::string_view error) {
  if (!context.json) return;
  JsonWriter json(context.output);
  json.BeginObject();
  FinishJson(json, context.dialogs, error);
}

void TellError(CommandContext& context, std::string_view error) {
  context.dialogs.ClearProgressLine();
  context.output.Remark(Say(texts::kError, {OneLine(error)}) + "\n");
}

ExitStatus FinishWithError(CommandContext& context, const Error& error) {
  TellError(context, ToldBy(error));
  FinishFailure(context, ToldBy(error));
  return ExitStatus::kError;
}

}  // namespace customsconv::cli
