// The order of the steps of one record. It is part of what the tables show: later steps overwrite
// or add to what earlier ones wrote, and a line may move the target to a further record.

#include "mapping/record_mapper.h"

#include <algorithm>

#include "base/cp1251_literal.h"
#include "mapping/built_in/goods.h"
#include "mapping/built_in/header_rules.h"
#include "mapping/built_in/record_rules.h"
#include "mapping/built_in/transit.h"
#include "mapping/line_report.h"
#include "mapping/target_choice.h"
#include "mapping/value_source.h"
#include "mapping/value_store.h"
#include "text/blanks.h"

namespace customsconv {
namespace {

// "GU03_" and the two characters of the code.
constexpr std::size_t kProductMarkerSize = 7;

// A product of processing: a further record of the same block, which stays current for
// the lines that follow.
void AppendProcessingProduct(RecordScope& record, std::string_view expression) {
  record.Append(JoinShort({"\\\\", record.target_block}));
  record.Set("GU01", "9");
  const bool export_procedure = record.HeaderValue("CustomsProcedure") == "ЭК"_cp1251;
  record.Set("GU02", export_procedure ? "4" : "3");
  if (record.PathHolds("Heels")) record.Set("TYPEINFO", "3");
  if (record.PathHolds("Waste")) record.Set("TYPEINFO", "2");
  record.Set("GU03", ExtractWord(2, expression, CharSet("\\_")));
  record.Set("G32", ShortText::Cut(record.source.GetField("GoodsNumeric")));
}

// Column 30 stands in one of several places of a declaration; the first that is
// filled counts. Only codes above "0" are written.
void WriteGoodsLocation(RecordScope& record, const MappingLine& line, std::string_view path,
                        LineReporter& reporter) {
  ShortText value = ShortText::Cut(record.source.GetFieldEx(path));
  for (const std::string_view place :
       {"\\\\ESADoutGoodsLocation\\1\\", "\\\\ESADoutGoodsLocation\\2\\"}) {
    if (value.empty()) value = ShortText::Cut(record.source.GetFieldEx(JoinShort({place, path})));
  }
  const bool written = value.view() > std::string_view("0");
  if (written) record.Set(line.field, value);
  reporter.GoodsLocation(value, written);
}

// Whether a table field could hold more than the longest value.
bool HasRoomForMore(const RecordScope& record, std::string_view field) {
  const TBasis& level = record.target.CurBasis();
  const int position = level.IndexOfName(field);
  return position >= 0 && level.Item(position).table_width >= ShortText::kMaxSize;
}

// The value of a line: cut first, then cleaned, so that blanks which collapse give no room.
ShortText Cleaned(std::string_view source) {
  const ShortText value = ShortText::Cut(source);
  const auto ends_line = [](char c) { return c == '\r' || c == '\n'; };
  if (std::none_of(value.view().begin(), value.view().end(), ends_line)) return value;
  return ShortText::Cut(CollapseBlanks(ReplaceChar(ReplaceChar(value, '\r', ' '), '\n', ' ')));
}

}  // namespace

void RecordMapper::MapBlockRecord(std::string_view source_path, std::string_view target_block,
                                  int header) {
  if (documents_.run.observer != nullptr) documents_.run.observer->Record(source_path);
  RecordScope record(documents_, source_path, target_block, header);
  if (record.PathHolds("GoodsGroupDescription") &&
      WordCount(record.source_path, kPathSeparator) == 4) {
    if (!ApplyGoodsGroupRule(record)) MapNestedRecords(record, "GoodsGroupInformation");
    return;
  }
  AdjustTarget(record);
  // A component list adds to a head row that is there; it has no header of its own.
  if (record.target_block.empty() && record.kind == "GoodsComponentList") return;

  record.source.SetCurrentPath(JoinShort({"\\\\", record.source_path}));
  record.Append(record.target_block);
  if (record.IsHeader()) ApplyHeaderRules(record);
  ApplyRecordRules(record);
  ApplyLines(record);
  if (record.IsHeader()) ApplyClosingHeaderRules(record);
  ApplyTransitRecords(record);
  record.SelectSourceRoot();
  record.SelectTargetRoot();
  if (record.PathHolds("ESADoutCustomsConditions") && !record.PathHolds("Heels") &&
      !record.PathHolds("Waste")) {
    MapNestedRecords(record, "WasteProducts");
    MapNestedRecords(record, "Heels");
  }
}

void RecordMapper::MapNestedRecords(const RecordScope& record, std::string_view block) {
  const ShortText path = JoinShort({record.source_path, "\\", block});
  // A path that was cut could lead back to this record, without end.
  if (path.size() == ShortText::kMaxSize) return;
  const int records = record.source.RecordCount(JoinShort({"\\\\", path}));
  for (int m = 1; m <= records; ++m) {
    MapBlockRecord(JoinShort({path, "\\", std::to_string(m)}), record.target_block, record.header);
  }
}

void RecordMapper::ApplyLines(RecordScope& record) {
  auto [lines, added] = lines_.try_emplace(record.header);
  if (added) lines->second = MappingLinesOf(documents_.run.rules, record.header);
  for (MappingLine& line : lines->second) ApplyLine(record, line);
}

void RecordMapper::ApplyLine(RecordScope& record, MappingLine& line) {
  LineReporter reporter(record, line);
  std::string_view expression = line.expression;
  if (TakePrefix(expression, "*")) {
    if (line.field == "G011") {
      reporter.Skipped();
      return;
    }
    TakePrefix(expression, "DBRPASP_");
    TakePrefix(expression, "ReImp_");
    if (expression.starts_with("GU03_")) {
      AppendProcessingProduct(record, expression);
      expression.remove_prefix(std::min(kProductMarkerSize, expression.size()));
    }
    if (line.field.starts_with("G30")) {
      WriteGoodsLocation(record, line, expression, reporter);
      return;
    }
  }
  const std::optional<FieldValue> value = SourceValueOf(record, line, expression);
  if (!value || value->text.empty()) {
    reporter.Nothing(value.has_value());
    return;
  }
  const ShortText stored = Cleaned(value->text);
  const StoredIn where = StoreValue(record, line, stored, value->field);
  MappingLosses& losses = record.run.losses;
  if (where == StoredIn::kNowhere) {
    ++losses.no_column;
  } else if (value->text.size() > ShortText::kMaxSize && HasRoomForMore(record, line.field)) {
    ++losses.cut;  // else the table field cuts the value shorter, and that is counted
  }
  reporter.Stored(stored, value->text.size(), where);
}

}  // namespace customsconv
