#include "catalogue/fields_reader.h"

#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/cp1251_literal.h"
#include "text/blanks.h"

namespace customsconv {
namespace {

constexpr std::string_view kMainBlockLine = "&&BLOCK";
constexpr std::string_view kBlockKey = "&&NUM";

bool Holds(std::string_view text, char c) { return text.find(c) != std::string_view::npos; }

// The caption that a comment line carries.
std::string CommentCaption(std::string_view line) {
  return std::string(Trim(RemoveChar(RemoveChar(line.substr(1), '='), '>')));
}

// Takes the lines of a section one by one and keeps the levels that are open. An explicit
// stack, because the file chooses how deep blocks nest.
class SectionReader {
 public:
  SectionReader(const FieldsOptions& options, Dialogs& dialogs)
      : options_(options), dialogs_(dialogs) {
    Open({});
  }

  // False when the line ends the section.
  [[nodiscard]] bool TakeLine(std::string_view line) {
    if (line.empty()) return true;
    if (line[0] == '[') return false;
    if (line[0] == '}') return CloseBlock();
    if (line[0] == ';') {
      pending_caption_ = CommentCaption(line);
    } else if (line.starts_with(kMainBlockLine) && InBlock()) {
      return CloseBlock();
    } else if (Holds(line, '{') && !Holds(line, '}')) {
      OpenBlock(line, Trim(line.substr(0, line.find('{'))));
    } else if (line.starts_with(kMainBlockLine)) {
      OpenBlock(line, options_.main_block);
    } else {
      AddField(line);
    }
    return true;
  }

  // Ends all levels that are still open.
  [[nodiscard]] std::unique_ptr<TBasis> Finish() {
    while (CloseBlock()) {
    }
    levels_.back().basis->Reindex();
    return std::move(levels_.back().basis);
  }

 private:
  struct Level {
    std::unique_ptr<TBasis> basis;
    TFieldInfo entry;  // of the level in its parent, where it goes when it is complete
    // Position of the first field of each name, filled as far as `indexed` when asked.
    std::unordered_map<std::string, int> positions;
    int indexed = 0;
  };

  [[nodiscard]] bool InBlock() const { return levels_.size() > 1; }

  void Open(TFieldInfo entry) {
    Level& level = levels_.emplace_back();
    level.basis = std::make_unique<TBasis>();
    level.entry = std::move(entry);
  }

  void OpenBlock(std::string_view line, std::string_view name) {
    TFieldInfo entry = ParseBlockLine(line);
    entry.name = NameInCase(name, options_.name_case);
    TakePendingCaption(entry);
    Open(std::move(entry));
    levels_.back().basis->key_fields = kBlockKey;
  }

  // False at the top level, which stays open.
  bool CloseBlock() {
    if (!InBlock()) return false;
    Level level = std::move(levels_.back());
    levels_.pop_back();
    level.basis->Reindex();
    levels_.back().basis->AppendBlock(std::move(level.entry), std::move(level.basis));
    return true;
  }

  void AddField(std::string_view text) {
    FieldLine line = ParseFieldLine(text, options_.name_case);
    TakePendingCaption(line.field);
    if (line.IsPart()) {
      line.field.type = FieldType::kPart;
      AddPart(line);
    } else if (line.format.empty()) {
      dialogs_.Message(std::string("Не указана длина поля "_cp1251) + line.field.name);
    } else {
      ApplyFormat(line.format, line.field);
    }
    levels_.back().basis->Append(std::move(line.field));
  }

  // Notes the part with the composite field that its name begins with. That field becomes a
  // composite by its first part.
  void AddPart(FieldLine& line) {
    TBasis& basis = *levels_.back().basis;
    const int position = PositionOf(line.field.name.substr(0, line.field.name.find('.')));
    if (position < 0) return;
    TFieldInfo& parent = basis.MutableItem(position);
    if (parent.type == FieldType::kCharacter || parent.type == FieldType::kText) {
      parent.type = FieldType::kComposite;
    }
    line.field.part = static_cast<int>(parent.sub_fields.size());
    parent.sub_fields.push_back(ParseSubField(line.format, line.field));
  }

  [[nodiscard]] int PositionOf(const std::string& name) {
    Level& level = levels_.back();
    for (; level.indexed < level.basis->Count(); ++level.indexed) {
      level.positions.emplace(level.basis->Item(level.indexed).name, level.indexed);
    }
    const auto found = level.positions.find(name);
    return found == level.positions.end() ? -1 : found->second;
  }

  void TakePendingCaption(TFieldInfo& field) {
    if (field.caption.empty()) field.caption = std::move(pending_caption_);
    pending_caption_.clear();
  }

  const FieldsOptions& options_;
  Dialogs& dialogs_;
  std::vector<Level> levels_;
  std::string pending_caption_;
};

}  // namespace

std::unique_ptr<TBasis> ReadFieldsSection(TReadStream& stream, const FieldsOptions& options,
                                          Dialogs& dialogs) {
  SectionReader reader(options, dialogs);
  std::string line;
  while (!stream.AtEnd()) {
    stream.ReadLnLong(line);
    if (!reader.TakeLine(Trim(line))) break;
  }
  return reader.Finish();
}

}  // namespace customsconv
