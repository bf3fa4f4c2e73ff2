#include "validation/formats/draft_text.h"

#include <utility>

#include "base/cp1251_literal.h"
#include "text/blanks.h"

namespace customsconv {
namespace {

constexpr std::size_t kNameColumn = 40;
constexpr std::size_t kFormatColumn = 8;
constexpr std::size_t kIndent = 2;

// The signs that mean something in a catalogue line stand in no caption.
std::string CleanCaption(std::string_view caption) {
  constexpr std::pair<char, char> kReplacements[] = {{'{', '('}, {'}', ')'},  {'[', '('},
                                                     {']', ')'}, {'"', '\''}, {'|', '/'}};
  std::string text(caption);
  for (const auto& [from, to] : kReplacements) text = ReplaceChar(text, from, to);
  return text;
}

void Pad(std::string& line, std::size_t column) {
  if (line.size() < column) line.append(column - line.size(), ' ');
}

}  // namespace

void DraftText::Line(std::string_view line) { text_.append(line).append("\r\n"); }

void DraftText::Comment(std::string_view text) {
  Line(std::string(depth_ * kIndent, ' ').append("; ").append(text));
}

void DraftText::Heading(std::string_view text) {
  Line(std::string(depth_ * kIndent, ' ').append("; ---- ").append(text));
}

void DraftText::Add(const DraftField& field) {
  std::string line = std::string(depth_ * kIndent, ' ') + field.name;
  Pad(line, kNameColumn);
  std::string format = field.format;
  Pad(format, kFormatColumn);
  line.append(" = ").append(format).append(" |").append(CleanCaption(field.caption));
  if (!field.pattern.empty()) line.append(" PATTERN=\"").append(field.pattern).append("\"");
  if (!field.xml_path.empty()) line.append(" NAMESPACE=\"").append(field.xml_path).append("\"");
  Line(line.append(field.attributes));
}

void DraftText::OpenBlock(std::string_view name, std::string_view caption,
                          std::string_view xml_path) {
  std::string line(depth_ * kIndent, ' ');
  line.append(name).append(" { |").append(CleanCaption(caption));
  Line(line.append(" NAMESPACE=\"").append(xml_path).append("\""));
  ++depth_;
}

void DraftText::CloseBlock() {
  --depth_;
  Line(std::string(depth_ * kIndent, ' ') + "}");
}

}  // namespace customsconv
