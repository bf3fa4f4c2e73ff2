#include "base/code_pages.h"

#include <algorithm>

#include "base/dos_code_page.h"
#include "base/letter_case.h"
#include "base/unicode.h"

namespace customsconv {
namespace {

constexpr std::size_t kDetectionHead = 255;  // bytes searched for the encoding's name
constexpr int kEnoughLetters = 3;            // more than these decide

bool NamesUtf8(std::string_view head) {
  constexpr std::string_view kName = "\"UTF-8\"";
  return std::search(head.begin(), head.end(), kName.begin(), kName.end(),
                     [](char a, char b) { return UpperCaseLatinChar(a) == b; }) != head.end();
}

// DOS letters А to Я and а to п.
bool SpeaksForDos(unsigned char byte) { return byte >= 0x80 && byte <= 0xAF; }

// Windows letters П to Я and т to я, which DOS text uses for frames and signs.
bool SpeaksForWindows(unsigned char byte) { return (byte >= 0xCF && byte <= 0xDF) || byte >= 0xF2; }

}  // namespace

CodePage DetectCodePage(std::string_view text) {
  if (NamesUtf8(text.substr(0, kDetectionHead)) || text.starts_with("\xEF\xBB")) {
    return CodePage::kUtf8;
  }
  int dos = 0;
  int windows = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (SpeaksForDos(byte) && ++dos > kEnoughLetters) return CodePage::kDos;
    if (SpeaksForWindows(byte) && ++windows > kEnoughLetters) return CodePage::kWindows;
  }
  return CodePage::kWindows;
}

std::string ToWindows(std::string_view text, CodePage code_page) {
  if (code_page == CodePage::kUnknown) code_page = DetectCodePage(text);
  switch (code_page) {
    case CodePage::kDos:
      return WinFromDos(text);
    case CodePage::kUtf8:
      return WinFromUtf8(text).value_or(std::string());
    default:
      return std::string(text);
  }
}

}  // namespace customsconv
