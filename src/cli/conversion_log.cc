// The words and the layout of what "customsconv convert" prints.

#include "cli/conversion_log.h"

#include <algorithm>
#include <span>
#include <utility>

#include "base/unicode.h"
#include "cli/file_problems.h"
#include "cli/texts.h"

namespace customsconv::cli {
namespace {

// Records between two looks at the progress line.
constexpr std::size_t kProgressStep = 1000;
// Bytes of a text whose documents are read quickly.
constexpr std::size_t kShortText = 2'000'000;

std::string_view OutcomeText(LineOutcome outcome) {
  switch (outcome) {
    case LineOutcome::kWritten:
      return texts::kWritten.english;
    case LineOutcome::kEmpty:
      return texts::kEmpty.english;
    case LineOutcome::kNoSuchField:
      return texts::kNoSuchField.english;
    case LineOutcome::kNoSuchSource:
      return texts::kNoSuchSource.english;
    case LineOutcome::kCut:
      return texts::kCut.english;
    case LineOutcome::kKeyOfParent:
      return texts::kKeyOfParent.english;
    case LineOutcome::kSkipped:
      return texts::kNotAsked.english;
  }
  return {};
}

// The documents that are not lost.
std::span<const DocumentAccount> KeptOf(const FileLog& log CUSTOMSCONV_LIFETIME_BOUND) {
  const std::span documents(log.account.documents);
  return log.lost ? documents.first(log.safe) : documents;
}

// What is not safe was not written after all; false when there is no such document.
bool Lose(FileLog& log) {
  const auto& documents = log.account.documents;
  const auto at = [&](std::size_t i) { return documents.begin() + static_cast<std::ptrdiff_t>(i); };
  log.lost = std::any_of(at(log.safe), at(log.done), [](const DocumentAccount& document) {
    return document.IsConverted();
  });
  return log.lost;
}

// Rows by table file, in the order of the names.
RowCounts RowsOf(const FileLog& log) {
  RowCounts rows;
  for (const DocumentAccount& document : KeptOf(log)) {
    for (const auto& [table, count] : document.rows_added) rows[table] += count;
  }
  return rows;
}

std::vector<const DocumentAccount*> ConvertedIn(const FileLog& log) {
  std::vector<const DocumentAccount*> converted;
  for (const DocumentAccount& document : KeptOf(log)) {
    if (document.IsConverted()) converted.push_back(&document);
  }
  return converted;
}

std::vector<FileProblem> AllProblems(const FileLog& log) {
  std::vector<FileProblem> problems = ProblemsOf(log.account, log.error);
  if (!log.problem.empty()) problems.push_back({"losses", log.problem});
  return problems;
}

}  // namespace

ConversionLog::ConversionLog(CommandContext& context, std::string rules_file, bool explain,
                             bool strict, std::size_t files)
    : context_(context),
      json_(context.output),
      rules_file_(std::move(rules_file)),
      explain_(explain),
      strict_(strict),
      files_(files) {
  if (!context_.json) return;
  json_.BeginObject();
  json_.Key("files").BeginArray();
}

FileAccount& ConversionLog::BeginFile(const std::string& file) {
  log_ = {};
  log_.file = file;
  log_.account.observer = this;
  ++file_number_;
  records_ = 0;
  if (files_ > 1) ShowProgress();
  in_file_ = true;
  if (context_.json && explain_) {
    OpenJson(log_);
    json_.Key("explain").BeginArray();
  }
  return log_.account;
}

bool ConversionLog::EndFile(std::optional<bool> returned, std::string_view error) {
  const bool not_started = returned == false && error.empty();
  log_.returned = returned;
  log_.error = not_started ? Say(texts::kNoCatalogue) : OneLine(error);
  in_file_ = false;
  WarnOf(log_.account.foreign_files, context_);
  bool is_whole = log_.error.empty() && log_.account.IsWhole();
  if (is_whole && strict_ && log_.account.HasLosses()) {
    log_.problem = Say(texts::kStrict);
    is_whole = false;
  }
  waiting_.push_back(std::exchange(log_, {}));
  return is_whole;
}

bool ConversionLog::Release(std::string_view error) {
  context_.dialogs.ClearProgressLine();
  if (error.empty()) log_.safe = log_.done;
  for (FileLog& file : waiting_) {
    if (!error.empty() && Lose(file)) file.error = OneLine(error);
    if (!context_.json) {
      WriteText(file);
      continue;
    }
    explain_ ? json_.EndArray() : OpenJson(file);
    WriteJson(file);
  }
  waiting_.clear();
  json_.Flush();
  context_.output.Flush();
  return Lose(log_);
}

void ConversionLog::Interrupt() {
  const std::string cause = Say(texts::kInterrupted);
  const bool half_printed = context_.json && explain_ && (in_file_ || !waiting_.empty());
  if (in_file_) waiting_.push_back(log_);
  std::erase_if(waiting_, [&](FileLog& file) {
    file.lost = true;
    file.error = cause;
    return !half_printed && ConvertedIn(file).empty();
  });
  Release();
  Finish(false, cause);
}

void ConversionLog::Finish(bool result, std::string_view error_1251) {
  if (!context_.json) return;
  json_.EndArray();
  json_.Key("result").Bool(result);
  FinishJson(json_, context_.dialogs, error_1251);
}

void ConversionLog::TextRead(std::size_t bytes) {
  is_long_ = bytes > kShortText;
  if (is_long_) context_.pauses.before_long();
}

void ConversionLog::DocumentDone() {
  log_.done = log_.account.documents.size();
  context_.pauses.Reach();
  if (is_long_) context_.pauses.before_long();
}

// Nothing of the document is in the tables before it is saved, so a run may end here.
void ConversionLog::Record(std::string_view) {
  context_.pauses.Reach();
  if (++records_ % kProgressStep == 0) ShowProgress();
}

void ConversionLog::Line(const LineReport& report) {
  if (context_.json) {
    ExplainJson(report);
  } else {
    ExplainText(report);
  }
}

void ConversionLog::ShowProgress() {
  context_.dialogs.ShowProgressLine(Say(
      texts::kProgress,
      {std::to_string(file_number_), std::to_string(files_), log_.file, std::to_string(records_)}));
}

void ConversionLog::WriteText(const FileLog& log) {
  std::string line = log.file + ": ";
  line += log.account.number.empty() ? "-" : Utf8FromWin(log.account.number);
  const auto converted = ConvertedIn(log);
  line += "; " + Say(converted.empty() ? texts::kConvertedNothing : texts::kConverted);
  for (const DocumentAccount* document : converted) {
    line += " " + Utf8FromWin(document->kind) + " " + std::to_string(document->occurrence);
  }
  for (const SkippedDocument& document : SkippedIn(log.account)) {
    const std::string name = document.kind + " " + std::to_string(document.occurrence);
    line += "; " + Say(texts::kSkipped, {name, document.reason});
  }
  const RowCounts rows = RowsOf(log);
  line += "; " + Say(rows.empty() ? texts::kRowsNone : texts::kRows);
  for (const auto& [table, count] : rows) {
    line += " " + Utf8FromWin(table) + " +" + std::to_string(count);
  }
  for (const LossCount& loss : LossesIn(log.account)) {
    if (loss.count > 0) line += "; " + Say(loss.text, {std::to_string(loss.count)});
  }
  std::string problems;
  for (const FileProblem& problem : AllProblems(log)) {
    problems += (problems.empty() ? "" : "; ") + problem.text;
  }
  if (!problems.empty()) line += "; " + Say(texts::kFailed, {problems});
  context_.output.Result(line + "\n");
}

void ConversionLog::OpenJson(const FileLog& log) {
  json_.BeginObject();
  json_.Key("file").Text(log.file);
}

void ConversionLog::WriteJson(const FileLog& log) {
  json_.Key("number").WinText(log.account.number);
  json_.Key("number_drawn").Bool(log.account.number_drawn);
  json_.Key("converted").BeginArray();
  for (const DocumentAccount* document : ConvertedIn(log)) {
    json_.BeginObject();
    json_.Key("kind").WinText(document->kind);
    json_.Key("occurrence").Number(document->occurrence);
    json_.Key("section_line").Number(document->section + 1);
    json_.Key("table").WinText(document->table);
    json_.EndObject();
  }
  json_.EndArray();
  json_.Key("skipped").BeginArray();
  for (const SkippedDocument& document : SkippedIn(log.account)) {
    json_.BeginObject();
    json_.Key("kind").Text(document.kind);
    json_.Key("occurrence").Number(document.occurrence);
    json_.Key("reason").Text(document.reason);
    json_.EndObject();
  }
  json_.EndArray();
  json_.Key("rows_added").BeginObject();
  for (const auto& [table, rows] : RowsOf(log)) json_.Key(Utf8FromWin(table)).Number(rows);
  json_.EndObject();
  json_.Key("losses").BeginObject();
  for (const LossCount& loss : LossesIn(log.account)) json_.Key(loss.name).Number(loss.count);
  json_.EndObject();
  json_.Key("problems").BeginArray();
  for (const FileProblem& problem : AllProblems(log)) {
    json_.BeginObject();
    json_.Key("name").Text(problem.name);
    json_.Key("text").Text(problem.text);
    json_.EndObject();
  }
  json_.EndArray();
  if (log.returned) json_.Key("returned").Bool(*log.returned);
  if (!log.error.empty()) json_.Key("error").Text(log.error);
  json_.EndObject();
}

// "armti.txt:12: ESADoutGoods\1 G33 = TNVED: '0101' -> DBRTOV.DBF.G33 written"
void ConversionLog::ExplainText(const LineReport& report) {
  std::string line = rules_file_ + ":" + std::to_string(report.rule_line + 1) + ": ";
  line += report.source_path.empty() ? "\\" : Utf8FromWin(report.source_path);
  line += " " + Utf8FromWin(report.target_field) + " = " + Utf8FromWin(report.expression) + ": '";
  line += Utf8FromWin(report.value) + "' -> " + Utf8FromWin(report.target_table) + "." +
          Utf8FromWin(report.target_field) + " ";
  line += OutcomeText(report.outcome);
  if (report.outcome == LineOutcome::kCut) {
    line += Say(texts::kFromTo, {std::to_string(report.length), std::to_string(report.width)});
  }
  context_.dialogs.ClearProgressLine();
  context_.output.Result(line + "\n");
}

void ConversionLog::ExplainJson(const LineReport& report) {
  json_.BeginObject();
  json_.Key("line").Number(report.rule_line + 1);
  json_.Key("source_path").WinText(report.source_path);
  json_.Key("expression").WinText(report.expression);
  json_.Key("value").WinText(report.value);
  json_.Key("table").WinText(report.target_table);
  json_.Key("field").WinText(report.target_field);
  json_.Key("outcome").Text(OutcomeText(report.outcome));
  if (report.outcome == LineOutcome::kCut) {
    json_.Key("cut_from").Number(static_cast<std::int64_t>(report.length));
    json_.Key("cut_to").Number(static_cast<std::int64_t>(report.width));
  }
  json_.EndObject();
}

}  // namespace customsconv::cli
