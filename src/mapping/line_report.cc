// Judges a line by what the target holds after it, so that the account needs nothing of how a
// value was stored.

#include "mapping/line_report.h"

#include <algorithm>
#include <string>

#include "base/short_text.h"
#include "tables/row_width.h"

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
  if (written) {
    Held(line_.field, value, value.size());
  } else {
    Tell({.value = value, .outcome = LineOutcome::kEmpty}, line_.field);
  }
}

void LineReporter::Stored(std::string_view value, std::size_t source_size, StoredIn where) const {
  Held(FieldName(line_, where), value, source_size);
}

void LineReporter::Held(std::string_view field, std::string_view value,
                        std::size_t source_size) const {
  if (observer_ == nullptr) return;
  const TBasis& level = record_.target.CurBasis();
  const int position = level.IndexOfName(field);
  if (position < 0) {
    Tell({.value = value, .outcome = LineOutcome::kNoSuchField}, field);
    return;
  }
  if (record_.IsKeyOfParent(position)) {
    Tell({.value = value, .outcome = LineOutcome::kKeyOfParent}, field);
    return;
  }
  const TFieldInfo& target = level.Item(position);
  const std::string held = record_.target.GetField(field);
  const std::size_t needed = WidthInRow(target, held, record_.run.environment.ThisYear());
  LineReport report{.value = held};
  report.length = source_size > ShortText::kMaxSize ? source_size : needed;
  report.width = std::min<std::size_t>(target.table_width, ShortText::kMaxSize);
  if (needed == 0) {
    report.outcome = LineOutcome::kEmpty;
  } else if (report.length > report.width) {
    report.outcome = LineOutcome::kCut;
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
