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
  bool strict = false;
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

// Files that follow each other share a wait for the disk, but keep other stations out no longer
// than they would notice: neither by their number nor while something else takes its time.
class SharedSaves {
 public:
  SharedSaves(TDbfCache& tables, ConversionLog& log, Pauses& pauses)
      : tables_(tables), log_(log), pauses_(pauses) {
    tables.SaveAllOrNone();
    pauses.now_and_then = [this] { InFile(IsTime()); };
    pauses.before_long = [this] { InFile(tables_.KeepsOthersOut().has_value()); };
  }
  ~SharedSaves() { pauses_ = {}; }
  SharedSaves(const SharedSaves&) = delete;
  SharedSaves& operator=(const SharedSaves&) = delete;

  // Documents of the file at hand were saved and are lost. No std::exception: the file ends.
  struct FileLost {
    std::string cause;  // UTF-8
  };

  void BetweenFiles(bool may_wait) {
    constexpr std::size_t kFiles = 64;
    const bool waits = tables_.KeepsOthersOut().has_value();
    if (!waits || !may_wait || IsTime() || log_.waiting() >= kFiles) Commit();
  }
  // Some file could not be saved.
  [[nodiscard]] bool failed() const { return failed_; }

 private:
  [[nodiscard]] bool IsTime() const {
    constexpr std::uint64_t kMilliseconds = 500;
    return tables_.KeepsOthersOut().value_or(0) >= kMilliseconds;
  }
  void InFile(bool is_time) {
    if (!is_time) return;
    if (std::string cause = Commit(); !cause.empty()) throw FileLost{std::move(cause)};
  }
  // Writes the rows of the files that wait and then prints their lines. The cause when documents
  // of the file at hand are among those that could not be written.
  std::string Commit() {
    try {
      tables_.Commit();
    } catch (const Error& error) {
      failed_ = true;
      const std::string cause = ToldBy(error);
      return log_.Release(cause) ? cause : "";
    }
    log_.Release();
    return {};
  }

  TDbfCache& tables_;
  ConversionLog& log_;
  Pauses& pauses_;
  bool failed_ = false;
};

// False when the file is not whole in the tables.
bool ConvertFile(const std::string& file, const ConvertArguments& arguments,
                 CommandContext& context, Library& library, ConversionLog& log,
                 SharedSaves& saves) {
  FileAccount& account = log.BeginFile(file);
  try {
    const ShortText path = FileArgument(file);
    if (context.host.files.Stamp(path) == kPipeStamp) context.pauses.before_long();
    const bool returned =
        library.Xml2ArmTi(arguments.program, arguments.rules, path, arguments.output, &account);
    return log.EndFile(returned, Utf8FromWin(library.quiet_failure())) && returned;
  } catch (const UsageError& error) {
    return log.EndFile({}, error.what());  // a name that cannot be handed on
  } catch (const SharedSaves::FileLost& lost) {
    return log.EndFile({}, lost.cause);
  } catch (const Error& error) {
    log.EndFile({}, ToldBy(error));
    saves.BetweenFiles(/*may_wait=*/false);
    throw;
  }
}

// Converts one file after the other, also those behind a file that fails.
bool ConvertFiles(const ConvertOptions& options, const ConvertArguments& arguments,
                  CommandContext& context, Library& library, ConversionLog& log) {
  bool result = true;
  SharedSaves saves(library.tables(), log, context.pauses);
  for (std::size_t i = 0; i < options.files.size(); ++i) {
    StopIfInterrupted();
    if (!ConvertFile(options.files[i], arguments, context, library, log, saves)) result = false;
    const bool last = i + 1 == options.files.size();
    saves.BetweenFiles(/*may_wait=*/!last && !options.explain);
  }
  return result && !saves.failed();
}

ExitStatus Convert(const ConvertOptions& options, CommandContext& context) {
  const ConvertArguments arguments(options);
  if (!context.host.files.FolderExists(arguments.output)) {
    throw UsageError(Say(texts::kNoSuchFolder, {options.output}));
  }
  if (!options.on_lock.empty()) {
    context.dialogs.set_lock_answer(kLockAnswers.at(options.on_lock));
  }
  ConversionLog log(context, options.rules, options.explain, options.strict, options.files.size());
  try {
    LibXmlServices services(context.host.files);
    Library library(context.host, services);
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
  command->add_flag("--strict", options->strict,
                    "a file fails when anything of it is lost on the way (its rows are added)");
  command->add_option("XML", options->files, "XML files")->required();
  command->callback([options, &chosen] {
    chosen = [options](CommandContext& context) { return Convert(*options, context); };
  });
}

}  // namespace customsconv::cli
