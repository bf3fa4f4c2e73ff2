#include "cli/catalogue_command.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <vector>

#include "base/error.h"
#include "base/unicode.h"
#include "cli/arguments.h"
#include "cli/catalogue_draft.h"
#include "dbf/dbf_cache.h"
#include "entry/start_up.h"
#include "tables/table_levels.h"

namespace customsconv::cli {
namespace {

struct CatalogueOptions {
  std::string program;
  std::string code;    // empty for the list of all types
  std::string tables;  // folder whose tables give a table-set type its fields
};

// One level of a type's field tree on its way to the output.
struct OpenLevel {
  const TBasis* basis;
  int position = 0;
};

// The letter of a field's type, in code page 1251.
std::string TypeLetter(const TFieldInfo& field) { return {static_cast<char>(field.type)}; }

std::string TypeAndWidth(const TFieldInfo& field) {
  std::string type = field.type == FieldType::kText ? "-" : Utf8FromWin(TypeLetter(field));
  type += " " + std::to_string(field.width);
  if (field.decimals > 0) type += "." + std::to_string(field.decimals);
  if (field.lines > 1) type += " x" + std::to_string(field.lines);
  return type;
}

class CatalogueView {
 public:
  CatalogueView(CommandContext& context, StartUpState& state)
      : context_(context), state_(state), json_(context.output) {}

  void List() {
    if (context_.json) BeginJson("types");
    for (int i = 0; i < state_.types().Count(); ++i) ShowType(state_.types().Item(i));
    if (context_.json) EndJson();
  }

  void Show(const CatalogueOptions& options) {
    TDocInfo& type = state_.types().GetDocInfo(WinArgument(options.code));
    TDbfCache tables(context_.host);
    if (type.HasDbfName && !options.tables.empty()) {
      LoadFromDbf(type, FolderArgument(options.tables), tables, state_.environment());
    }
    const TBasis& basis = type.GetBasis(state_.environment());
    if (context_.json) {
      BeginJson("fields");
      ShowFields(basis);
      EndJson();
    } else {
      ShowType(type);
      ShowFields(basis);
    }
  }

 private:
  void BeginJson(std::string_view member) {
    json_.BeginObject();
    json_.Key(member).BeginArray();
  }

  void EndJson() {
    json_.EndArray();
    FinishJson(json_, context_.dialogs);
  }

  void ShowType(const TDocInfo& type) {
    if (!context_.json) {
      context_.output.Result(Utf8FromWin(type.Code) + "  " + Utf8FromWin(type.ShortName) + "  " +
                             (type.HasDbfName ? Utf8FromWin(type.DbfName) + "  " : "") +
                             Utf8FromWin(type.FileName) + "\n");
      return;
    }
    json_.BeginObject();
    json_.Key("code").WinText(type.Code);
    json_.Key("short_name").WinText(type.ShortName);
    json_.Key("full_name").WinText(type.FullName);
    json_.Key("main_block").WinText(type.MainBlock);
    json_.Key("table").WinText(type.DbfName);
    json_.Key("root").WinText(type.XmlDocName());
    json_.Key("file").WinText(type.FileName);
    json_.EndObject();
  }

  // The level and all below it, without recursion.
  void ShowFields(const TBasis& root) {
    std::vector<OpenLevel> open{{&root}};
    while (!open.empty()) {
      OpenLevel& level = open.back();
      if (level.position == level.basis->Count()) {
        open.pop_back();
        if (context_.json && !open.empty()) {
          json_.EndArray();
          json_.EndObject();
        }
        continue;
      }
      const TFieldInfo& field = level.basis->Item(level.position++);
      ShowField(field, open.size());
      if (field.is_block && field.block != nullptr) open.push_back({field.block.get()});
    }
  }

  void ShowField(const TFieldInfo& field, std::size_t depth) {
    if (!context_.json) {
      std::string line(depth * 2, ' ');
      line += Utf8FromWin(field.name) + "  " + (field.is_block ? "block" : TypeAndWidth(field));
      if (!field.xml_path.empty()) line += "  <" + Utf8FromWin(field.xml_path) + ">";
      if (!field.caption.empty()) line += "  " + Utf8FromWin(field.caption);
      context_.output.Result(line + "\n");
      return;
    }
    json_.BeginObject();
    json_.Key("name").WinText(field.name);
    json_.Key("caption").WinText(field.caption);
    json_.Key("xml_path").WinText(field.xml_path);
    if (field.is_block && field.block != nullptr) {
      json_.Key("block").BeginArray();
      return;  // closed behind the block's own fields
    }
    json_.Key("type").WinText(TypeLetter(field));
    json_.Key("width").Number(field.width);
    json_.Key("lines").Number(field.lines);
    json_.Key("decimals").Number(field.decimals);
    json_.EndObject();
  }

  CommandContext& context_;
  StartUpState& state_;
  JsonWriter json_;
};

ExitStatus ShowCatalogue(const CatalogueOptions& options, CommandContext& context) {
  try {
    StartUpState state(context.host);
    if (!StartProgram(options.program, state, context)) {
      FinishFailure(context, Utf8FromWin(state.quiet_failure()));
      return ExitStatus::kNegative;
    }
    CatalogueView view(context, state);
    if (options.code.empty()) {
      view.List();
    } else {
      view.Show(options);
    }
    return ExitStatus::kDone;
  } catch (const Error& error) {
    return FinishWithError(context, error);
  }
}

}  // namespace

void AddCatalogueCommand(CLI::App& app, Command& chosen) {
  const auto options = std::make_shared<CatalogueOptions>();
  CLI::App* command = app.add_subcommand("catalogue", "Show the catalogue of document types");
  command->require_subcommand(1);
  CLI::App* list = command->add_subcommand("list", "The types, their tables and files");
  CLI::App* show = command->add_subcommand("show", "The fields of one type");
  for (CLI::App* action : {list, show}) {
    AddProgramOption(*action, options->program);
    action->callback([options, &chosen] {
      chosen = [options](CommandContext& context) { return ShowCatalogue(*options, context); };
    });
  }
  show->add_option("--tables", options->tables,
                   "folder of the tables, for a type that is a table set");
  show->add_option("CODE", options->code, "code of the type")->required();
  AddDraftAction(*command, chosen);
}

}  // namespace customsconv::cli
