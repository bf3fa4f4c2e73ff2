#include "cli/dump_command.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <vector>

#include "base/error.h"
#include "base/unicode.h"
#include "cli/arguments.h"
#include "cli/interrupt.h"
#include "cli/record_walk.h"
#include "cli/texts.h"
#include "entry/start_up.h"
#include "text/words.h"
#include "xml/read/xml_container.h"

namespace customsconv::cli {
namespace {

struct DumpOptions {
  std::string program;
  std::vector<std::string> files;
};

// A value as the document holds it; block entries hold only their names.
bool HasValue(const TDocFieldList& record, int position) {
  return !record.Basis().Item(position).is_block && !record.Text(position).empty();
}

class JsonRecords : public RecordSink {
 public:
  explicit JsonRecords(JsonWriter& json) : json_(json) {}

  void BeginRecord(const TDocFieldList& record, int) override {
    json_.BeginObject();
    json_.Key("values").BeginArray();
    for (int i = 0; i < record.Count(); ++i) {
      if (HasValue(record, i)) WriteValue(record, i);
    }
    json_.EndArray();
    json_.Key("blocks").BeginArray();
  }
  void EndRecord() override {
    json_.EndArray();
    json_.EndObject();
  }
  void BeginBlock(std::string_view name) override {
    json_.BeginArray();
    json_.WinText(name);
    json_.BeginArray();
  }
  void EndBlock() override {
    json_.EndArray();
    json_.EndArray();
  }

 private:
  void WriteValue(const TDocFieldList& record, int position) {
    json_.BeginArray();
    json_.WinText(record.Basis().Item(position).name);
    json_.WinText(record.Text(position));
    json_.EndArray();
  }

  JsonWriter& json_;
};

// The same as an indented tree. Further lines of a value stand below its first.
class TextRecords : public RecordSink {
 public:
  explicit TextRecords(Output& output) : output_(output) {}

  void BeginRecord(const TDocFieldList& record, int number) override {
    if (!blocks_.empty()) {
      Line(blocks_.back() + " " + std::to_string(number));
    }
    indent_ += 2;
    for (int i = 0; i < record.Count(); ++i) {
      if (HasValue(record, i)) WriteValue(record.Basis().Item(i).name, record.Text(i));
    }
  }
  void EndRecord() override { indent_ -= 2; }
  void BeginBlock(std::string_view name) override { blocks_.push_back(Utf8FromWin(name)); }
  void EndBlock() override { blocks_.pop_back(); }

 private:
  void Line(const std::string& text) { output_.Result(std::string(indent_, ' ') + text + "\n"); }

  void WriteValue(const std::string& name, std::string_view value) {
    const std::string head = Utf8FromWin(name) + " = ";
    bool first = true;
    for (const std::string_view line : Words(value, CharSet("\r\n"))) {
      Line((first ? head : std::string(head.size(), ' ')) + Utf8FromWin(line));
      first = false;
    }
  }

  Output& output_;
  std::size_t indent_ = 0;
  std::vector<std::string> blocks_;
};

// Shows the documents of all files, of each up to its first error.
class Dump {
 public:
  Dump(const DumpOptions& options, CommandContext& context)
      : options_(options), context_(context), json_(context.output), state_(context.host) {
    (void)FolderArgument(options.program);  // a wrong one is told before anything is shown
  }

  ExitStatus Run() {
    if (context_.json) {
      json_.BeginObject();
      json_.Key("documents").BeginArray();
    }
    const ExitStatus status = ShowFiles();
    if (context_.json) CloseJson();
    return status;
  }

 private:
  // Notes at its end whether the file held values that no field took.
  struct NoteAtEnd {
    ~NoteAtEnd() { unknown_ids = unknown_ids || container.UnknownIdsFound(); }
    const TXMLContainer& container;
    bool& unknown_ids;
  };

  ExitStatus ShowFiles() {
    try {
      if (!StartProgram(options_.program, state_, context_)) {
        error_ = Utf8FromWin(state_.quiet_failure());
        return ExitStatus::kNegative;
      }
    } catch (const Error& error) {
      return Fail(ToldBy(error));
    }
    ExitStatus status = ExitStatus::kDone;
    for (const std::string& file : options_.files) {
      if (!TryToShow(file)) status = ExitStatus::kError;
    }
    return status;
  }

  bool TryToShow(const std::string& file) {
    file_ = file;
    if (!context_.json && options_.files.size() > 1) {
      context_.output.Result(Say(texts::kPartOf, {file}) + "\n");
    }
    try {
      ShowFile(FileArgument(file));
      return true;
    } catch (const UsageError& error) {
      Fail(error.what());
    } catch (const Error& error) {
      Fail(ToldBy(error));
    }
    return false;
  }

  ExitStatus Fail(std::string_view error) {
    if (error_.empty()) error_ = error;
    TellError(context_, error);
    return ExitStatus::kError;
  }

  void ShowFile(const ShortText& file) {
    TXMLContainer container(file, state_.types(), state_.environment());
    // Also when an error ends the file: values may have been lost before it.
    const NoteAtEnd note{container, unknown_ids_};
    while (const std::unique_ptr<TDocument> document = container.Next()) {
      StopIfInterrupted();
      ShowDocument(*document, container.CurOccurrence());
    }
  }

  void ShowDocument(const TDocument& document, int occurrence) {
    const std::string& code = document.DocInfo().Code;
    if (context_.json) {
      json_.BeginObject();
      json_.Key("file").Text(file_);
      json_.Key("code").WinText(code);
      json_.Key("occurrence").Number(occurrence);
      json_.Key("root");
      JsonRecords records(json_);
      WalkRecords(document.RootRecord(), records);
      json_.EndObject();
    } else {
      context_.output.Result(Utf8FromWin(code) + " " + std::to_string(occurrence) + "\n");
      TextRecords records(context_.output);
      WalkRecords(document.RootRecord(), records);
    }
  }

  void CloseJson() {
    json_.EndArray();
    json_.Key("unknown_ids").Bool(unknown_ids_);
    FinishJson(json_, context_.dialogs, error_);
  }

  const DumpOptions& options_;
  CommandContext& context_;
  JsonWriter json_;
  StartUpState state_;
  std::string file_;
  bool unknown_ids_ = false;
  std::string error_;  // the first one
};

}  // namespace

void AddDumpCommand(CLI::App& app, Command& chosen) {
  const auto options = std::make_shared<DumpOptions>();
  CLI::App* command =
      app.add_subcommand("dump", "Show every document of XML files as the system understands it");
  AddProgramOption(*command, options->program);
  command->add_option("XML", options->files, "XML files")->required();
  command->callback([options, &chosen] {
    chosen = [options](CommandContext& context) { return Dump(*options, context).Run(); };
  });
}

}  // namespace customsconv::cli
