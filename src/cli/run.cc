#include "cli/run.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/arguments.h"
#include "cli/catalogue_command.h"
#include "cli/convert_command.h"
#include "cli/dump_command.h"
#include "cli/export_command.h"
#include "cli/interrupt.h"
#include "cli/tables_command.h"
#include "cli/texts.h"
#include "cli/usage.h"
#include "cli/validate_command.h"

namespace customsconv::cli {
namespace {

// Options of all commands.
struct CommonOptions {
  bool json = false;
  bool quiet = false;
  std::string color = "auto";
};

void AddCommonOptions(CLI::App& app, CommonOptions& options) {
  app.add_flag("--json", options.json, "results as JSON on standard output");
  app.add_flag("-q,--quiet", options.quiet, "only results and errors: no messages, no progress");
  app.add_option("--color", options.color, "color errors: auto (on a terminal), always or never")
      ->check(CLI::IsMember({"auto", "always", "never"}));
}

// Marks errors on the way to the screen.
class ColoredOutput : public Output {
 public:
  explicit ColoredOutput(Output& output) : output_(output) {}
  void set_colored(bool colored) { colored_ = colored; }

  void Result(std::string_view bytes) override { output_.Result(bytes); }
  void Remark(std::string_view bytes) override {
    constexpr std::string_view kError = "error:";
    if (!colored_ || !bytes.starts_with(kError)) return output_.Remark(bytes);
    output_.Remark(std::string("\x1B[31m")
                       .append(kError)
                       .append("\x1B[0m")
                       .append(bytes.substr(kError.size())));
  }
  void Flush() override { output_.Flush(); }
  [[nodiscard]] bool IsTerminal() const override { return output_.IsTerminal(); }
  bool ReadAnswer(std::string& line) override { return output_.ReadAnswer(line); }

 private:
  Output& output_;
  bool colored_ = false;
};

// Runs the command; what ends it early is told.
ExitStatus Execute(const Command& command, CommandContext& context) {
  try {
    return command(context);
  } catch (const UsageError& error) {
    TellError(context, error.what());
    FinishFailure(context, error.what());
    return ExitStatus::kUsage;
  } catch (const Interrupted&) {
    context.dialogs.ClearProgressLine();
    context.output.Remark(Say(texts::kInterrupted) + "\n");
    return ExitStatus::kInterrupted;
  } catch (const std::exception& error) {
    TellError(context, error.what());
    return ExitStatus::kError;
  }
}

// The text that --help or --version ask for.
std::string WhatWasAsked(const CLI::App& app, const CLI::Success& asked) {
  return asked.get_name() == "CallForVersion" ? std::string(asked.what()) + "\n" : app.help();
}

// Tells what is wrong with the words of the command line.
ExitStatus RefuseUsage(const CLI::App& app, const std::vector<std::string>& arguments,
                       const CLI::ParseError& error, CommandContext& context) {
  const std::string unknown = UnknownWord(app, arguments);
  const std::string cause = unknown.empty() ? error.what() : unknown;
  TellError(context, cause);
  context.output.Remark(Say(texts::kHelpTellsMore) + "\n");
  FinishFailure(context, cause);
  return ExitStatus::kUsage;
}

}  // namespace

ExitStatus Run(const std::vector<std::string>& typed, World world, Output& output) {
  CLI::App app("customsconv - electronic customs declarations: XML to dBase tables, schema checks",
               "customsconv");
  app.set_version_flag("-V,--version", "customsconv " CUSTOMSCONV_VERSION);
  app.require_subcommand(1);
  app.fallthrough();
  CommonOptions options;
  AddCommonOptions(app, options);
  Command chosen;
  for (const auto add : {AddConvertCommand, AddValidateCommand, AddDumpCommand, AddExportCommand,
                         AddTablesCommand, AddCatalogueCommand}) {
    add(app, chosen);
  }
  const std::vector<std::string> arguments = WithoutHelpCommand(typed);
  const bool asks_for_json =
      std::find(arguments.begin(), arguments.end(), "--json") != arguments.end();
  Pauses pauses;
  InterruptibleClock clock(world.clock, pauses);
  ColoredOutput colored(output);
  TerminalDialogs dialogs(colored, pauses);
  Host host{world.files, clock, dialogs, world.processes};
  CommandContext context{host, dialogs, colored, pauses, asks_for_json};
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::Success& asked) {
    output.Result(WhatWasAsked(app, asked));
    return ExitStatus::kDone;
  } catch (const CLI::ParseError& error) {
    return RefuseUsage(app, arguments, error, context);
  }
  context.json = options.json;
  context.quiet = options.quiet;
  dialogs.set_quiet(options.json || options.quiet);
  colored.set_colored(options.color == "always" ||
                      (options.color == "auto" && output.IsTerminal()));
  return Execute(chosen, context);
}

}  // namespace customsconv::cli
