#include <gtest/gtest.h>

#include <map>
#include <string>

#include "base/code_pages.h"
#include "base/cp1251_literal.h"
#include "base/dos_code_page.h"
#include "base/dos_unicode.h"
#include "base/iconv_witness.h"
#include "support/text.h"

namespace customsconv {
namespace {

std::string AllBytes() {
  std::string all;
  for (unsigned byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  return all;
}

// What all bytes become: our own characters from the given bytes on, else the standard mapping.
std::string Expected(const char* from, const char* to,
                     const std::map<std::size_t, const char*>& own) {
  std::string expected;
  for (const char byte : AllBytes()) expected += Iconv(from, to, {&byte, 1}).value_or("?");
  for (const auto& [first, characters] : own) {
    const std::string bytes = Iconv("UTF-8", to, characters).value();
    expected.replace(first, bytes.size(), bytes);
  }
  return expected;
}

TEST(Cp1251Literal, HoldsTheBytesThatTheConversionGives) {
  constexpr std::string_view kText =
      "Яя Ёё № «» § ° – — · ¤ ЄєЇїЎў \xC2\xA0 “”‘’„‚…•†‡‰€™ ©®±¶µ¬¦ ЂѓЉЊЌЋЏљњќћџЈјҐґЅѕІі abc~"_cp1251;
  EXPECT_EQ(kText, Win("Яя Ёё № «» § ° – — · ¤ ЄєЇїЎў \xC2\xA0 “”‘’„‚…•†‡‰€™ ©®±¶µ¬¦ "
                       "ЂѓЉЊЌЋЏљњќћџЈјҐґЅѕІі abc~"));
  static_assert("АЯая"_cp1251 == "\xC0\xDF\xE0\xFF");
  static_assert(""_cp1251.empty());
}

TEST(DosCodePage, MapsEveryByteByOwnListOrStandardInAllForms) {
  std::string win = AllBytes();
  WinFromDosInPlace(win);
  EXPECT_EQ(win, Expected("CP866", "CP1251",
                          {{0x0F, "¤"},
                           {0x14, "¶§"},
                           {0xB0, "---¦+¦¦¬¬¦¦¬---¬L+T+-+¦¦Lг¦T¦=+¦¦TTLL-г++----¦¦-"},
                           {0xF9, "•"},
                           {0xFB, "v"},
                           {0xFE, "¦"}}));
  std::string dos = AllBytes();
  DosFromWinInPlace(dos);
  EXPECT_EQ(dos, Expected("CP1251", "CP866",
                          {{0x80, "?\?'?\":┼╪?%?<????"},
                           {0x90, "?''\"\"\x07--?T?>????"},
                           {0xA0, "\xC2\xA0Ўў?¤?│\x15ЁcЄ<┐-RЇ"},
                           {0xB0, "°+???ч\x14·ё№є>???ї"}}));
  EXPECT_EQ(win, WinFromDos(AllBytes()));
  EXPECT_EQ(dos, DosFromWin(AllBytes()));
  EXPECT_EQ(WinFromDosShort(AllBytes()), std::string_view(win).substr(0, 255));
  EXPECT_EQ(DosFromWinShort(AllBytes()), std::string_view(dos).substr(0, 255));
  EXPECT_EQ(WinFromDos('\xFC'), '\xB9');
  EXPECT_EQ(DosFromWin('\x93'), '"');
}

TEST(DosCodePage, KeepsEveryCharacterOnTheWayToUtf8) {
  const std::map<char, const char*> own = {{'\x0F', "¤"}, {'\x14', "¶"}, {'\x15', "§"}};
  for (const char byte : AllBytes()) {
    std::string utf8 = "=";
    AppendUtf8FromDos(utf8, std::string(2, byte));
    const std::string one =
        own.contains(byte) ? own.at(byte) : Iconv("CP866", "UTF-8", {&byte, 1}).value();
    EXPECT_EQ(utf8, "=" + one + one);
  }
}

TEST(DetectCodePage, GuessesFromNameMarkOrLetters) {
  const std::string late(248, ' ');
  const std::tuple<const char*, std::string, CodePage> cases[] = {
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
      {"DOS first", "\xCF\xDF\xF2\x80\x80\x80\x80\xFF", CodePage::kDos}};
  for (const auto& [what, text, expected] : cases) {
    EXPECT_EQ(DetectCodePage(text), expected) << what;
  }
}

TEST(ToWindows, ConvertsByCodePageAndDetectsTheUnknown) {
  const std::tuple<const char*, std::string, CodePage, std::string> cases[] = {
      {"DOS", "\x8C\xA8\xE0", CodePage::kDos, "Мир"},
      {"DOS detected", "\x8C\x88\x90\x9B", CodePage::kUnknown, "МИРЫ"},
      {"Windows as it stands", Win("Мир"), CodePage::kWindows, "Мир"},
      {"UTF-8", "Мир", CodePage::kUtf8, "Мир"},
      {"UTF-8 detected by its mark", "\xEF\xBB\xBFМир", CodePage::kUnknown, "Мир"},
      {"malformed UTF-8", "Мир\xD0", CodePage::kUtf8, ""}};
  for (const auto& [what, text, code_page, expected] : cases) {
    EXPECT_EQ(Utf8(ToWindows(text, code_page)), expected) << what;
  }
  EXPECT_EQ(ToWindows("\x81\x82", static_cast<CodePage>(9)), "\x81\x82") << "an unknown number";
}

}  // namespace
}  // namespace customsconv
