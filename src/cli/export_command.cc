#include "cli/export_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "base/error.h"
#include "cli/arguments.h"
#include "cli/interrupt.h"
#include "cli/texts.h"
#include "entry/start_up.h"
#include "xml/read/xml_container.h"
#include "xml/write/document_writer.h"

namespace customsconv::cli {
namespace {

struct ExportOptions {
  std::string program;
  std::vector<std::string> files;
  int document = 0;  // of each file, from 1 in the order of the dump; 0 for all
};

// The XML exactly as it is handed to validation. False when the file has no such document.
bool WriteDocuments(const ExportOptions& options, const std::string& file, TXMLContainer& container,
                    CommandContext& context) {
  DocumentWriter writer;
  int number = 0;
  while (const std::unique_ptr<TDocument> document = container.Next()) {
    StopIfInterrupted();
    ++number;
    if (options.document == 0 || options.document == number) {
      context.output.Result(writer.Text(*document));
    }
    if (options.document == number) return true;
  }
  if (options.document == 0) return true;
  TellError(context, Say(texts::kNoSuchDocument,
                         {file, std::to_string(number), std::to_string(options.document)}));
  return false;
}

ExitStatus ExportFile(const ExportOptions& options, const std::string& file, StartUpState& state,
                      CommandContext& context) {
  if (options.files.size() > 1) context.output.Result(Say(texts::kPartOf, {file}) + "\n");
  try {
    TXMLContainer container(FileArgument(file), state.types(), state.environment());
    return WriteDocuments(options, file, container, context) ? ExitStatus::kDone
                                                             : ExitStatus::kNegative;
  } catch (const UsageError& error) {
    TellError(context, error.what());
  } catch (const Error& error) {
    TellError(context, ToldBy(error));
  }
  return ExitStatus::kError;
}

ExitStatus Export(const ExportOptions& options, CommandContext& context) {
  try {
    StartUpState state(context.host);
    if (!StartProgram(options.program, state, context)) return ExitStatus::kNegative;
    ExitStatus status = ExitStatus::kDone;
    for (const std::string& file : options.files) {
      status = std::max(status, ExportFile(options, file, state, context));
    }
    return status;
  } catch (const Error& error) {
    TellError(context, ToldBy(error));
    return ExitStatus::kError;
  }
}

}  // namespace

void AddExportCommand(CLI::App& app, Command& chosen) {
  const auto options = std::make_shared<ExportOptions>();
  CLI::App* command = app.add_subcommand(
      "export", "Write the documents of XML files back as XML, as the schema check gets them");
  AddProgramOption(*command, options->program);
  command->add_option("--document", options->document, "only this document of each file (from 1)")
      ->check(CLI::PositiveNumber);
  command->add_option("XML", options->files, "XML files")->required();
  command->callback([options, &chosen] {
    chosen = [options](CommandContext& context) { return Export(*options, context); };
  });
}

}  // namespace customsconv::cli
