#include "base/dos_code_page.h"

#include <array>
#include <cstddef>

namespace customsconv {
namespace {

using ByteTable = std::array<unsigned char, 256>;

// Characters of the DOS bytes 0xB0 to 0xDF: frames and shades as look-alikes.
constexpr std::array<unsigned char, 48> kFramesOfDos = {
    0x2D, 0x2D, 0x2D, 0xA6, 0x2B, 0xA6, 0xA6, 0xAC, 0xAC, 0xA6, 0xA6, 0xAC, 0x2D, 0x2D, 0x2D, 0xAC,
    0x4C, 0x2B, 0x54, 0x2B, 0x2D, 0x2B, 0xA6, 0xA6, 0x4C, 0xE3, 0xA6, 0x54, 0xA6, 0x3D, 0x2B, 0xA6,
    0xA6, 0x54, 0x54, 0x4C, 0x4C, 0x2D, 0xE3, 0x2B, 0x2B, 0x2D, 0x2D, 0x2D, 0x2D, 0xA6, 0xA6, 0x2D,
};

// Characters of the DOS bytes 0xF0 to 0xFF: Ё ё Є є Ї ї Ў ў ° • · v № ¤ ¦ and
// the no-break space ("v" for the root sign, "¦" for the black square).
constexpr std::array<unsigned char, 16> kSignsOfDos = {
    0xA8, 0xB8, 0xAA, 0xBA, 0xAF, 0xBF, 0xA1, 0xA2, 0xB0, 0x95, 0xB7, 0x76, 0xB9, 0xA4, 0xA6, 0xA0,
};

// DOS bytes of the Windows bytes 0x80 to 0xBF.
constexpr std::array<unsigned char, 64> kSignsOfWindows = {
    0x3F, 0x3F, 0x27, 0x3F, 0x22, 0x3A, 0xC5, 0xD8, 0x3F, 0x25, 0x3F, 0x3C, 0x3F, 0x3F, 0x3F, 0x3F,
    0x3F, 0x27, 0x27, 0x22, 0x22, 0x07, 0x2D, 0x2D, 0x3F, 0x54, 0x3F, 0x3E, 0x3F, 0x3F, 0x3F, 0x3F,
    0xFF, 0xF6, 0xF7, 0x3F, 0xFD, 0x3F, 0xB3, 0x15, 0xF0, 0x63, 0xF2, 0x3C, 0xBF, 0x2D, 0x52, 0xF4,
    0xF8, 0x2B, 0x3F, 0x3F, 0x3F, 0xE7, 0x14, 0xFA, 0xF1, 0xFC, 0xF3, 0x3E, 0x3F, 0x3F, 0x3F, 0xF5,
};

constexpr unsigned char WinByteOf(unsigned dos) {
  switch (dos) {  // control bytes that DOS shows as signs
    case 0x0F:
      return 0xA4;
    case 0x14:
      return 0xB6;
    case 0x15:
      return 0xA7;
    default:
      break;
  }
  if (dos < 0x80) return static_cast<unsigned char>(dos);
  if (dos < 0xB0) return static_cast<unsigned char>(dos + 0x40);  // А to п
  if (dos < 0xE0) return kFramesOfDos[dos - 0xB0];
  if (dos < 0xF0) return static_cast<unsigned char>(dos + 0x10);  // р to я
  return kSignsOfDos[dos - 0xF0];
}

constexpr unsigned char DosByteOf(unsigned win) {
  if (win < 0x80) return static_cast<unsigned char>(win);
  if (win < 0xC0) return kSignsOfWindows[win - 0x80];
  if (win < 0xF0) return static_cast<unsigned char>(win - 0x40);  // А to п
  return static_cast<unsigned char>(win - 0x10);                  // р to я
}

template <typename ByteOf>
constexpr ByteTable MakeTable(ByteOf byte_of) {
  ByteTable table{};
  for (unsigned i = 0; i < table.size(); ++i) table[i] = byte_of(i);
  return table;
}

constexpr ByteTable kWinOfDos = MakeTable(WinByteOf);
constexpr ByteTable kDosOfWin = MakeTable(DosByteOf);

char Through(const ByteTable& table, char c) {
  return static_cast<char>(table[static_cast<unsigned char>(c)]);
}

void ConvertInPlace(const ByteTable& table, std::string& text) {
  for (char& c : text) c = Through(table, c);
}

std::string Converted(const ByteTable& table, std::string_view text) {
  std::string result(text);
  ConvertInPlace(table, result);
  return result;
}

ShortText ConvertedShort(const ByteTable& table, std::string_view text) {
  return ShortText::Mapped(text, [&table](char c) { return Through(table, c); });
}

void ConvertTo(char* to, const ByteTable& table, std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) to[i] = Through(table, text[i]);
}

}  // namespace

char WinFromDos(char dos) { return Through(kWinOfDos, dos); }
std::string WinFromDos(std::string_view dos) { return Converted(kWinOfDos, dos); }
ShortText WinFromDosShort(std::string_view dos) { return ConvertedShort(kWinOfDos, dos); }
void WinFromDosInPlace(std::string& text) { ConvertInPlace(kWinOfDos, text); }

char DosFromWin(char win) { return Through(kDosOfWin, win); }
std::string DosFromWin(std::string_view win) { return Converted(kDosOfWin, win); }
ShortText DosFromWinShort(std::string_view win) { return ConvertedShort(kDosOfWin, win); }
void DosFromWinTo(char* to, std::string_view win) { ConvertTo(to, kDosOfWin, win); }
void DosFromWinInPlace(std::string& text) { ConvertInPlace(kDosOfWin, text); }

}  // namespace customsconv
