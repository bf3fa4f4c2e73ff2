#include <gtest/gtest.h>

#include <map>
#include <string>

#include "base/code_pages.h"
#include "base/iconv_witness.h"
#include "support/text.h"

namespace customsconv {
namespace {

using Bytes = std::map<unsigned, unsigned>;

const Bytes kOwnWinOfDos = {
    {0x0F, 0xA4}, {0x14, 0xB6}, {0x15, 0xA7}, {0xB0, 0x2D}, {0xB1, 0x2D}, {0xB2, 0x2D},
    {0xB3, 0xA6}, {0xB4, 0x2B}, {0xB5, 0xA6}, {0xB6, 0xA6}, {0xB7, 0xAC}, {0xB8, 0xAC},
    {0xB9, 0xA6}, {0xBA, 0xA6}, {0xBB, 0xAC}, {0xBC, 0x2D}, {0xBD, 0x2D}, {0xBE, 0x2D},
    {0xBF, 0xAC}, {0xC0, 0x4C}, {0xC1, 0x2B}, {0xC2, 0x54}, {0xC3, 0x2B}, {0xC4, 0x2D},
    {0xC5, 0x2B}, {0xC6, 0xA6}, {0xC7, 0xA6}, {0xC8, 0x4C}, {0xC9, 0xE3}, {0xCA, 0xA6},
    {0xCB, 0x54}, {0xCC, 0xA6}, {0xCD, 0x3D}, {0xCE, 0x2B}, {0xCF, 0xA6}, {0xD0, 0xA6},
    {0xD1, 0x54}, {0xD2, 0x54}, {0xD3, 0x4C}, {0xD4, 0x4C}, {0xD5, 0x2D}, {0xD6, 0xE3},
    {0xD7, 0x2B}, {0xD8, 0x2B}, {0xD9, 0x2D}, {0xDA, 0x2D}, {0xDB, 0x2D}, {0xDC, 0x2D},
    {0xDD, 0xA6}, {0xDE, 0xA6}, {0xDF, 0x2D}, {0xF9, 0x95}, {0xFB, 0x76}, {0xFE, 0xA6},
};

const Bytes kOwnDosOfWin = {
    {0x80, 0x3F}, {0x81, 0x3F}, {0x82, 0x27}, {0x83, 0x3F}, {0x84, 0x22}, {0x85, 0x3A},
    {0x86, 0xC5}, {0x87, 0xD8}, {0x88, 0x3F}, {0x89, 0x25}, {0x8A, 0x3F}, {0x8B, 0x3C},
    {0x8C, 0x3F}, {0x8D, 0x3F}, {0x8E, 0x3F}, {0x8F, 0x3F}, {0x90, 0x3F}, {0x91, 0x27},
    {0x92, 0x27}, {0x93, 0x22}, {0x94, 0x22}, {0x95, 0x07}, {0x96, 0x2D}, {0x97, 0x2D},
    {0x98, 0x3F}, {0x99, 0x54}, {0x9A, 0x3F}, {0x9B, 0x3E}, {0x9C, 0x3F}, {0x9D, 0x3F},
    {0x9E, 0x3F}, {0x9F, 0x3F}, {0xA0, 0xFF}, {0xA1, 0xF6}, {0xA2, 0xF7}, {0xA3, 0x3F},
    {0xA4, 0xFD}, {0xA5, 0x3F}, {0xA6, 0xB3}, {0xA7, 0x15}, {0xA8, 0xF0}, {0xA9, 0x63},
    {0xAA, 0xF2}, {0xAB, 0x3C}, {0xAC, 0xBF}, {0xAD, 0x2D}, {0xAE, 0x52}, {0xAF, 0xF4},
    {0xB0, 0xF8}, {0xB1, 0x2B}, {0xB2, 0x3F}, {0xB3, 0x3F}, {0xB4, 0x3F}, {0xB5, 0xE7},
    {0xB6, 0x14}, {0xB7, 0xFA}, {0xB8, 0xF1}, {0xB9, 0xFC}, {0xBA, 0xF3}, {0xBB, 0x3E},
    {0xBC, 0x3F}, {0xBD, 0x3F}, {0xBE, 0x3F}, {0xBF, 0xF5},
};

std::string Byte(unsigned value) { return std::string(1, static_cast<char>(value)); }

// The standard mapping where our own list is silent.
std::string Expected(const Bytes& own, const char* from, const char* to, unsigned byte) {
  const auto found = own.find(byte);
  return found != own.end() ? Byte(found->second) : Iconv(from, to, Byte(byte)).value();
}

TEST(DosCodePage, MapsEveryByteByOwnListOrStandard) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    SCOPED_TRACE(byte);
    EXPECT_EQ(WinFromDos(Byte(byte)), Expected(kOwnWinOfDos, "CP866", "CP1251", byte));
    EXPECT_EQ(DosFromWin(Byte(byte)), Expected(kOwnDosOfWin, "CP1251", "CP866", byte));
  }
}

TEST(DosCodePage, AllFormsGiveTheSameBytes) {
  std::string all;
  for (unsigned byte = 0; byte < 256; ++byte) all += Byte(byte);
  std::string win = all;
  WinFromDosInPlace(win);
  std::string dos = all;
  DosFromWinInPlace(dos);
  EXPECT_EQ(win, WinFromDos(all));
  EXPECT_EQ(dos, DosFromWin(all));
  EXPECT_EQ(WinFromDosShort(all), std::string_view(win).substr(0, 255));
  EXPECT_EQ(DosFromWinShort(all), std::string_view(dos).substr(0, 255));
  EXPECT_EQ(WinFromDos('\xFC'), '\xB9');
  EXPECT_EQ(DosFromWin('\x93'), '"');
}

TEST(DetectCodePage, GuessesFromNameMarkOrLetters) {
  const std::string late(248, ' ');
  const struct {
    const char* what;
    std::string text;
    CodePage expected;
  } cases[] = {
      {"name in any case", "<?xml version=\"1.0\" encoding=\"utf-8\"?>", CodePage::kUtf8},
      {"name ends with byte 255", late + "\"UTF-8\"", CodePage::kUtf8},
      {"name ends with byte 256", " " + late + "\"UTF-8\"", CodePage::kWindows},
      {"name in apostrophes", "encoding='UTF-8'", CodePage::kWindows},
      {"two bytes of the mark", "\xEF\xBB\x80\x80\x80\x80", CodePage::kUtf8},
      {"mark not at the start", " \xEF\xBB\xBF", CodePage::kWindows},
      {"nothing", "", CodePage::kWindows},
      {"plain ASCII", "plain", CodePage::kWindows},
      {"four DOS letters", "\x80\x81\x82\xAF", CodePage::kDos},
      {"three DOS letters", "\x80\x81\x82", CodePage::kWindows},
      {"letters that count for neither", "\xB0\xCE\xE0\xF1\xB0\xCE\xE0\xF1", CodePage::kWindows},
      {"Windows first", "\xCF\xDF\xF2\xFF\x80\x80\x80\x80", CodePage::kWindows},
      {"DOS first", "\xCF\xDF\xF2\x80\x80\x80\x80\xFF", CodePage::kDos},
  };
  for (const auto& c : cases) EXPECT_EQ(DetectCodePage(c.text), c.expected) << c.what;
}

TEST(ToWindows, ConvertsByCodePageAndDetectsTheUnknown) {
  const struct {
    const char* what;
    std::string text;
    CodePage code_page;
    std::string expected;
  } cases[] = {
      {"DOS", "\x8C\xA8\xE0", CodePage::kDos, "Мир"},
      {"DOS detected", "\x8C\x88\x90\x9B", CodePage::kUnknown, "МИРЫ"},
      {"Windows as it stands", Win("Мир"), CodePage::kWindows, "Мир"},
      {"UTF-8", "Мир", CodePage::kUtf8, "Мир"},
      {"UTF-8 detected by its mark", "\xEF\xBB\xBFМир", CodePage::kUnknown, "Мир"},
      {"malformed UTF-8", "Мир\xD0", CodePage::kUtf8, ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Utf8(ToWindows(c.text, c.code_page)), c.expected) << c.what;
  }
  EXPECT_EQ(ToWindows("\x81\x82", static_cast<CodePage>(9)), "\x81\x82") << "an unknown number";
}

}  // namespace
}  // namespace customsconv
