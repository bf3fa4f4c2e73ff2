// The forms of a source expression, from the plain name to a joined block.

#include "mapping/value_source.h"

#include "text/text_split.h"

namespace customsconv {
namespace {

constexpr int kOverflowWidth = 80;

// The description of goods that does not fit into column 31 goes on in records
// of the additional information under the goods record.
std::string SplitGoodsDescription(RecordScope& record, const std::string& description) {
  const int width = record.TargetWidth(record.Prefixed("31_1"));
  SplitText split = SplitFirstLine(description, false, width);
  const std::string_view block = record.target.MainBasis().HasBlock("DOPINF") ? "DOPINF" : "DINFO";
  std::string head = std::move(split.head);
  for (std::string_view rest = split.tail; !rest.empty(); rest = split.tail) {
    split = SplitFirstLine(rest, false, kOverflowWidth);
    const SavedPosition saved(record.target);
    record.Append(JoinShort({"\\\\", record.target.CurPath(), block}));
    record.Set("NGR", "31");
    record.Set("TYP_NGR", "01");
    record.Set(record.Prefixed("32"), record.PathWord(2));
    record.Set("TEXT1", split.head);
  }
  return head;
}

FieldValue JoinedValue(RecordScope& record, const MappingLine& line, std::string_view expression) {
  const std::size_t last = expression.rfind('\\');
  FieldValue joined = record.JoinSource(expression.substr(0, last), expression.substr(last + 1));
  const bool description = line.field == record.Prefixed("31_1").view();
  if (description) joined.text = SplitGoodsDescription(record, joined.text);
  return joined;
}

}  // namespace

std::optional<FieldValue> SourceValueOf(RecordScope& record, MappingLine& line,
                                        std::string_view expression) {
  TDocument& source = record.source;
  const TBasis& level = source.CurBasis();
  // Only an expression without a marker in front is the same for every record.
  const int position = expression == line.expression ? line.source_field.In(level, expression)
                                                     : level.IndexOfName(expression);
  if (position >= 0) {
    return level.Item(position).is_block ? record.JoinSource(expression)
                                         : source.ReadFieldByNum(position);
  }
  if (!Contains(expression, "\\")) return std::nullopt;
  if (expression.starts_with("\\\\")) return source.ReadFieldEx(expression);
  if (WordCount(expression, kPathSeparator) % 2 == 1) {
    return source.ReadFieldEx(JoinShort({".\\", expression}));
  }
  return JoinedValue(record, line, expression);
}

}  // namespace customsconv
