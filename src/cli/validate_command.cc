#include "cli/validate_command.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <vector>

#include "base/error.h"
#include "base/unicode.h"
#include "cli/arguments.h"
#include "cli/interrupt.h"
#include "entry/library.h"
#include "validation/libxml_services.h"

namespace customsconv::cli {
namespace {

struct ValidateOptions {
  std::string program;
  std::string schemas;
  std::vector<std::string> files;
};

struct FailedDocument {
  std::string file;
  std::string type;
  int occurrence;
  SchemaVerdict verdict;
};

// Gathers what a check finds: the lines for the result stream, the rest for the
// summary and JSON.
class CheckRun : public LineList, public CheckObserver {
 public:
  CheckRun(const ValidateOptions& options, CommandContext& context)
      : options_(options),
        context_(context),
        services_(context.host.files),
        library_(context.host, services_) {}

  ExitStatus Run() {
    const ExitStatus status = CheckFiles();
    context_.dialogs.ClearProgressLine();
    if (context_.json) {
      WriteJson(status);
    } else if (status != ExitStatus::kError) {
      WriteSummary();
    }
    return status;
  }

  void Append(std::string_view line) override {
    lines_.emplace_back(line);
    if (context_.json) return;
    context_.dialogs.ClearProgressLine();
    context_.output.Result(Utf8FromWin(line) + "\n");
  }

  void Checked(std::string_view short_name, int occurrence, const SchemaVerdict& verdict) override {
    StopIfInterrupted();
    ++documents_;
    if (!verdict.error_text.empty()) {
      failed_.push_back({file_, std::string(short_name), occurrence, verdict});
    } else if (verdict.outcome == SchemaVerdict::Outcome::kNoSchema) {
      ++without_schema_;
    } else if (verdict.outcome == SchemaVerdict::Outcome::kSwitchedOff) {
      ++switched_off_;
    }
    context_.dialogs.ShowProgressLine(std::to_string(documents_) + " documents");
  }

 private:
  ExitStatus CheckFiles() {
    try {
      const ShortText program = FolderArgument(options_.program);
      const ShortText schemas = SchemaArgument();
      const std::vector<ShortText> files = FileArguments(options_.files);
      bool result = true;
      for (std::size_t i = 0; i < files.size(); ++i) {
        file_ = options_.files[i];
        result = library_.CheckXsd(program, schemas, files[i], *this, this) && result;
        if (!library_.quiet_failure().empty()) Fail(library_.quiet_failure());
      }
      return result && failed_.empty() ? ExitStatus::kDone : ExitStatus::kNegative;
    } catch (const Error& error) {
      Fail(error.text());
      return ExitStatus::kError;
    }
  }

  // A folder may be given without its closing separator.
  [[nodiscard]] ShortText SchemaArgument() const {
    const ShortText path = FileArgument(options_.schemas);
    return context_.host.files.FolderExists(path) ? FolderArgument(options_.schemas) : path;
  }

  void Fail(std::string_view text) {
    error_ = text;
    TellError(context_, text);
  }

  void WriteSummary() {
    const std::string unchecked =
        switched_off_ > 0
            ? std::to_string(switched_off_) + " not checked ([ED] CheckXSD=0 in kord.ini)"
            : std::to_string(without_schema_) + " without a schema";
    context_.output.Remark(std::to_string(documents_) + " documents, " + unchecked + ", " +
                           std::to_string(failed_.size()) + " failing\n");
  }

  void WriteJson(ExitStatus status) {
    JsonWriter json(context_.output);
    json.BeginObject();
    json.Key("result").Bool(status == ExitStatus::kDone);
    json.Key("documents").Number(documents_);
    json.Key("without_schema").Number(without_schema_);
    json.Key("switched_off").Number(switched_off_);
    json.Key("lines").BeginArray();
    for (const std::string& line : lines_) json.WinText(line);
    json.EndArray();
    json.Key("failing").BeginArray();
    for (const FailedDocument& document : failed_) WriteFailed(json, document);
    json.EndArray();
    FinishJson(json, context_.dialogs, error_);
  }

  static void WriteFailed(JsonWriter& json, const FailedDocument& document) {
    const SchemaVerdict& verdict = document.verdict;
    json.BeginObject();
    json.Key("file").Text(document.file);
    json.Key("type").WinText(document.type);
    json.Key("occurrence").Number(document.occurrence);
    json.Key("reason").WinText(verdict.reason.empty() ? verdict.error_text : verdict.reason);
    json.Key("line").Number(verdict.line);
    json.Key("text").WinText(verdict.line_text);
    json.EndObject();
  }

  const ValidateOptions& options_;
  CommandContext& context_;
  LibXmlServices services_;
  Library library_;
  std::string file_;
  int documents_ = 0;
  int without_schema_ = 0;
  int switched_off_ = 0;  // by the configuration
  std::vector<std::string> lines_;
  std::vector<FailedDocument> failed_;
  std::string error_;
};

}  // namespace

void AddValidateCommand(CLI::App& app, Command& chosen) {
  const auto options = std::make_shared<ValidateOptions>();
  CLI::App* command =
      app.add_subcommand("validate", "Check every document of XML files against its schema");
  AddProgramOption(*command, options->program);
  command->add_option("--schemas", options->schemas, "folder of the schemas, or a file in it")
      ->required();
  command->add_option("XML", options->files, "XML files")->required();
  command->callback([options, &chosen] {
    chosen = [options](CommandContext& context) { return CheckRun(*options, context).Run(); };
  });
}

}  // namespace customsconv::cli
