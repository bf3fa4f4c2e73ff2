// The actions of `tables`: each looks at its arguments, works, and prints lines or one JSON object.

#include "cli/tables_command.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <vector>

#include "base/error.h"
#include "base/letter_case.h"
#include "base/unicode.h"
#include "cli/arguments.h"
#include "cli/table_description.h"
#include "cli/table_view.h"
#include "cli/texts.h"
#include "cli/verify_tables.h"
#include "dbf/dbf_cache.h"
#include "dbf/dbf_file.h"
#include "dbf/transaction.h"
#include "services/exchange_lock.h"
#include "text/numbers.h"

namespace customsconv::cli {
namespace {

struct TablesOptions {
  std::vector<std::string> files;
  bool csv = false;
  bool filled = false;
  std::string rows;  // "10-20", "10-", "10"
  std::string description;
  std::string folder;
  std::string program;
  std::vector<std::string> only;  // names of tables; empty for all
};

RowRange ParseRows(const std::string& text) {
  if (text.empty()) return {};
  const std::size_t dash = text.find('-');
  RowRange range;
  range.first = IntOr(text.substr(0, dash), 0);
  if (dash == std::string::npos) {
    range.last = range.first;
  } else if (dash + 1 < text.size()) {
    range.last = IntOr(text.substr(dash + 1), 0);
  }
  if (range.first < 1 || range.last < range.first) {
    throw UsageError(Say(texts::kRowsOption, {text}));
  }
  return range;
}

// Runs `show` for each table with its name; a table that cannot be opened ends the command.
template <typename Show>
void ForEachTable(const std::vector<std::string>& files, TDbfCache& tables, const Show& show) {
  for (const std::string& file : files) {
    TFileDbfFile table(tables);
    table.Open(FileArgument(file), kModeRead | kShareDenyNone, OnError::kThrow);
    show(table, file);
  }
}

void ShowTable(TFileDbfFile& table, const std::string& name, const TablesOptions& options,
               RowRange rows, Output& output) {
  if (options.filled) return ShowFilled(table, name, rows, output);
  if (options.files.size() > 1) output.Result(Say(texts::kPartOf, {name}) + "\n");
  if (options.csv) {
    ShowCsv(table, rows, output);
  } else {
    ShowAligned(table, rows, output);
  }
}

// Shows each table as text or in a JSON result, which keeps the tables before one that cannot
// be opened.
template <typename AsText, typename AsJson>
ExitStatus ShowEach(const TablesOptions& options, CommandContext& context, const AsText& as_text,
                    const AsJson& as_json) {
  TDbfCache tables(context.host);
  (void)FileArguments(options.files);  // wrong ones are told before anything is shown
  if (!context.json) {
    ForEachTable(options.files, tables, as_text);
    return ExitStatus::kDone;
  }
  JsonWriter json(context.output);
  json.BeginObject();
  json.Key("tables").BeginArray();
  std::string failure;
  try {
    ForEachTable(options.files, tables,
                 [&](TFileDbfFile& table, const std::string& name) { as_json(table, name, json); });
  } catch (const Error& error) {
    failure = ToldBy(error);
    TellError(context, failure);
  }
  json.EndArray();
  FinishJson(json, context.dialogs, failure);
  return failure.empty() ? ExitStatus::kDone : ExitStatus::kError;
}

ExitStatus ListTables(const TablesOptions& options, CommandContext& context) {
  return ShowEach(
      options, context,
      [&](const TFileDbfFile& table, const std::string& name) {
        ListTable(table, name, context.output);
      },
      [](const TFileDbfFile& table, const std::string& name, JsonWriter& json) {
        ListJson(table, name, json);
      });
}

ExitStatus ShowTables(const TablesOptions& options, CommandContext& context) {
  const RowRange rows = ParseRows(options.rows);
  return ShowEach(
      options, context,
      [&](TFileDbfFile& table, const std::string& name) {
        ShowTable(table, name, options, rows, context.output);
      },
      [&](TFileDbfFile& table, const std::string& name, JsonWriter& json) {
        ShowJson(table, name, rows, json);
      });
}

bool IsWanted(const DescribedTable& table, const std::vector<std::string>& only) {
  if (only.empty()) return true;
  for (const std::string& name : only) {
    const std::string wanted = WinArgument(name);
    if (SameTextRu(table.name, wanted) || SameTextRu(table.name, wanted + ".DBF")) return true;
  }
  return false;
}

// Everything is looked at before the first table is made; what exists stays.
std::vector<DescribedTable> TablesToCreate(const TablesOptions& options, const ShortText& folder,
                                           const Files& files) {
  std::vector<DescribedTable> wanted;
  const std::string text = files.Read(FileArgument(options.description));
  for (DescribedTable& table : ReadTableDescription(text, options.description)) {
    if (!IsWanted(table, options.only)) continue;
    if (files.Exists(folder.str() + table.name)) {
      throw UsageError("table exists already: " + Utf8FromWin(folder.str() + table.name));
    }
    wanted.push_back(std::move(table));
  }
  if (wanted.empty()) throw UsageError("no such table in " + options.description);
  return wanted;
}

ExitStatus CreateTables(const TablesOptions& options, CommandContext& context) {
  const ShortText folder = FolderArgument(options.folder);
  if (!context.host.files.FolderExists(folder)) {
    throw UsageError(Say(texts::kNoSuchFolder, {options.folder}));
  }
  TDbfCache tables(context.host);
  const auto wanted = TablesToCreate(options, folder, context.host.files);
  for (const DescribedTable& described : wanted) {
    TFileDbfFile table(tables);
    TDescrs fields = described.fields;
    const std::string name = folder.str() + described.name;
    if (table.CreateTable(fields, name) != DbfStatus::kOk) {
      throw DbfError("DBF: " + name);
    }
    if (!context.json) context.output.Result(Utf8FromWin(name) + "\n");
  }
  if (context.json) {
    JsonWriter json(context.output);
    json.BeginObject();
    json.Key("created").BeginArray();
    for (const DescribedTable& described : wanted) json.WinText(folder.str() + described.name);
    json.EndArray();
    FinishJson(json, context.dialogs);
  }
  return ExitStatus::kDone;
}

void RecoveryJson(const Recovery& recovery, const ShortText& folder, JsonWriter& json) {
  using enum Recovery::Outcome;
  json.Key("folder").WinText(folder);
  json.Key("outcome").Text(recovery.outcome == kNone     ? "nothing to do"
                           : recovery.outcome == kUndone ? "undone"
                                                         : "changed by another program");
  if (recovery.outcome == kNone) return;
  json.Key("begun").WinText(recovery.moment);
  json.Key("save").WinText(recovery.note);
  if (recovery.outcome == kUndone) return;
  json.Key("table").WinText(recovery.table);
  json.Key("journal").WinText(recovery.kept_as);
}

void KeptJson(const std::vector<KeptJournal>& kept, JsonWriter& json) {
  json.Key("kept").BeginArray();
  for (const KeptJournal& journal : kept) {
    json.BeginObject();
    json.Key("journal").WinText(journal.name);
    json.Key("begun").WinText(journal.moment);
    json.Key("save").WinText(journal.note);
    json.EndObject();
  }
  json.EndArray();
}

// Who may not write in a folder has nothing to do there as long as no journal stands in it.
Recovery RecoverFolder(const std::string& folder, Host& host) {
  try {
    const SaveLock lock(host, folder);
    return Recover(host, folder);
  } catch (const SilentAbort&) {
    throw WaitingGivenUp(folder);
  } catch (const FileError& failure) {
    const bool refused = failure.kind() == FileError::Kind::kCreate;
    if (refused && !HasJournal(host.files, folder)) return {};
    throw;
  }
}

// Undoes the save that a dead process left; waits for a living one.
ExitStatus RecoverTables(const TablesOptions& options, CommandContext& context) {
  const ShortText folder = FolderArgument(options.folder);
  if (!context.host.files.FolderExists(folder)) {
    throw UsageError(Say(texts::kNoSuchFolder, {options.folder}));
  }
  Recovery recovery;
  std::string failure;
  try {
    recovery = RecoverFolder(folder.str(), context.host);
  } catch (const Error& error) {
    failure = ToldBy(error);
  }
  if (recovery.outcome == Recovery::Outcome::kForeign) {
    failure = Utf8FromWin(Told(recovery, folder));
  }
  const std::vector<KeptJournal> kept = KeptJournals(context.host, folder.str());
  for (const KeptJournal& journal : kept) {
    if (journal.name == recovery.kept_as) continue;
    if (!failure.empty()) TellError(context, failure);
    failure = Utf8FromWin(Told(journal, folder));
  }
  if (!failure.empty()) TellError(context, failure);
  if (context.json) {
    JsonWriter json(context.output);
    json.BeginObject();
    if (failure.empty() || !recovery.moment.empty()) RecoveryJson(recovery, folder, json);
    if (!kept.empty()) KeptJson(kept, json);
    FinishJson(json, context.dialogs, failure);
  } else if (failure.empty()) {
    const std::string told = Told(recovery, folder);
    context.output.Result((told.empty() ? "nothing to do" : Utf8FromWin(told)) + "\n");
  }
  return failure.empty() ? ExitStatus::kDone : ExitStatus::kError;
}

ExitStatus Verify(const TablesOptions& options, CommandContext& context) {
  return VerifyTables(options.program, options.folder, context);
}

// Makes `run` what is chosen when the arguments name `action`; its errors are told.
using Run = ExitStatus (*)(const TablesOptions& options, CommandContext& context);
void RunAsChosen(CLI::App& action, Command& chosen,
                 const std::shared_ptr<const TablesOptions>& options, Run run) {
  action.callback([&chosen, options, run] {
    chosen = [options, run](CommandContext& context) {
      try {
        return run(*options, context);
      } catch (const Error& error) {
        TellError(context, ToldBy(error));
        FinishFailure(context, ToldBy(error));
        return ExitStatus::kError;
      }
    };
  });
}

}  // namespace

void AddTablesCommand(CLI::App& app, Command& chosen) {
  const auto options = std::make_shared<TablesOptions>();
  CLI::App* command =
      app.add_subcommand("tables", "List, show, create, verify and recover dBase tables");
  command->require_subcommand(1);

  CLI::App* list = command->add_subcommand("list", "Row count and fields of tables");
  list->add_option("TABLE", options->files, "table files")->required();
  RunAsChosen(*list, chosen, options, ListTables);

  CLI::App* show = command->add_subcommand("show", "Rows of tables");
  show->add_option("TABLE", options->files, "table files")->required();
  RunAsChosen(*show, chosen, options, ShowTables);
  CLI::Option* csv = show->add_flag("--csv", options->csv, "comma-separated values");
  show->add_flag("--filled", options->filled, "only what is filled of each row")->excludes(csv);
  show->add_option("--rows", options->rows, "only these records: N, N- or N-M");

  CLI::App* create = command->add_subcommand("create", "Make empty tables from a description");
  create
      ->add_option("--description", options->description,
                   "text file, one field a line: TABLE FIELD TYPE WIDTH [DECIMALS]")
      ->required();
  create->add_option("--output", options->folder, "folder for the tables")->required();
  create->add_option("TABLE", options->only, "only these tables of the description");
  RunAsChosen(*create, chosen, options, CreateTables);

  CLI::App* verify = command->add_subcommand("verify", "Look for what is wrong with a table set");
  verify->add_option("--program", options->program,
                     "program folder, whose catalogue says which rows belong together");
  verify->add_option("FOLDER", options->folder, "folder of the tables")->required();
  RunAsChosen(*verify, chosen, options, Verify);

  CLI::App* recover = command->add_subcommand("recover", "Undo a save that was interrupted");
  recover->add_option("FOLDER", options->folder, "folder of the tables")->required();
  RunAsChosen(*recover, chosen, options, RecoverTables);
}

}  // namespace customsconv::cli
