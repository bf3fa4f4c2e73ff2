#include "cli/validate_command.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <vector>

#include "base/error.h"
#include "base/unicode.h"
#include "cli/arguments.h"
#include "cli/file_problems.h"
#include "cli/interrupt.h"
#include "cli/texts.h"
#include "entry/library.h"
#include "validation/libxml_services.h"

namespace customsconv::cli {
namespace {

struct ValidateOptions {
  std::string program;
  std::string schemas;
  std::vector<std::string> files;
  bool bare = false;
  bool require_schema = false;
};

struct CheckedDocument {
  std::string file;
  std::string type;
  int occurrence;
  SchemaVerdict verdict;
  OriginalPlace place{};
};

struct FileFailure {
  std::string file;
  std::string text;
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
    program_ = FolderArgument(options_.program);
    schemas_ = SchemaArgument();
    const ExitStatus status = CheckFiles();
    context_.dialogs.ClearProgressLine();
    if (context_.json) {
      WriteJson(status);
    } else if (started_) {
      WriteSummary();
    }
    return status;
  }

  void Append(std::string_view line) override { lines_.emplace_back(Utf8FromWin(line)); }

  void FileRead(const FileContent& content) override {
    started_ = true;
    WarnOf(library_.state().types().ForeignFiles(), context_);
    content_ = content;
  }
  void Found(const OriginalPlace& place) override { place_ = place; }

  void Checked(std::string_view short_name, int occurrence, const SchemaVerdict& verdict) override {
    StopIfInterrupted();
    ++documents_;
    ++documents_of_file_;
    CheckedDocument document{file_, Utf8FromWin(short_name), occurrence, verdict};
    if (!verdict.error_text.empty()) {
      document.place = place_;
      Print(FailingLine(document));
      failed_.push_back(std::move(document));
    } else if (verdict.outcome != SchemaVerdict::Outcome::kChecked) {
      if (verdict.outcome == SchemaVerdict::Outcome::kSwitchedOff) ++switched_off_;
      TellUnchecked(document);
      unchecked_.push_back(std::move(document));
    }
    context_.dialogs.ShowProgressLine(Say(texts::kDocumentsChecked, {std::to_string(documents_)}));
  }

 private:
  ExitStatus CheckFiles() {
    bool result = true;
    for (const std::string& file : options_.files) {
      if (!CheckFile(file)) result = false;
      if (!may_go_on_) break;
    }
    if (raised_) return ExitStatus::kError;
    const bool all_checked = unchecked_.empty() || !options_.require_schema;
    return result && failed_.empty() && all_checked ? ExitStatus::kDone : ExitStatus::kNegative;
  }

  // False when the file's documents could not be looked at.
  bool CheckFile(const std::string& file) {
    file_ = file;
    content_ = {};
    documents_of_file_ = 0;
    try {
      const bool result = library_.CheckXsd(program_, schemas_, FileArgument(file), *this, this);
      if (!library_.quiet_failure().empty()) Fail(Utf8FromWin(library_.quiet_failure()));
      // Without a catalogue no other file can be checked either.
      may_go_on_ = content_.was_read;
      if (may_go_on_ && documents_of_file_ == 0 && result) Fail(NoDocument(content_).text);
      return result && documents_of_file_ > 0;
    } catch (const UsageError& error) {
      Fail(error.what());
    } catch (const Error& error) {
      raised_ = true;
      may_go_on_ = library_.state().is_started();
      Fail(ToldBy(error));
    }
    return false;
  }

  // A folder may be given without its closing separator.
  [[nodiscard]] ShortText SchemaArgument() const {
    const Files& files = context_.host.files;
    const ShortText path = FileArgument(options_.schemas);
    if (files.FolderExists(path)) return FolderArgument(options_.schemas);
    if (files.Exists(path)) return path;
    throw UsageError(Say(texts::kNoSuchFolder, {options_.schemas}));
  }

  // With the file in front of it and the place in it behind.
  [[nodiscard]] std::string FailingLine(const CheckedDocument& document) const {
    const std::string& line = lines_.back();
    if (options_.bare) return line;
    const OriginalPlace& place = document.place;
    if (place.path.empty()) return Say(texts::kLineOfFile, {file_, line});
    return Say(texts::kLineAtPlace,
               {file_, line, Utf8FromWin(place.path), std::to_string(place.line)});
  }

  void Print(const std::string& line) {
    if (context_.json) return;
    context_.dialogs.ClearProgressLine();
    context_.output.Result(line + "\n");
  }

  void TellUnchecked(const CheckedDocument& document) {
    const std::string name = document.type + " " + std::to_string(document.occurrence);
    const bool no_schema = document.verdict.outcome == SchemaVerdict::Outcome::kNoSchema;
    const std::string line =
        no_schema ? Say(texts::kNoSchema, {file_, name, Utf8FromWin(document.verdict.schema)})
                  : Say(texts::kSwitchedOff, {file_, name});
    if (options_.require_schema) return Print(line);
    if (!no_schema || context_.json || context_.quiet) return;  // the summary tells it
    context_.dialogs.ClearProgressLine();
    context_.output.Remark(line + "\n");
  }

  void Fail(std::string_view text) {
    errors_.push_back({file_, std::string(text)});
    // Most messages of the library name the file themselves.
    const bool named = text.find(file_) != std::string_view::npos;
    TellError(context_, named ? std::string(text) : Say(texts::kLineOfFile, {file_, text}));
  }

  void WriteSummary() {
    if (context_.quiet) return;
    const int without_schema = static_cast<int>(unchecked_.size()) - switched_off_;
    const std::string unchecked =
        switched_off_ > 0 ? Say(texts::kCountSwitchedOff, {std::to_string(switched_off_)})
                          : Say(texts::kCountWithoutSchema, {std::to_string(without_schema)});
    context_.output.Remark(Say(texts::kCheckSummary, {std::to_string(documents_), unchecked,
                                                      std::to_string(failed_.size())}) +
                           "\n");
  }

  void WriteJson(ExitStatus status) {
    JsonWriter json(context_.output);
    json.BeginObject();
    json.Key("result").Bool(status == ExitStatus::kDone);
    json.Key("documents").Number(documents_);
    json.Key("without_schema").Number(static_cast<int>(unchecked_.size()) - switched_off_);
    json.Key("switched_off").Number(switched_off_);
    json.Key("lines").BeginArray();
    for (const std::string& line : lines_) json.Text(line);
    json.EndArray();
    json.Key("failing").BeginArray();
    for (const CheckedDocument& document : failed_) WriteFailed(json, document);
    json.EndArray();
    json.Key("unchecked").BeginArray();
    for (const CheckedDocument& document : unchecked_) {
      BeginDocument(json, document);
      json.Key("schema").WinText(document.verdict.schema);
      json.EndObject();
    }
    json.EndArray();
    json.Key("errors").BeginArray();
    for (const FileFailure& failure : errors_) {
      json.BeginObject();
      json.Key("file").Text(failure.file);
      json.Key("text").Text(failure.text);
      json.EndObject();
    }
    json.EndArray();
    FinishJson(json, context_.dialogs, errors_.empty() ? std::string() : errors_.front().text);
  }

  static void BeginDocument(JsonWriter& json, const CheckedDocument& document) {
    json.BeginObject();
    json.Key("file").Text(document.file);
    json.Key("type").Text(document.type);
    json.Key("occurrence").Number(document.occurrence);
  }

  static void WriteFailed(JsonWriter& json, const CheckedDocument& document) {
    const SchemaVerdict& verdict = document.verdict;
    BeginDocument(json, document);
    json.Key("reason").WinText(verdict.reason.empty() ? verdict.error_text : verdict.reason);
    json.Key("line").Number(verdict.line);
    json.Key("text").WinText(verdict.line_text);
    json.Key("path").WinText(document.place.path);
    json.Key("file_line").Number(static_cast<std::int64_t>(document.place.line));
    json.EndObject();
  }

  const ValidateOptions& options_;
  CommandContext& context_;
  LibXmlServices services_;
  Library library_;
  ShortText program_;
  ShortText schemas_;

  // Of the file that is being checked.
  std::string file_;
  FileContent content_;
  int documents_of_file_ = 0;
  OriginalPlace place_;

  bool started_ = false;   // a file was read
  bool may_go_on_ = true;  // the program's own files can be read
  bool raised_ = false;    // an error that the library raises to its host
  int documents_ = 0;
  int switched_off_ = 0;  // by the configuration
  std::vector<std::string> lines_;
  std::vector<CheckedDocument> failed_;
  std::vector<CheckedDocument> unchecked_;
  std::vector<FileFailure> errors_;
};

}  // namespace

void AddValidateCommand(CLI::App& app, Command& chosen) {
  const auto options = std::make_shared<ValidateOptions>();
  CLI::App* command =
      app.add_subcommand("validate", "Check every document of XML files against its schema");
  AddProgramOption(*command, options->program);
  command->add_option("--schemas", options->schemas, "folder of the schemas, or a file in it")
      ->required();
  command->add_flag("--bare", options->bare, "each line as the library gives it, without the file");
  command->add_flag("--require-schema", options->require_schema,
                    "a document that is not checked fails, too");
  command->add_option("XML", options->files, "XML files")->required();
  command->callback([options, &chosen] {
    chosen = [options](CommandContext& context) { return CheckRun(*options, context).Run(); };
  });
}

}  // namespace customsconv::cli
