#include "xml/write/document_writer.h"

#include <string_view>
#include <utility>

#include "config/settings.h"
#include "text/blanks.h"
#include "text/text_split.h"
#include "text/words.h"
#include "xml/write/element_lines.h"
#include "xml/write/value_format.h"

namespace customsconv {
namespace {

constexpr std::string_view kSignatureField = "SDS_SIGNATURE#SDS_SIGNATURE_ITEM";
constexpr std::string_view kTextOfEnclosing = "NodeText";
constexpr std::string_view kLineEnd = "\r\n";

// The form of one document.
struct Form {
  explicit Form(const TDocument& document)
      : info(document.DocInfo()),
        rowset(document.RootBasis().IndexOfName(kSignatureField) >= 0),
        prefix(info.GetHeaderValue("Prefix")),
        utf8(!prefix.empty() && info.GetHeaderValue("XmlCoding") != "Win-1251") {}

  const TDocInfo& info;
  bool rowset;
  std::string_view prefix;  // the root element's start tag
  bool utf8;
};

void WriteHead(const Form& form, ElementLines& lines) {
  const std::string_view encoding = form.utf8 ? "UTF-8" : "windows-1251";
  lines.AddLine("<?xml version=\"1.0\" encoding=\"" + std::string(encoding) + "\"?>");
  if (form.rowset) {
    lines.AddLine("<ROWSET>");
    lines.AddLine(" <ROW xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" doctype=\"" +
                  form.info.XmlType + "\">");
  } else if (!form.prefix.empty()) {
    lines.AddLine(form.prefix);
  }
  lines.SetIndent(form.rowset ? 4 : 2);
}

std::string Tail(const Form& form) {
  if (form.rowset) return "  </ROW>\r\n</ROWSET>\r\n";
  if (form.prefix.empty()) return {};
  return "</" + std::string(ExtractWord(1, form.prefix, " <>")) + ">\r\n";
}

// Trimming and reducing runs of blanks would change the value.
bool HasNeedlessBlanks(std::string_view value) {
  return !value.empty() && (IsBlank(value.front()) || IsBlank(value.back()) ||
                            value.find("  ") != std::string_view::npos);
}

}  // namespace

// Writes the records of one document, without recursion over their levels.
class DocumentWriter::Export {
 public:
  Export(DocumentWriter& writer, const Environment& environment, bool utf8, ElementLines& lines)
      : writer_(writer),
        utf8_(utf8),
        lines_(lines),
        formatter_(environment.ThisYear()),
        collapse_blanks_(environment.config == nullptr ||
                         settings::CollapsePatternBlanks(*environment.config)) {}

  void Write(const TDocFieldList& root) {
    Enter(root, {});
    while (!levels_.empty()) {
      Level& level = levels_.back();
      if (level.records != nullptr && level.next_record <= level.records->Count()) {
        Enter(level.records->Record(level.next_record++), level.block);
      } else if (!WriteFields(level)) {
        while (lines_.Depth() > level.outside) lines_.Close();
        levels_.pop_back();
      }
    }
  }

 private:
  struct Level {
    const FieldPlan* plan;
    const TDocFieldList* record;
    std::size_t outside;  // elements that are open around the record
    std::size_t next_step = 0;
    // The block whose records are being written.
    const RecordList* records = nullptr;
    int next_record = 1;
    std::string_view block;
  };

  void Enter(const TDocFieldList& record, std::string_view element) {
    Level level;
    level.plan = &writer_.PlanOf(record.Basis(), utf8_);
    level.record = &record;
    level.outside = lines_.Depth();
    levels_.push_back(level);
    if (!element.empty()) lines_.Open(element, false);
  }

  // Up to the next block that has records; false at the record's end.
  bool WriteFields(Level& level) {
    while (level.next_step < level.plan->steps.size()) {
      const FieldStep& step = level.plan->steps[level.next_step++];
      Move(*level.plan, step);
      const bool has_slot = step.position < level.record->Count();
      if (!step.field->is_block) {
        if (has_slot) WriteValue(step, level.record->Text(step.position));
      } else if (has_slot) {
        level.records = level.record->Records(step.position);
        level.next_record = 1;
        level.block = step.rest;
        if (level.records != nullptr) return true;
      }
    }
    return false;
  }

  void Move(const FieldPlan& plan, const FieldStep& step) {
    for (std::size_t i = 0; i < step.closes; ++i) lines_.Close();
    for (std::size_t i = 0; i < step.opens; ++i) {
      lines_.Open(plan.entered[step.first_open + i], step.field->prnt != 0);
    }
  }

  void WriteValue(const FieldStep& step, std::string_view raw) {
    if (raw.empty()) return;
    std::string_view value = formatter_.Format(*step.field, raw);
    // The pattern is asked last: it seldom matters.
    if (step.pattern != nullptr && collapse_blanks_ && HasNeedlessBlanks(value) &&
        !step.pattern->FoundIn(raw)) {
      collapsed_ = CollapseBlanks(Trim(value));
      value = collapsed_;
    }
    if (step.field->seq == 0) {
      WritePiece(step, value);
      return;
    }
    while (!value.empty()) {
      const SplitText split = SplitFirstLine(value, true, step.piece_width);
      WritePiece(step, split.head);
      value = split.tail;
    }
  }

  void WritePiece(const FieldStep& step, std::string_view piece) {
    if (piece.empty()) return;
    if (step.element == kTextOfEnclosing) {
      lines_.AddToLastLine(piece);
    } else {
      lines_.AddValue(step.element, step.attribute, piece);
    }
  }

  DocumentWriter& writer_;
  bool utf8_;
  ElementLines& lines_;
  ValueFormatter formatter_;
  bool collapse_blanks_;
  std::string collapsed_;
  std::vector<Level> levels_;
};

const FieldPlan& DocumentWriter::PlanOf(const TBasis& basis, bool utf8) {
  std::unique_ptr<FieldPlan>& plan = plans_[&basis];
  if (plan == nullptr) plan = std::make_unique<FieldPlan>(basis, utf8, patterns_);
  return *plan;
}

std::string DocumentWriter::Text(const TDocument& document) {
  const Form form(document);
  ElementLines lines(form.utf8);
  WriteHead(form, lines);
  Export(*this, document.environment(), form.utf8, lines).Write(document.RootRecord());
  return lines.TakeText() + Tail(form);
}

std::vector<std::string> ExportXml(const TDocument* document) {
  std::vector<std::string> lines;
  if (document == nullptr) return lines;
  const std::string text = DocumentWriter().Text(*document);
  for (std::size_t from = 0; from < text.size();) {
    const std::size_t end = text.find(kLineEnd, from);
    lines.push_back(text.substr(from, end - from));
    from = end + kLineEnd.size();
  }
  return lines;
}

}  // namespace customsconv
