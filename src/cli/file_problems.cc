#include "cli/file_problems.h"

#include <algorithm>

#include "base/unicode.h"
#include "cli/terminal_dialogs.h"
#include "text/blanks.h"

namespace customsconv::cli {
namespace {

std::string Words(std::string_view text_1251) { return OneLine(Utf8FromWin(text_1251)); }

Text ReasonText(SkipReason reason) {
  switch (reason) {
    case SkipReason::kNotFirstDeclaration:
      return texts::kNotFirstDeclaration;
    case SkipReason::kKindNotConverted:
      return texts::kKindNotConverted;
    case SkipReason::kNoSection:
      return texts::kNoSection;
    case SkipReason::kNotFirstOfKind:
      return texts::kNotFirstOfKind;
    case SkipReason::kNoTableSet:
      return texts::kNoTableSet;
  }
  return {};
}

// A root's name goes as far as the next "<", ">" or space, so a line end may be in it.
std::string_view ProperName(const RootName& root CUSTOMSCONV_LIFETIME_BOUND) {
  const auto end = std::find_if(root.name.begin(), root.name.end(), IsBlank);
  return {root.name.begin(), end};
}

Text ReasonText(const RootName& root) {
  return ProperName(root).size() < root.name.size() ? texts::kCutRoot : texts::kUnknownRoot;
}

void AddProblems(const DocumentAccount& document, std::vector<FileProblem>& problems) {
  const std::string name = Words(document.kind) + " " + std::to_string(document.occurrence);
  if (!document.abandoned_at.empty()) {
    problems.push_back(
        {"abandoned", Say(texts::kAbandoned, {name, Utf8FromWin(document.abandoned_at)})});
  }
  if (document.is_empty && !document.skipped) {
    problems.push_back({"empty-document", Say(texts::kEmptyDocument, {name})});
  }
  if (!document.section_error.empty()) {
    problems.push_back(
        {"section-ended", Say(texts::kSectionEnded, {name, Words(document.section_error)})});
  }
  for (const MissingTable& table : document.missing_tables) {
    problems.push_back({"missing-table", Say(texts::kRowsMissing,
                                             {name, Utf8FromWin(table.file), Words(table.cause)})});
  }
}

}  // namespace

FileProblem NoDocument(const FileContent& content) {
  if (content.is_empty) return {"empty-file", Say(texts::kEmptyFile)};
  if (!content.is_xml) return {"no-xml", Say(texts::kNoXml)};
  if (content.unknown_roots.empty()) return {"no-declaration", Say(texts::kNoDeclaration)};
  std::string roots;
  for (const RootName& root : content.unknown_roots) {
    if (!roots.empty()) roots += ", ";
    roots += Words(ProperName(root));
    if (ProperName(root).size() < root.name.size()) roots += " (" + Say(texts::kCutRoot) + ")";
  }
  return {"unknown-root", Say(texts::kNoKnownDocument, {roots})};
}

std::vector<FileProblem> ProblemsOf(const FileAccount& account, std::string_view error) {
  std::vector<FileProblem> problems;
  if (!error.empty()) problems.push_back({"error", std::string(error)});
  for (const DocumentAccount& document : account.documents) AddProblems(document, problems);
  const bool nothing = account.content.was_read && !account.ConvertedAny();
  if (problems.empty() && nothing && !account.documents.empty()) {
    problems.push_back({"nothing-converted", Say(texts::kNothingConverted)});
  } else if (problems.empty() && nothing) {
    problems.push_back(NoDocument(account.content));
  }
  if (account.number_drawn && !account.ConvertedAny()) {
    problems.push_back({"number-wasted", Say(texts::kNumberWasted)});
  }
  return problems;
}

std::vector<LossCount> LossesIn(const FileAccount& account) {
  const FileLosses& losses = account.losses;
  const CellLosses& cells = losses.cells;
  return {{"cut", cells.cut + losses.lines.cut, texts::kCountCut},
          {"number_cut", cells.number_cut, texts::kCountNumberCut},
          {"rounded", cells.rounded, texts::kCountRounded},
          {"no_number", cells.no_number, texts::kCountNoNumber},
          {"no_date", cells.no_date, texts::kCountNoDate},
          {"no_column", losses.lines.no_column, texts::kCountNoColumn},
          {"replaced", static_cast<std::int64_t>(losses.replaced) + cells.replaced,
           texts::kCountReplaced},
          {"look_alike", cells.look_alike, texts::kCountLookAlike},
          {"not_known", losses.elements.unknown, texts::kCountNotKnown},
          {"repeated", losses.elements.repeated, texts::kCountRepeated},
          {"not_applied", losses.lines.sub_sections, texts::kCountNotApplied}};
}

std::vector<SkippedDocument> SkippedIn(const FileAccount& account) {
  std::vector<SkippedDocument> skipped;
  for (const DocumentAccount& document : account.documents) {
    if (!document.skipped) continue;
    skipped.push_back(
        {Words(document.kind), document.occurrence, ReasonText(*document.skipped).english});
  }
  for (const RootName& root : account.content.unknown_roots) {
    if (account.documents.empty()) break;  // that the file has no other is told apart
    skipped.push_back({Words(ProperName(root)), root.count, ReasonText(root).english});
  }
  return skipped;
}

}  // namespace customsconv::cli
