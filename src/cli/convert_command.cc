#include "cli/convert_command.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <vector>

#include "base/error.h"
#include "cli/arguments.h"
#include "cli/conversion_log.h"
#include "cli/interrupt.h"
#include "entry/library.h"
#include "validation/libxml_services.h"

namespace customsconv::cli {
namespace {

struct ConvertOptions {
  std::string program;
  std::string rules;
  std::string output;
  std::vector<std::string> files;
  std::string on_lock;
  bool explain = false;
};

const std::map<std::string, LockAnswer> kLockAnswers = {
    {"wait", LockAnswer::kWait},
    {"take-over", LockAnswer::kTakeOver},
    {"abandon", LockAnswer::kAbandon},
};

// The arguments as the library takes them, all looked at before any file is touched.
struct ConvertArguments {
  explicit ConvertArguments(const ConvertOptions& options)
      : program(FolderArgument(options.program)),
        rules(FileArgument(options.rules)),
        output(FolderArgument(options.output)),
        files(FileArguments(options.files)) {}

  ShortText program;
  ShortText rules;
  ShortText output;
  std::vector<ShortText> files;
};

// Converts one file after the other, also those behind a file that fails.
bool ConvertFiles(const ConvertOptions& options, const ConvertArguments& arguments,
                  Library& library, ConversionLog& log) {
  bool result = true;
  for (std::size_t i = 0; i < arguments.files.size(); ++i) {
    StopIfInterrupted();
    log.BeginFile(options.files[i]);
    const bool converted = library.Xml2ArmTi(arguments.program, arguments.rules, arguments.files[i],
                                             arguments.output, &log);
    log.EndFile(library.quiet_failure());
    result = result && converted;
  }
  return result;
}

// Tries once more to write rows that a full disk kept in memory. The result tells of rows that
// are lost; it is empty when all are in their tables.
std::string_view WriteWhatWaits(TDbfCache& tables) {
  tables.Flush();
  return tables.HasUnsaved() ? "tables could not be written, their new rows are lost" : "";
}

ExitStatus Convert(const ConvertOptions& options, CommandContext& context) {
  const ConvertArguments arguments(options);
  if (!context.host.files.FolderExists(arguments.output)) {
    throw UsageError("no such folder: " + options.output);
  }
  if (!options.on_lock.empty()) {
    context.dialogs.set_lock_answer(kLockAnswers.at(options.on_lock));
  }
  ConversionLog log(context, options.rules, options.explain, options.files.size());
  try {
    LibXmlServices services(context.host.files);
    Library library(context.host, services);
    const bool converted = ConvertFiles(options, arguments, library, log);
    const std::string_view loss = WriteWhatWaits(library.tables());
    if (!loss.empty()) TellError(context, loss);
    const bool result = converted && loss.empty();
    log.Finish(result, loss);
    return result ? ExitStatus::kDone : ExitStatus::kNegative;
  } catch (const Error& error) {
    log.EndFile(error.text());
    log.Finish(false, error.text());
    TellError(context, error.text());
    return ExitStatus::kError;
  }
}

}  // namespace

void AddConvertCommand(CLI::App& app, Command& chosen) {
  const auto options = std::make_shared<ConvertOptions>();
  CLI::App* command =
      app.add_subcommand("convert", "Convert the documents of XML files into dBase tables");
  AddProgramOption(*command, options->program);
  command->add_option("--rules", options->rules, "mapping rules file")->required();
  command->add_option("--output", options->output, "folder of the table set")->required();
  command
      ->add_option("--on-lock", options->on_lock,
                   "when another station writes the tables: wait, take-over or abandon "
                   "(default: ask on a terminal, else wait the full time and take over)")
      ->check(CLI::IsMember({"wait", "take-over", "abandon"}));
  command->add_flag("--explain", options->explain, "tell what became of every rules line");
  command->add_option("XML", options->files, "XML files")->required();
  command->callback([options, &chosen] {
    chosen = [options](CommandContext& context) { return Convert(*options, context); };
  });
}

}  // namespace customsconv::cli
