#include "xml/write/element_lines.h"

#include <algorithm>
#include <utility>

#include "base/unicode.h"
#include "text/blanks.h"

namespace customsconv {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
// Stands in the start tag of an element that stays when it is empty.
constexpr std::string_view kMark = " P=1";

// `line` holds the start tag of the element, marked or not.
bool HoldsStartTag(std::string_view line, std::string_view name) {
  for (std::size_t at = line.find('<'); at != line.npos; at = line.find('<', at + 1)) {
    std::string_view behind = line.substr(at + 1);
    if (!behind.starts_with(name)) continue;
    behind.remove_prefix(name.size());
    if (behind.starts_with(kMark)) behind.remove_prefix(kMark.size());
    if (behind.starts_with('>')) return true;
  }
  return false;
}

bool IsStartTag(std::string_view text, std::string_view name) {
  return text.size() == name.size() + 2 && text.front() == '<' && text.back() == '>' &&
         text.substr(1, name.size()) == name;
}

// Offset of the first mark at or behind `from`. "=" is rarer in the text than
// what stands in front of it.
std::size_t FindMark(std::string_view text, std::size_t from) {
  constexpr std::size_t kEquals = 2;
  for (std::size_t at = text.find("=1", from + kEquals); at != text.npos;
       at = text.find("=1", at + 1)) {
    if (text.compare(at - kEquals, kMark.size(), kMark) == 0) return at - kEquals;
  }
  return text.npos;
}

void DeleteMarks(std::string& text) {
  std::size_t mark = FindMark(text, 0);
  if (mark == text.npos) return;
  std::size_t end = mark;
  while (mark != text.npos) {
    const std::size_t from = mark + kMark.size();
    mark = FindMark(text, from);
    const std::size_t stretch = std::min(mark, text.size()) - from;
    std::copy_n(text.begin() + static_cast<std::ptrdiff_t>(from), stretch,
                text.begin() + static_cast<std::ptrdiff_t>(end));
    end += stretch;
  }
  text.resize(end);
}

// Every line end, CR LF or one of the two alone, as CR LF.
std::string WithEqualLineEnds(std::string_view text) {
  std::string result;
  result.reserve(text.size() + text.size() / 16);
  std::size_t cr = text.find('\r');
  std::size_t lf = text.find('\n');
  for (std::size_t from = 0; from < text.size();) {
    const std::size_t end = std::min({cr, lf, text.size()});
    result.append(text.substr(from, end - from));
    if (end == text.size()) break;
    result.append(kLineEnd);
    from = end + (text.substr(end, kLineEnd.size()) == kLineEnd ? kLineEnd.size() : 1);
    if (cr < from) cr = text.find('\r', from);
    if (lf < from) lf = text.find('\n', from);
  }
  return result;
}

}  // namespace

void ElementLines::StartLine(std::size_t depth) {
  if (!text_.empty()) text_.append(kLineEnd);
  last_line_ = text_.size();
  text_.append(indent_ + 2 * depth, ' ');
}

void ElementLines::AddLine(std::string_view line) {
  StartLine(0);
  text_.append(line);
}

void ElementLines::Open(std::string_view name, bool marked) {
  open_.push_back({name, marked});
  if (marked) WriteStartTags();
}

void ElementLines::WriteStartTags() {
  for (; written_ < open_.size(); ++written_) {
    Element& element = open_[written_];
    element.line_before = last_line_;
    StartLine(written_);
    text_.append("<").append(element.name);
    if (element.marked) text_.append(kMark);
    text_.append(">");
  }
}

void ElementLines::Close() {
  const auto [name, marked, line_before] = open_.back();
  open_.pop_back();
  if (written_ <= open_.size()) return;  // its start tag was never written
  written_ = open_.size();
  const std::string_view last = std::string_view(text_).substr(last_line_);
  if (HoldsStartTag(last, name)) {
    if (IsStartTag(Trim(last), name)) {
      text_.resize(last_line_ - kLineEnd.size());
      last_line_ = line_before;
      return;
    }
  } else {
    StartLine(open_.size());
  }
  text_.append("</").append(name).append(">");
}

void ElementLines::AppendValueText(std::string_view text) {
  unsigned char bits = 0;
  bool has_breaks = false;
  for (const char c : text) {
    bits |= static_cast<unsigned char>(c);
    has_breaks |= c == '\r' || c == '\n';
  }
  has_breaks_inside_ |= has_breaks;
  if (utf8_ && bits >= 0x80) {
    AppendUtf8FromWin(text_, text);
  } else {
    text_.append(text);
  }
}

void ElementLines::AddValue(std::string_view name, std::string_view attribute,
                            std::string_view value) {
  WriteStartTags();
  StartLine(open_.size());
  text_.append("<").append(name).append(attribute).append(">");
  AppendValueText(value);
  text_.append("</").append(name).append(">");
}

void ElementLines::AddToLastLine(std::string_view value) {
  WriteStartTags();
  AppendValueText(value);
}

std::string ElementLines::TakeText() {
  text_.append(kLineEnd);
  DeleteMarks(text_);
  return has_breaks_inside_ ? WithEqualLineEnds(text_) : std::move(text_);
}

}  // namespace customsconv
