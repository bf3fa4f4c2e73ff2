#include "cli/export_command.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "base/error.h"
#include "cli/arguments.h"
#include "cli/interrupt.h"
#include "entry/start_up.h"
#include "xml/read/xml_container.h"
#include "xml/write/document_writer.h"

namespace customsconv::cli {
namespace {

struct ExportOptions {
  std::string program;
  std::string file;
  int document = 0;  // from 1 in the order of the dump; 0 for all
};

// The XML exactly as it is handed to validation.
ExitStatus WriteDocuments(const ExportOptions& options, TXMLContainer& container,
                          CommandContext& context) {
  DocumentWriter writer;
  int number = 0;
  while (const std::unique_ptr<TDocument> document = container.Next()) {
    StopIfInterrupted();
    ++number;
    if (options.document == 0 || options.document == number) {
      context.output.Result(writer.Text(*document));
    }
    if (options.document == number) return ExitStatus::kDone;
  }
  if (options.document == 0) return ExitStatus::kDone;
  context.output.Remark("error: " + options.file + " holds " + std::to_string(number) +
                        " documents, there is no document " + std::to_string(options.document) +
                        "\n");
  return ExitStatus::kNegative;
}

ExitStatus Export(const ExportOptions& options, CommandContext& context) {
  try {
    StartUpState state(context.host);
    if (!StartProgram(options.program, state, context)) return ExitStatus::kNegative;
    TXMLContainer container(FileArgument(options.file), state.types(), state.environment());
    return WriteDocuments(options, container, context);
  } catch (const Error& error) {
    TellError(context, error.text());
    return ExitStatus::kError;
  }
}

}  // namespace

void AddExportCommand(CLI::App& app, Command& chosen) {
  const auto options = std::make_shared<ExportOptions>();
  CLI::App* command = app.add_subcommand(
      "export", "Write the documents of an XML file back as XML, as the schema check gets them");
  AddProgramOption(*command, options->program);
  command->add_option("--document", options->document, "only this document (from 1)")
      ->check(CLI::PositiveNumber);
  command->add_option("XML", options->file, "XML file")->required();
  command->callback([options, &chosen] {
    chosen = [options](CommandContext& context) { return Export(*options, context); };
  });
}

}  // namespace customsconv::cli
