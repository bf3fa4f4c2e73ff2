#include "cli/run.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/interrupt.h"
#include "cli/version.h"

namespace customsconv::cli {
namespace {

ExitStatus Execute(const Command& command, CommandContext& context) {
  try {
    return command(context);
  } catch (const UsageError& error) {
    context.output.Remark("error: " + std::string(error.what()) + "\n");
    return ExitStatus::kUsage;
  } catch (const Interrupted&) {
    context.dialogs.ClearProgressLine();
    context.output.Remark("interrupted\n");
    return ExitStatus::kInterrupted;
  } catch (const std::exception& error) {
    context.output.Remark("error: " + std::string(error.what()) + "\n");
    return ExitStatus::kError;
  }
}

}  // namespace

ExitStatus Run(const std::vector<std::string>& arguments, World world, Output& output) {
  CLI::App app("customsconv - electronic customs declarations: XML to dBase tables, schema checks",
               "customsconv");
  app.set_version_flag("--version", std::string("customsconv ") + kVersion);
  app.require_subcommand(1);
  bool json = false;
  app.add_flag("--json", json, "results as JSON on standard output");
  app.fallthrough();
  Command chosen;
  AddConvertCommand(app, chosen);
  AddValidateCommand(app, chosen);
  AddDumpCommand(app, chosen);
  AddExportCommand(app, chosen);
  AddTablesCommand(app, chosen);
  AddCatalogueCommand(app, chosen);
  try {
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    app.parse(reversed);
  } catch (const CLI::Success& asked) {
    output.Result(asked.get_name() == "CallForVersion" ? std::string(asked.what()) + "\n"
                                                       : app.help());
    return ExitStatus::kDone;
  } catch (const CLI::ParseError& error) {
    output.Remark("error: " + std::string(error.what()) + "\ncustomsconv --help tells more\n");
    return ExitStatus::kUsage;
  }
  InterruptibleClock clock(world.clock);
  TerminalDialogs dialogs(output, json);
  Host host{world.files, clock, dialogs, world.processes};
  CommandContext context{host, dialogs, output, json};
  return Execute(chosen, context);
}

}  // namespace customsconv::cli
