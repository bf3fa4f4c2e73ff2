#include "base/unicode.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "base/iconv_witness.h"
#include "support/text.h"

namespace customsconv {
namespace {

std::string Encode(const char* to, char32_t c) {
  const std::string bytes(reinterpret_cast<const char*>(&c), sizeof c);
  return Iconv("UTF-32LE", to, bytes).value();
}

// The bytes of code page 1251 by the C library's table, by character. The
// unassigned byte 0x98 goes with the control character of its number.
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
  // All pairs of bytes, and all triples and quadruples that matter: every lead
  // with second bytes at the borders of what each lead allows.
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

}  // namespace
}  // namespace customsconv
