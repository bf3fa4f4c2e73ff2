#include "xml/read/xml_text.h"

#include <algorithm>
#include <utility>

#include "base/cp1251_literal.h"
#include "base/error.h"
#include "base/unicode.h"
#include "text/words.h"

namespace customsconv {
namespace {

// Only this much of a file is looked at for its declared encoding.
constexpr std::size_t kHeadSize = 100;

// Customs schemas use both prefixes for the namespace of XML Schema; what works on the text
// knows one.
void UnifySchemaPrefix(std::string& text) {
  constexpr std::string_view kShort = "xs:";
  constexpr std::string_view kLong = "xsd:";
  std::size_t count = 0;
  for (std::size_t found = FindInLong(text, kShort, 0); found != std::string::npos;
       found = FindInLong(text, kShort, found + kShort.size())) {
    ++count;
  }
  if (count == 0) return;
  std::string unified;
  unified.reserve(text.size() + count * (kLong.size() - kShort.size()));
  std::size_t start = 0;
  for (; count > 0; --count) {
    const std::size_t found = FindInLong(text, kShort, start);
    unified.append(text, start, found - start).append(kLong);
    start = found + kShort.size();
  }
  text = std::move(unified.append(text, start));
}

// Declarations come with blanks around "=" and with either quote.
void NormaliseHead(std::string& text) {
  const std::string_view head = std::string_view(text).substr(0, kHeadSize);
  if (head.find(" = ") == std::string_view::npos && head.find('\'') == std::string_view::npos) {
    return;
  }
  const std::size_t size = head.size();
  std::string normal = ReplaceAll(head, " = ", "=");
  std::replace(normal.begin(), normal.end(), '\'', '"');
  text.replace(0, size, normal);
}

// Brings a text to code page 1251, in its own memory where that can be. False for malformed
// UTF-8.
bool DecodeXml(std::string& text) {
  if (text.size() > 2 && text.compare(0, 2, "\xEF\xBB") == 0) {
    const std::size_t start = text.find('<', 2);
    return WinFromUtf8InPlace(text, start == std::string::npos ? 2 : start);
  }
  NormaliseHead(text);
  using std::string_view_literals::operator""sv;
  const std::string_view head = std::string_view(text).substr(0, kHeadSize);
  if (head.find("-1251\"") != std::string_view::npos) return true;
  if (head.find("\0U\0T\0F\0-\0001\0006\0\"\0"sv) != std::string_view::npos) {
    text = WinFromUtf16(std::string_view(text).substr(2));
    return true;
  }
  return WinFromUtf8InPlace(text);
}

std::size_t LineEnds(std::string_view text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

// In a text of single bytes, of UTF-8 or of UTF-16.
std::size_t QuestionMarks(std::string_view text) {
  const bool wide = text.size() > 3 && (text[1] == '\0' || text[3] == '\0');
  const auto is_mark = [text, wide](std::size_t at) {
    return !wide || (at % 2 == 0 && at + 1 < text.size() && text[at + 1] == '\0');
  };
  std::size_t count = 0;  // they are rare
  for (std::size_t at = text.find('?'); at != text.npos; at = text.find('?', at + 1)) {
    if (is_mark(at)) ++count;
  }
  return count;
}

struct Comment {
  std::size_t start = 0;
  std::size_t size = 0;  // 0: there is none
};

Comment FirstComment(std::string_view text) {
  // "!" is rare where "<" is not.
  std::size_t mark = text.find("!--", 1);
  while (mark != std::string::npos && text[mark - 1] != '<') mark = text.find("!--", mark + 1);
  if (mark == std::string::npos) return {};
  const std::size_t start = mark - 1;
  const std::size_t end = text.find("-->");
  if (end == std::string::npos || end <= start) return {};
  return {start, end + 3 - start};
}

}  // namespace

std::size_t FileLines::LineOf(std::string_view text, std::size_t position) const {
  return 1 + in_front_ + LineEnds(text.substr(0, position)) +
         (position >= comment_at_ ? in_comment_ : 0);
}

std::string XmlTextFromBytes(std::string text, std::string_view file_name, FileLines* lines) {
  if (text.empty()) return text;
  UnifySchemaPrefix(text);
  const std::size_t question_marks = lines == nullptr ? 0 : QuestionMarks(text);
  if (!DecodeXml(text) || text.empty()) {
    throw Error(std::string(file_name) + '\r' +
                std::string("Ошибка при перекодировке из UTF-8 - битый файл!"_cp1251));
  }
  const std::size_t replaced = lines == nullptr ? 0 : QuestionMarks(text) - question_marks;
  const Comment comment = FirstComment(text);
  const std::size_t in_comment =
      LineEnds(std::string_view(text).substr(comment.start, comment.size));
  text.erase(comment.start, comment.size);
  std::size_t start = text.find('<');
  if (start == std::string::npos) start = 0;
  if (lines != nullptr) {
    lines->in_front_ = LineEnds(std::string_view(text).substr(0, start));
    lines->comment_at_ = comment.start - std::min(comment.start, start);
    lines->in_comment_ = in_comment;
    lines->replaced_ = replaced;
  }
  return text.erase(0, start);
}

std::string LoadXmlText(const Files& files, std::string_view file_name, FileLines* lines) {
  return XmlTextFromBytes(files.Read(file_name), file_name, lines);
}

}  // namespace customsconv
