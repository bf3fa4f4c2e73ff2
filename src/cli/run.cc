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
#include "cli/validate_command.h"

namespace customsconv::cli {
namespace {

// Runs the command; what ends it early is told.
ExitStatus Execute(const Command& command, CommandContext& context) {
  const auto tell = [&](const std::string& remark, ExitStatus status) {
    context.dialogs.ClearProgressLine();
    context.output.Remark(remark + "\n");
    return status;
  };
  try {
    return command(context);
  } catch (const UsageError& error) {
    return tell(std::string("error: ") + error.what(), ExitStatus::kUsage);
  } catch (const Interrupted&) {
    return tell("interrupted", ExitStatus::kInterrupted);
  } catch (const std::exception& error) {
    return tell(std::string("error: ") + error.what(), ExitStatus::kError);
  }
}

// The text that --help or --version ask for.
std::string WhatWasAsked(const CLI::App& app, const CLI::Success& asked) {
  return asked.get_name() == "CallForVersion" ? std::string(asked.what()) + "\n" : app.help();
}

}  // namespace

ExitStatus Run(const std::vector<std::string>& arguments, World world, Output& output) {
  CLI::App app("customsconv - electronic customs declarations: XML to dBase tables, schema checks",
               "customsconv");
  app.set_version_flag("--version", "customsconv " CUSTOMSCONV_VERSION);
  app.require_subcommand(1);
  app.fallthrough();
  bool json = false;
  app.add_flag("--json", json, "results as JSON on standard output");
  Command chosen;
  for (const auto add : {AddConvertCommand, AddValidateCommand, AddDumpCommand, AddExportCommand,
                         AddTablesCommand, AddCatalogueCommand}) {
    add(app, chosen);
  }
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::Success& asked) {
    output.Result(WhatWasAsked(app, asked));
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
