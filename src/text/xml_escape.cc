#include "text/xml_escape.h"

#include <algorithm>

#include "text/char_set.h"

namespace customsconv {
namespace {

constexpr CharSet kHexDigitsAndDash{"0123456789ABCDEFabcdef-"};

// Control characters would make a document that no parser takes: only CR stays.
template <typename Text>
Text Escape(std::string_view text, Text result) {
  for (const char c : text) {
    if (c == '<') {
      result += std::string_view("&lt;");
    } else if (c == '>') {
      result += std::string_view("&gt;");
    } else if (c == '&') {
      result += std::string_view("&amp;");
    } else {
      result += static_cast<unsigned char>(c) < 32 && c != '\r' ? ' ' : c;
    }
  }
  return result;
}

}  // namespace

std::string XmlEscape(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  return Escape(text, std::move(result));
}

ShortText XmlEscapeShort(std::string_view text) { return Escape(CutToShort(text), ShortText()); }

bool IsGuid(std::string_view text) {
  while (text.size() >= 2 && text.front() == '{' && text.back() == '}') {
    text = text.substr(1, text.size() - 2);
  }
  return text.size() == 36 && text[8] == '-' &&
         std::all_of(text.begin(), text.end(), [](char c) { return kHexDigitsAndDash.Has(c); });
}

}  // namespace customsconv
