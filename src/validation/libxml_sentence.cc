// libxml2 hands over a finished message, such as
//
//   Element '{urn:x}n': [facet 'pattern'] The value '{urn:x}7' is not accepted by the pattern '…'.
//
// and beside it the texts that it put into the message. These tell a namespace, which is left
// out, from a value that merely looks like one.

#include "validation/libxml_sentence.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

#include "base/unicode.h"
#include "text/blanks.h"
#include "text/words.h"

namespace customsconv {
namespace {

std::string_view View(const char* text) { return text == nullptr ? std::string_view() : text; }

// A message without the pattern that it ends with.
std::string WithoutPattern(std::string_view message, std::string_view pattern) {
  const std::string tail = std::string(" '").append(pattern).append("'.\n");
  if (!message.ends_with(tail)) return std::string(message);
  message.remove_suffix(tail.size());
  return std::string(message).append(" of its type.");
}

// Where "Element 'n', attribute 'a': " ends and the message proper begins.
std::size_t EndOfPlace(std::string_view message) {
  constexpr std::string_view kEnd = "': ";
  const std::size_t end = message.find(kEnd);
  return end == std::string_view::npos ? 0 : end + kEnd.size();
}

// Behind these words stands the name of a component of the schema, elsewhere a value.
bool NameFollows(std::string_view words) {
  constexpr std::string_view kBeforeNames[] = {"attribute '",   "type '",   "definition '",
                                               "declaration '", "keyref '", " in "};
  return std::any_of(std::begin(kBeforeNames), std::end(kBeforeNames),
                     [&](std::string_view before) { return words.ends_with(before); });
}

bool BeginsName(std::string_view text) {
  return !text.empty() && (IsLetterOrDigit(text.front()) || text.front() == '_' ||
                           text.front() == '*' || static_cast<unsigned char>(text.front()) >= 0x80);
}

// Size of the namespace at the front of a text that begins with a brace: 7 for "{urn:x}n" and
// "{urn:x}*"; 0 when it is none, as in "{'a', 'b'}".
std::size_t NamespaceSize(std::string_view text) {
  const std::size_t close = text.find_first_of("}' {", 1);
  if (close == std::string_view::npos || text[close] != '}') return 0;
  return BeginsName(text.substr(close + 1)) ? close + 1 : 0;
}

// "{urn:x}n" becomes "n".
std::string WithoutNamespaces(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t skipped = text[i] == '{' ? NamespaceSize(text.substr(i)) : 0;
    if (skipped == 0) result += text[i++];
    i += skipped;
  }
  return result;
}

std::string WithoutNamespaces(std::string_view message, const xmlError& error) {
  std::size_t end = EndOfPlace(message);
  std::string result = WithoutNamespaces(message.substr(0, end));
  for (const char* text : {error.str1, error.str2, error.str3}) {
    const std::string_view put_in = View(text);
    const std::size_t start = message.find(put_in, end);
    if (put_in.empty() || start == std::string_view::npos) continue;
    const std::string_view words = message.substr(end, start - end);
    result.append(WithoutNamespaces(words));
    result.append(NameFollows(words) ? WithoutNamespaces(put_in) : std::string(put_in));
    end = start + put_in.size();
  }
  return result.append(WithoutNamespaces(message.substr(end)));
}

bool IsOfSchema(const xmlError& error) {
  return error.domain == XML_FROM_SCHEMASV || error.domain == XML_FROM_SCHEMASP;
}

}  // namespace

std::string SentenceOf(const xmlError& error) {
  std::string message(View(error.message));
  if (error.code == XML_SCHEMAV_CVC_PATTERN_VALID) {
    message = WithoutPattern(message, View(error.str2));
  }
  if (IsOfSchema(error)) message = WithoutNamespaces(message, error);
  const std::string text = WinFromUtf8(message).value_or(message);
  return std::string(TrimRight(ReplaceChar(ReplaceChar(text, '\n', ' '), '\r', ' ')));
}

}  // namespace customsconv
