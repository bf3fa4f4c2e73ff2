// What was found, as sentences and as JSON.

#include "cli/verify_tables.h"

#include <optional>
#include <string_view>
#include <vector>

#include "base/unicode.h"
#include "cli/arguments.h"
#include "dbf/dbf_cache.h"
#include "entry/start_up.h"
#include "tables/rows/set_check.h"

namespace customsconv::cli {
namespace {

std::string_view NameOf(SetFinding::Kind kind) {
  switch (kind) {
    case SetFinding::Kind::kUnreadable: return "unreadable";
    case SetFinding::Kind::kNoEndMark: return "no-end-mark";
    case SetFinding::Kind::kNoParent: return "no-parent";
    case SetFinding::Kind::kTwice: return "twice";
    case SetFinding::Kind::kJournal: return "kept-journal";
  }
  return {};
}

std::string Counted(std::int64_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// The finding as a sentence, UTF-8.
std::string Told(const SetFinding& finding) {
  const std::string detail = Utf8FromWin(finding.detail);
  const auto rows = [&finding](const std::string& which) {
    return Counted(finding.rows, "row") + which + "; the first is row " + std::to_string(finding.first);
  };
  switch (finding.kind) {
    case SetFinding::Kind::kUnreadable: return "cannot be read: " + detail;
    case SetFinding::Kind::kNoEndMark: return "no end mark behind the rows";
    case SetFinding::Kind::kNoParent: return rows(" that belong to no row of " + detail);
    case SetFinding::Kind::kTwice: return rows(" with the " + detail + " of an earlier row");
    case SetFinding::Kind::kJournal: return "a save was interrupted here and could not be undone";
  }
  return {};
}

// Where the folder cannot be locked nobody can save from here either; a broken save is an error.
std::optional<SaveLock> KeepSavesOut(TDbfCache& cache, const ShortText& folder) {
  try {
    return cache.LockToRead(folder);
  } catch (const FileError&) {
    cache.UndoBrokenSave(folder);
    return std::nullopt;
  }
}

void PrintText(const SetCheck& check, bool with_links, Output& output) {
  std::int64_t rows = 0;
  for (const SetCheck::Table& table : check.tables) rows += table.rows;
  for (const SetFinding& finding : check.findings) {
    output.Result(Utf8FromWin(finding.table) + ": " + Told(finding) + "\n");
  }
  const auto found = static_cast<std::int64_t>(check.findings.size());
  output.Result(Counted(static_cast<std::int64_t>(check.tables.size()), "table") + ", " +
                Counted(rows, "row") + ": " +
                (found == 0 ? "nothing found" : Counted(found, "finding")) +
                (with_links ? "" : " (form alone; which rows belong together: --program)") + "\n");
}

void PrintJson(const SetCheck& check, const ShortText& folder, CommandContext& context) {
  JsonWriter json(context.output);
  json.BeginObject();
  json.Key("folder").WinText(folder);
  json.Key("tables").BeginArray();
  for (const SetCheck::Table& table : check.tables) {
    json.BeginObject();
    json.Key("table").WinText(table.name);
    json.Key("rows").Number(table.rows);
    json.EndObject();
  }
  json.EndArray();
  json.Key("findings").BeginArray();
  for (const SetFinding& finding : check.findings) {
    json.BeginObject();
    json.Key("name").Text(NameOf(finding.kind));
    json.Key("table").WinText(finding.table);
    if (finding.rows > 0) {
      json.Key("rows").Number(finding.rows);
      json.Key("first").Number(finding.first);
    }
    json.Key("text").Text(Told(finding));
    json.EndObject();
  }
  json.EndArray();
  FinishJson(json, context.dialogs);
}

}  // namespace

ExitStatus VerifyTables(const std::string& program, const std::string& folder_name,
                        CommandContext& context) {
  const ShortText folder = FolderArgument(folder_name);
  if (!context.host.files.FolderExists(folder)) {
    throw UsageError("no such folder: " + folder_name);
  }
  const std::vector<std::string> tables = context.host.files.Find(folder, "*.DBF");
  if (tables.empty()) throw UsageError("no tables in " + folder_name);
  SetLevels levels;
  if (!program.empty()) {
    StartUpState state(context.host);
    if (!StartProgram(program, state, context)) {
      FinishFailure(context, Utf8FromWin(state.quiet_failure()));
      return ExitStatus::kError;
    }
    levels = LevelsOfTables(state.types(), tables, state.environment());
  }
  TDbfCache cache(context.host);
  const std::optional<SaveLock> lock = KeepSavesOut(cache, folder);
  const SetCheck check = CheckSet(context.host, folder.str(), levels);
  if (context.json) {
    PrintJson(check, folder, context);
  } else {
    PrintText(check, !program.empty(), context.output);
  }
  return check.findings.empty() ? ExitStatus::kDone : ExitStatus::kNegative;
}

}  // namespace customsconv::cli
