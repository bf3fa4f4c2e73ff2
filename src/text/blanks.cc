#include "text/blanks.h"

#include <algorithm>

#include "base/short_text.h"

namespace customsconv {

std::string_view TrimBlanks(std::string_view text) { return Trim(CutToShort(text)); }
std::string_view TrimBlanksLeft(std::string_view text) { return TrimLeft(CutToShort(text)); }
std::string_view TrimBlanksRight(std::string_view text) { return TrimRight(CutToShort(text)); }

std::string PadRight(std::string_view text, char fill, std::size_t length) {
  std::string result(text);
  length = std::min(length, ShortText::kMaxSize);
  if (result.size() < length) result.resize(length, fill);
  return result;
}

std::string PadLeft(std::string_view text, char fill, std::size_t length) {
  text = CutToShort(text);
  length = std::min(length, ShortText::kMaxSize);
  std::string result(length > text.size() ? length - text.size() : 0, fill);
  return result.append(text);
}

std::string PadRightBlanks(std::string_view text, std::size_t length) {
  return PadRight(text, ' ', length);
}

std::string PadLeftBlanks(std::string_view text, std::size_t length) {
  return PadLeft(text, ' ', length);
}

// Blanks are the byte 32 here, and every byte up to 32 in the functions that trim.
std::string CollapseBlanks(std::string_view text) {
  std::string result(text);
  const auto end = std::unique(result.begin(), result.end(),
                               [](char a, char b) { return a == ' ' && b == ' '; });
  result.erase(end, result.end());
  return result;
}

std::string StripControls(std::string_view text, bool trim_end) {
  std::string result;
  result.reserve(text.size());
  for (const char c : text) {
    if (c == '\r') {
      result += ' ';
    } else if (static_cast<unsigned char>(c) >= 32) {
      result += c;
    }
  }
  if (trim_end) result.resize(TrimRight(result).size());
  return result;
}

std::string ReplaceChar(std::string_view text, char from, char to) {
  std::string result(text);
  std::replace(result.begin(), result.end(), from, to);
  return result;
}

std::string RemoveChar(std::string_view text, char c) {
  std::string result(text);
  result.erase(std::remove(result.begin(), result.end(), c), result.end());
  return result;
}

std::string_view DropTail(std::string_view text, std::size_t count) {
  return text.substr(0, text.size() - std::min(count, text.size()));
}

std::string_view IfEmpty(std::string_view text, std::string_view default_text) {
  return text.empty() ? default_text : text;
}

}  // namespace customsconv
