#include "cli/convert_command.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <vector>

#include "base/error.h"
#include "base/unicode.h"
#include "cli/arguments.h"
#include "cli/conversion_log.h"
#include "cli/interrupt.h"
#include "cli/texts.h"
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

// The folders and the rules as the library takes them, looked at before any file is touched.
struct ConvertArguments {
  explicit ConvertArguments(const ConvertOptions& options)
      : program(FolderArgument(options.program)),
        rules(FileArgument(options.rules)),
        output(FolderArgument(options.output)) {}

  ShortText program;
  ShortText rules;
  ShortText output;
};

// Writes the rows of the files that wait and then prints their lines. False when they could not
// be written.
bool Commit(TDbfCache& tables, ConversionLog& log) {
  try {
    tables.Commit();
  } catch (const Error& error) {
    log.Release(ToldBy(error));
    return false;
  }
  log.Release();
  return true;
}

// Files that follow each other share a wait for the disk, but keep other stations out no longer
// than they would notice.
bool MayWait(const ConversionLog& log, std::uint64_t milliseconds) {
  constexpr std::size_t kFiles = 64;
  constexpr std::uint64_t kMilliseconds = 500;
  return log.waiting() < kFiles && milliseconds < kMilliseconds;
}

// False when the file is not whole in the tables.
bool ConvertFile(const std::string& file, const ConvertArguments& arguments, Library& library,
                 ConversionLog& log) {
  FileAccount& account = log.BeginFile(file);
  try {
    const bool returned = library.Xml2ArmTi(arguments.program, arguments.rules, FileArgument(file),
                                            arguments.output, &account);
    return log.EndFile(returned, Utf8FromWin(library.quiet_failure())) && returned;
  } catch (const UsageError& error) {
    return log.EndFile({}, error.what());  // a name that cannot be handed on
  } catch (const Error& error) {
    log.EndFile({}, ToldBy(error));
    Commit(library.tables(), log);
    throw;
  }
}

// Converts one file after the other, also those behind a file that fails.
bool ConvertFiles(const ConvertOptions& options, const ConvertArguments& arguments,
                  CommandContext& context, Library& library, ConversionLog& log) {
  bool result = true;
  std::uint64_t since = context.host.clock.Ticks();
  for (std::size_t i = 0; i < options.files.size(); ++i) {
    StopIfInterrupted();
    if (!ConvertFile(options.files[i], arguments, library, log)) result = false;
    const std::uint64_t now = context.host.clock.Ticks();
    const bool last = i + 1 == options.files.size();
    if (!last && !options.explain && MayWait(log, now - since)) continue;
    if (!Commit(library.tables(), log)) result = false;
    since = context.host.clock.Ticks();
  }
  return result;
}

ExitStatus Convert(const ConvertOptions& options, CommandContext& context) {
  const ConvertArguments arguments(options);
  if (!context.host.files.FolderExists(arguments.output)) {
    throw UsageError(Say(texts::kNoSuchFolder, {options.output}));
  }
  if (!options.on_lock.empty()) {
    context.dialogs.set_lock_answer(kLockAnswers.at(options.on_lock));
  }
  ConversionLog log(context, options.rules, options.explain, options.files.size());
  try {
    LibXmlServices services(context.host.files);
    Library library(context.host, services);
    library.tables().SaveAllOrNone();
    const bool result = ConvertFiles(options, arguments, context, library, log);
    log.Finish(result);
    return result ? ExitStatus::kDone : ExitStatus::kNegative;
  } catch (const Interrupted&) {
    log.Interrupt();
    throw;
  } catch (const Error& error) {
    log.Finish(false, ToldBy(error));
    TellError(context, ToldBy(error));
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
