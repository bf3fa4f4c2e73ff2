#include <gtest/gtest.h>
#include <iconv.h>

#include <map>
#include <random>

#include "base/code_pages.h"
#include "base/cp1251_literal.h"
#include "base/date_time.h"
#include "base/dos_code_page.h"
#include "base/dos_unicode.h"
#include "base/letter_case.h"
#include "base/short_text.h"
#include "support/text.h"

namespace customsconv {
namespace {

// The C library's conversion, as a second way to the answer; empty when it refuses the text.
std::optional<std::string> Iconv(const char* from, const char* to, std::string_view text) {
  const iconv_t converter = iconv_open(to, from);
  std::string source(text);
  std::string result(4 * text.size() + 16, '\0');
  char* in = source.data();
  char* out = result.data();
  std::size_t in_left = source.size();
  std::size_t out_left = result.size();
  const std::size_t outcome = iconv(converter, &in, &in_left, &out, &out_left);
  iconv_close(converter);
  if (outcome == static_cast<std::size_t>(-1) || in_left > 0) return std::nullopt;
  result.resize(result.size() - out_left);
  return result;
}

std::string Encode(const char* to, char32_t c) {
  return Iconv("UTF-32LE", to, {reinterpret_cast<const char*>(&c), sizeof c}).value();
}

// The C library's bytes by character. The unassigned byte 0x98 is the control character 0x98.
std::map<char32_t, char> WitnessTable() {
  std::map<char32_t, char> table{{0x98, '\x98'}};
  for (unsigned byte = 0; byte < 256; ++byte) {
    const auto unicode = Iconv("CP1251", "UTF-32LE", std::string(1, static_cast<char>(byte)));
    if (!unicode) continue;
    char32_t c = 0;
    unicode->copy(reinterpret_cast<char*>(&c), sizeof c);
    table[c] = static_cast<char>(byte);
  }
  return table;
}

TEST(Unicode, EveryCharacterHasItsByteOrAQuestionMark) {
  const auto table = WitnessTable();
  ASSERT_EQ(table.size(), 256u);
  for (char32_t c = 0; c <= 0x10FFFF; c += c < 0x3000 ? 1 : 0x101) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    const auto known = table.find(c);
    const std::string expected(1, known == table.end() ? '?' : known->second);
    if (c == 0xFEFF) continue;  // alone it is the byte order mark
    ASSERT_EQ(WinFromUtf8(Encode("UTF-8", c)), expected) << std::hex << static_cast<unsigned>(c);
    ASSERT_EQ(WinFromUtf16(Encode("UTF-16LE", c)), expected) << static_cast<unsigned>(c);
  }
  for (const auto& [c, byte] : table) {
    ASSERT_EQ(Utf8FromWin(std::string(1, byte)), Encode("UTF-8", c));
  }
}

TEST(WinFromUtf8, RefusesExactlyWhatIsMalformed) {
  // All pairs of bytes, with tails at the borders of what each lead allows.
  const std::string tails[] = {"", "\x80", "\xBF", "\x7F", "\xC0", "\x80\x80", "\xBF\xBF", "\x80 "};
  for (unsigned lead = 0x80; lead < 0x100; ++lead) {
    for (unsigned second = 0; second < 0x100; ++second) {
      for (const std::string& tail : tails) {
        const std::string text{static_cast<char>(lead), static_cast<char>(second)};
        if (text == "\xEF\xBB" && tail == "\xBF") continue;  // the mark is no text
        const bool well_formed = Iconv("UTF-8", "UTF-32LE", text + tail).has_value();
        ASSERT_EQ(WinFromUtf8(text + tail).has_value(), well_formed)
            << std::hex << lead << ' ' << second << ", " << tail.size() << " bytes behind";
      }
    }
  }
  const std::string sentence = "ГТД № 10226010/150324: щётка, 12 шт. plain text behind it";
  for (std::size_t i = 0; i <= sentence.size(); ++i) {
    EXPECT_EQ(WinFromUtf8(std::string(sentence).insert(i, "\xFF")), std::nullopt) << i;
  }
}

TEST(WinFromUtf8, MixedRunsOfAnyLengthConvertAsCharactersDo) {
  std::vector<std::pair<std::string, std::string>> pieces = {{"漢", "?"}, {"😀", "?"}};
  for (const char* piece : {"a", "<Name>", "Б", "слово", "ё", "№", "€", "длинноеслово",
                            "a rather long run of plain text"}) {
    pieces.emplace_back(piece, Iconv("UTF-8", "CP1251", piece).value());
  }
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    std::string utf8;
    std::string expected;
    const bool in_pieces = round % 100 == 0;  // long texts are converted piece by piece
    for (std::size_t count = in_pieces ? 20'000 : random() % 9; count > 0; --count) {
      const auto& [text, win] = pieces[random() % pieces.size()];
      utf8 += text;
      expected += win;
    }
    ASSERT_EQ(WinFromUtf8(utf8), expected) << utf8;
    std::string text = "ж" + utf8;
    ASSERT_TRUE(WinFromUtf8InPlace(text, 2) && text == expected) << utf8;
    if (expected.find('?') == expected.npos) {
      ASSERT_EQ(Utf8FromWin(expected), utf8);
    }
    EXPECT_EQ(WinFromUtf8(utf8 + "\x80"), std::nullopt);
    EXPECT_EQ(WinFromUtf8(utf8 + "\xD0"), std::nullopt);
  }
}

TEST(WinFromUtf8, DropsTheByteOrderMarkOnceAtTheStart) {
  EXPECT_EQ(WinFromUtf8("\xEF\xBB\xBF\xEF\xBB\xBFx\xEF\xBB\xBF"), "?x?");
  EXPECT_EQ(WinFromUtf8(""), "");
  std::string text = "no text\xEF\xBB\xBFx";
  EXPECT_TRUE(WinFromUtf8InPlace(text, 7) && text == "x");
}

TEST(WinFromUtf16, LoneSurrogatesAreQuestionMarksAndAnOddByteIsDropped) {
  const auto convert = [](std::u16string_view units) {
    return WinFromUtf16({reinterpret_cast<const char*>(units.data()), 2 * units.size()});
  };
  EXPECT_EQ(Utf8(convert(u"Щука")), "Щука");
  EXPECT_EQ(convert({u"\xD83D\xDE00x", 3}), "?x");
  EXPECT_EQ(convert({u"\xD83Dx", 2}), "?x");
  EXPECT_EQ(convert({u"x\xDE00", 2}), "x?");
  EXPECT_EQ(convert({u"x\xD83D", 2}), "x?");
  EXPECT_EQ(WinFromUtf16({"a\0b", 3}), "a");
}

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

TEST(Cp1251Literal, HoldsTheBytesOfCharactersOfOneToThreeBytes) {
  static_assert("Яё№“a"_cp1251 == "\xDF\xB8\xB9\x93\x61");
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

// By byte 255 the name must end; the page that has four letters first wins.
TEST(DetectCodePage, GuessesFromNameMarkOrLetters) {
  const std::string late(248, ' ');
  const std::pair<CodePage, std::vector<std::string>> cases[] = {
      {CodePage::kUtf8,
       {"<?xml version=\"1.0\" encoding=\"utf-8\"?>", late + "\"UTF-8\"",
        "\xEF\xBB\x80\x80\x80\x80"}},
      {CodePage::kDos, {"\x80\x81\x82\xAF", "\xCF\xDF\xF2\x80\x80\x80\x80\xFF"}},
      {CodePage::kWindows,
       {"", "plain", " " + late + "\"UTF-8\"", "encoding='UTF-8'", " \xEF\xBB\xBF", "\x80\x81\x82",
        "\xB0\xCE\xE0\xF1\xB0\xCE\xE0\xF1", "\xCF\xDF\xF2\xFF\x80\x80\x80\x80"}}};
  for (const auto& [expected, texts] : cases) {
    for (const std::string& text : texts) EXPECT_EQ(DetectCodePage(text), expected) << text;
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

TEST(Error, CarriesTheMessageIn1251AndShowsItInUtf8) {
  const std::string path = Win("C:\\Декларации\\Ёж.DBF");
  using Kind = FileError::Kind;
  const std::pair<Error, const char*> cases[] = {
      {Error(Win("Нет данных №5")), "Нет данных №5"},
      {ListIndexError(-1), "List index out of bounds (-1)"},
      {ConversionError(Win("12ш")), "'12ш' is not a valid integer value"},
      {SilentAbort(), ""},
      {FileError(Kind::kMissing, path, ""), "Не найден файл C:\\Декларации\\Ёж.DBF"},
      {FileError(Kind::kOpen, path, "is a folder"),
       "Не могу открыть файл C:\\Декларации\\Ёж.DBF: is a folder"},
      {FileError(Kind::kCreate, "X", "full"), "Не могу создать файл X: full"},
      {FileError(Kind::kRead, "X", "full"), "Не могу прочитать файл X: full"},
      {FileError(Kind::kWrite, "X", "full"), "Не могу записать файл X: full"}};
  for (const auto& [error, expected] : cases) {
    EXPECT_STREQ(error.what(), expected);
    EXPECT_EQ(error.text(), Win(expected));
  }
}

const std::string kFull(255, 'x');

TEST(ShortText, CutsAt255BytesWhereItSays) {
  static_assert(!std::is_convertible_v<std::string_view, ShortText>);
  static_assert(!std::is_convertible_v<const char(&)[257], ShortText>);
  const std::tuple<const char*, ShortText, std::string> cases[] = {
      {"fits", ShortText::Cut(kFull), kFull},
      {"one too many", ShortText::Cut(kFull + "y"), kFull},
      {"one appended", ShortText::Cut(kFull) += 'y', kFull},
      {"cut within what is appended", ShortText::Cut(std::string(250, 'x')) += "xxxxxyyy", kFull},
      {"bytes above 127 and zero", "\xFF\0\x80", {"\xFF\0\x80", 3}},
      {"nothing", "", ""}};
  for (const auto& [what, text, expected] : cases) EXPECT_EQ(text.str(), expected) << what;
}

TEST(ShortText, AppendsAndAssignsItsOwnText) {
  ShortText text = ShortText::Cut(std::string(200, 'x'));
  text += text;
  EXPECT_EQ(text.str(), kFull);
  text = "abab";
  text = ShortText::Cut(text.view().substr(1, 2));
  EXPECT_EQ(text, "ba");
}

TEST(ShortText, ComparesByBytes) {
  EXPECT_LT(ShortText("B"), ShortText("a"));
  EXPECT_LT(ShortText("z"), ShortText("\xE0"));  // bytes are unsigned
  EXPECT_LT(ShortText("a"), ShortText("aa"));
  EXPECT_NE(ShortText("a\0"), ShortText("a"));
  EXPECT_EQ(CutToShort(kFull + "y"), kFull);
  static_assert(sizeof(ShortText) == 256);
}

TEST(LetterCase, OnlyLatinLettersRussianLettersAndYoHaveCases) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    unsigned expected = byte;
    if ((byte >= 'a' && byte <= 'z') || byte >= 0xE0) expected = byte - 0x20;
    if (byte == 0xB8) expected = 0xA8;
    const std::string upper = UpperCaseRu(std::string(1, static_cast<char>(byte)));
    EXPECT_EQ(upper, std::string(1, static_cast<char>(expected))) << byte;
  }
  EXPECT_EQ(UpperCaseLatin(Win("Ёж x")), Win("Ёж X"));
}

TEST(LetterCase, ComparesUpperCasedBytes) {
  EXPECT_TRUE(SameTextRu(Win("ёлка a"), Win("ЁЛКА A")));
  EXPECT_FALSE(SameTextRu("ab", "a"));
  EXPECT_EQ(CompareTextRu("abc", "ABC"), 0);
  EXPECT_LT(CompareTextRu("z", Win("А")), 0);  // bytes are unsigned
  EXPECT_LT(CompareTextRu("a", "AB"), 0);
  EXPECT_GT(CompareTextRu("_", "z"), 0);  // "_" stands behind "Z"
  EXPECT_TRUE(StartsWithRu(Win("ГТД: x"), Win("гтд:")));
  EXPECT_FALSE(StartsWithRu("a", "ab"));
  EXPECT_EQ(NoCaseHash()(Win("Ёж")), NoCaseHash()(Win("ёЖ")));
}

TEST(DateTime, CountsDaysOfTheYears1To9999) {
  EXPECT_EQ(DateOf({1, 1, 1}), -693593);
  const CalendarDay none[] = {{2023, 13, 1}, {2023, 0, 1}, {2023, 1, 0}, {0, 1, 1}, {10000, 1, 1}};
  for (const auto& day : none) EXPECT_EQ(DateOf(day), std::nullopt) << day.year << day.month;
}

}  // namespace
}  // namespace customsconv
