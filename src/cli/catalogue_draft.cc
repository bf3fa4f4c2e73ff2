#include "cli/catalogue_draft.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "base/error.h"
#include "cli/arguments.h"
#include "validation/formats/type_draft.h"

namespace customsconv::cli {
namespace {

struct DraftArguments {
  DraftOptions draft;
  std::string schema;
  std::string output;  // empty for the standard output
};

// The text is code page 1251, as catalogue files are; in JSON it is UTF-8 like all texts there.
void Deliver(const std::string& text, const DraftArguments& arguments, CommandContext& context) {
  if (!arguments.output.empty()) {
    context.host.files.Replace(FileArgument(arguments.output), text);
  } else if (!context.json) {
    context.output.Result(text);
  }
  if (!context.json) return;
  JsonWriter json(context.output);
  json.BeginObject();
  json.Key("draft").WinText(text);
  FinishJson(json, context.dialogs);
}

ExitStatus Draft(const DraftArguments& arguments, CommandContext& context) {
  try {
    schema::SchemaSet schemas(context.host.files, FileArgument(arguments.schema));
    Deliver(DraftType(schemas, arguments.draft), arguments, context);
    return ExitStatus::kDone;
  } catch (const Error& error) {
    return FinishWithError(context, error);
  }
}

}  // namespace

void AddDraftAction(CLI::App& catalogue, Command& chosen) {
  const auto arguments = std::make_shared<DraftArguments>();
  CLI::App* draft = catalogue.add_subcommand(
      "draft", "Write a type of the catalogue from a schema (code page 1251)");
  draft->add_option("--root", arguments->draft.root,
                    "root element (default: the only one, or the one named like the file)");
  draft->add_option("--prefix", arguments->draft.prefix,
                    "namespace prefix of the root element in documents (default: none, xmlns)");
  draft->add_option("--code", arguments->draft.code, "code of the type (default: the root's name)");
  draft->add_option("--output", arguments->output, "file to write (default: standard output)");
  draft->add_option("SCHEMA", arguments->schema, "schema file (.xsd)")->required();
  draft->callback([arguments, &chosen] {
    chosen = [arguments](CommandContext& context) { return Draft(*arguments, context); };
  });
}

}  // namespace customsconv::cli
