// The words and the layout of what "customsconv convert" prints.

#include "cli/conversion_log.h"

#include "base/unicode.h"
#include "cli/interrupt.h"

namespace customsconv::cli {
namespace {

// Records between two looks at the progress line.
constexpr std::size_t kProgressStep = 1000;

std::string_view ReasonText(SkipReason reason) {
  switch (reason) {
    case SkipReason::kNotFirstDeclaration:
      return "a file's first declaration is converted only";
    case SkipReason::kKindNotConverted:
      return "documents of this kind are not converted";
    case SkipReason::kNoSection:
      return "no section of the rules names this kind";
    case SkipReason::kNotFirstOfKind:
      return "the section's table takes the first document of a kind only";
    case SkipReason::kNoTableSet:
      return "the catalogue has no table set with the section's table";
  }
  return {};
}

std::string_view OutcomeText(LineOutcome outcome) {
  switch (outcome) {
    case LineOutcome::kWritten:
      return "written";
    case LineOutcome::kEmpty:
      return "empty";
    case LineOutcome::kNoSuchField:
      return "no such field";
    case LineOutcome::kNoSuchSource:
      return "no such source";
    case LineOutcome::kCut:
      return "cut";
    case LineOutcome::kKeyOfParent:
      return "key of the parent record";
    case LineOutcome::kSkipped:
      return "skipped";
  }
  return {};
}

}  // namespace

ConversionLog::ConversionLog(CommandContext& context, std::string rules_file, bool explain,
                             std::size_t files)
    : context_(context),
      json_(context.output),
      rules_file_(std::move(rules_file)),
      explain_(explain),
      files_(files) {
  if (!context_.json) return;
  json_.BeginObject();
  json_.Key("files").BeginArray();
}

void ConversionLog::BeginFile(const std::string& file) {
  log_ = {};
  log_.file = file;
  ++file_number_;
  records_ = 0;
  if (files_ > 1) ShowProgress();
  in_file_ = true;
  if (!context_.json || !explain_) return;
  OpenJson(log_);
  json_.Key("explain").BeginArray();
}

void ConversionLog::EndFile(std::string_view error) {
  log_.error = OneLine(Utf8FromWin(error));
  in_file_ = false;
  waiting_.push_back(std::move(log_));
}

void ConversionLog::Release(std::string_view error) {
  context_.dialogs.ClearProgressLine();
  for (FileLog& file : waiting_) {
    if (!error.empty() && !file.converted.empty()) {
      file.converted.clear();
      file.rows_added.clear();
      file.error = OneLine(Utf8FromWin(error));
    }
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
}

void ConversionLog::Interrupt() {
  constexpr std::string_view kCause = "interrupted";
  const bool half_printed = context_.json && explain_ && (in_file_ || !waiting_.empty());
  if (half_printed && in_file_) waiting_ = {log_};
  if (!half_printed) waiting_.clear();
  for (FileLog& file : waiting_) {
    file.converted.clear();
    file.rows_added.clear();
    file.error = kCause;
  }
  Release();
  Finish(false, kCause);
}

void ConversionLog::Finish(bool result, std::string_view error_1251) {
  if (!context_.json) return;
  json_.EndArray();
  json_.Key("result").Bool(result);
  FinishJson(json_, context_.dialogs, error_1251);
}

void ConversionLog::RegistrationNumber(std::string_view number) {
  log_.number = Utf8FromWin(number);
}

void ConversionLog::Skipped(const DocumentReport& document, SkipReason reason) {
  StopIfInterrupted();
  log_.skipped.push_back(
      {Utf8FromWin(document.kind), document.occurrence, std::string(ReasonText(reason))});
}

void ConversionLog::Converted(const DocumentReport& document) {
  log_.converted.push_back({Utf8FromWin(document.kind), document.occurrence, document.section + 1,
                            Utf8FromWin(document.table)});
  for (const auto& [table, rows] : document.rows_added) {
    log_.rows_added[Utf8FromWin(table)] += rows;
  }
  StopIfInterrupted();
}

// Nothing of the document is in the tables before it is saved, so a run may end here.
void ConversionLog::Record(std::string_view) {
  StopIfInterrupted();
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
  context_.dialogs.ShowProgressLine(std::to_string(file_number_) + "/" + std::to_string(files_) +
                                    " " + log_.file + ": " + std::to_string(records_) + " records");
}

void ConversionLog::WriteText(const FileLog& log) {
  std::string line = log.file + ": " + (log.number.empty() ? "-" : log.number);
  line += "; converted:";
  if (log.converted.empty()) line += " nothing";
  for (const FileLog::Converted& document : log.converted) {
    line += " " + document.kind + " " + std::to_string(document.occurrence);
  }
  for (const FileLog::Skipped& document : log.skipped) {
    line += "; skipped: " + document.kind + " " + std::to_string(document.occurrence) + " (" +
            document.reason + ")";
  }
  line += "; rows:";
  for (const auto& [table, rows] : log.rows_added) {
    line += " " + table + " +" + std::to_string(rows);
  }
  if (log.rows_added.empty()) line += " none";
  if (!log.error.empty()) line += "; failed: " + log.error;
  context_.output.Result(line + "\n");
}

void ConversionLog::OpenJson(const FileLog& log) {
  json_.BeginObject();
  json_.Key("file").Text(log.file);
}

void ConversionLog::WriteJson(const FileLog& log) {
  json_.Key("number").Text(log.number);
  json_.Key("converted").BeginArray();
  for (const FileLog::Converted& document : log.converted) {
    json_.BeginObject();
    json_.Key("kind").Text(document.kind);
    json_.Key("occurrence").Number(document.occurrence);
    json_.Key("section_line").Number(document.section_line);
    json_.Key("table").Text(document.table);
    json_.EndObject();
  }
  json_.EndArray();
  json_.Key("skipped").BeginArray();
  for (const FileLog::Skipped& document : log.skipped) {
    json_.BeginObject();
    json_.Key("kind").Text(document.kind);
    json_.Key("occurrence").Number(document.occurrence);
    json_.Key("reason").Text(document.reason);
    json_.EndObject();
  }
  json_.EndArray();
  json_.Key("rows_added").BeginObject();
  for (const auto& [table, rows] : log.rows_added) json_.Key(table).Number(rows);
  json_.EndObject();
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
    line += " from " + std::to_string(report.length) + " to " + std::to_string(report.width);
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
