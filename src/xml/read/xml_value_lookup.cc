#include "xml/read/xml_value_lookup.h"

#include "base/code_pages.h"
#include "base/letter_case.h"
#include "text/blanks.h"
#include "text/date_forms.h"
#include "text/dates.h"
#include "text/words.h"

namespace customsconv {

namespace {

constexpr std::size_t kNowhere = std::string_view::npos;

// First place of `pattern` from `from` on, without regard to letter case. The pattern's
// first character is no letter.
std::size_t Find(std::string_view text, const std::string& pattern, std::size_t from = 0) {
  std::size_t at = text.find(pattern.front(), from);
  while (at != kNowhere && !StartsWithRu(text.substr(at), pattern)) {
    at = text.find(pattern.front(), at + 1);
  }
  return at;
}

// Registers write dates with the year in front.
std::string LocalDateOrder(std::string_view value) {
  const std::string_view date = Trim(value);
  const bool year_first = date.size() == 10 && IsDateSeparator(date[4]) && IsDateSeparator(date[7]);
  return year_first ? DottedFromYearFirst(date) : std::string(value);
}

// Value of the element of that name, with or without a namespace prefix, somewhere inside the
// element that `text` is.
std::string LeafValue(std::string_view text, const std::string& name) {
  const std::string tag = "<" + name + ">";
  std::size_t found = Find(text, tag);
  if (found == 0) found = Find(text, tag, 1);
  if (found == kNowhere) found = Find(text, ":" + name + ">");
  if (found == kNowhere) return {};
  const std::size_t start = found + tag.size();
  const std::size_t end = text.find("</", start);
  if (end == kNowhere) return {};
  return LocalDateOrder(text.substr(start, end - start));
}

// `tag` ("<HEAD") at the front of `text` is the whole name of an element that has no
// attributes, or a namespace declaration first.
bool IsWholeTag(std::string_view text, const std::string& tag) {
  if (text.size() > tag.size() && text[tag.size()] == '>') return true;
  return text.size() > tag.size() && StartsWithRu(text.substr(tag.size() + 1), "XMLNS");
}

// Goes one part of the path down a call.
std::string ValueAt(std::string_view text, std::string_view path) {
  const std::size_t separator = path.find('\\');
  const bool has_head = separator != kNowhere;
  const std::string_view head = has_head ? Trim(path.substr(0, separator)) : std::string_view();
  const std::string_view rest = Trim(has_head ? path.substr(separator + 1) : path);
  if (rest.empty()) return {};
  if (head.empty()) return LeafValue(text, std::string(rest));
  const std::string tag = "<" + std::string(head);
  const std::string end_tag = "</" + std::string(head) + ">";
  std::string value;
  while (value.empty()) {
    const std::size_t start = Find(text, tag);
    // An element whose name only begins with the head ends the search.
    if (start == kNowhere || !IsWholeTag(text.substr(start), tag)) break;
    text.remove_prefix(start);
    const std::size_t end = Find(text, end_tag);
    if (end == kNowhere) return ValueAt(text, rest);
    value = ValueAt(text.substr(0, end + end_tag.size()), rest);
    text.remove_prefix(end + end_tag.size());
  }
  return value;
}

}  // namespace

std::string GetXmlValue(std::string_view text, std::string_view path) {
  const std::string value = UpperCaseRu(ValueAt(text, path));
  // A text that was converted before is decoded here once more. What is asked for, numbers and
  // dates, is ASCII, which decoding leaves alone.
  if (value.empty() || !ContainsNoCase(text, "UTF-8")) return value;
  return ToWindows(value, CodePage::kUtf8);
}

}  // namespace customsconv
