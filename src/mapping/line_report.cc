#include "mapping/line_report.h"

namespace customsconv {
namespace {

std::string_view TableOf(const TBasis& level) {
  const auto* table = dynamic_cast<const TDbfBasis*>(&level);
  return table == nullptr ? std::string_view() : table->table_file;
}

std::string_view FieldName(const MappingLine& line, StoredIn where) {
  return where == StoredIn::kBracketField ? line.field.substr(0, line.field.find('[')) : line.field;
}

}  // namespace

void LineReporter::Skipped() const { Tell({.outcome = LineOutcome::kSkipped}, line_.field); }

void LineReporter::Nothing(bool source_known) const {
  Tell({.outcome = source_known ? LineOutcome::kEmpty : LineOutcome::kNoSuchSource}, line_.field);
}

void LineReporter::GoodsLocation(std::string_view value, bool written) const {
  const bool known = record_.target.CurBasis().IndexOfName(line_.field) >= 0;
  LineOutcome outcome = LineOutcome::kEmpty;
  if (written) outcome = known ? LineOutcome::kWritten : LineOutcome::kNoSuchField;
  Tell({.value = value, .outcome = outcome}, line_.field);
}

void LineReporter::Stored(const ShortText& value, StoredIn where) const {
  if (observer_ == nullptr) return;
  const std::string_view field = FieldName(line_, where);
  const TBasis& level = record_.target.CurBasis();
  const int position = level.IndexOfName(field);
  LineReport report{.value = value};
  if (where == StoredIn::kNowhere || position < 0) {
    report.outcome = LineOutcome::kNoSuchField;
  } else {
    const std::string stored = record_.target.GetField(field);
    report.value = stored;
    report.length = stored.size();
    report.width = static_cast<std::size_t>(level.TotalWidth(position));
    const bool text = level.Item(position).type == 'C';
    if (text && report.length > report.width) report.outcome = LineOutcome::kCut;
    Tell(report, field);
    return;
  }
  Tell(report, field);
}

void LineReporter::Tell(LineReport report, std::string_view field) const {
  if (observer_ == nullptr) return;
  report.rule_line = line_.index;
  report.source_path = record_.source_path;
  report.expression = line_.expression;
  report.target_table = TableOf(record_.target.CurBasis());
  report.target_field = field;
  observer_->Line(report);
}

}  // namespace customsconv
