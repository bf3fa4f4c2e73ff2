#include "storage/xml_text.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {
namespace {

std::string Loaded(std::string_view bytes) {
  return Utf8(XmlTextFromBytes(std::string(bytes), "A.XML"));
}

std::string Utf16(std::string_view ascii) {
  std::string bytes = "\xFF\xFE";
  for (const char c : ascii) bytes.append(1, c).append(1, '\0');
  return bytes;
}

TEST(XmlText, TheHeadOfTheFileDecidesItsEncoding) {
  const std::string bom = "\xEF\xBB\xBF";
  const std::string win = Win("Я");
  const std::string declared_1251 = "<?xml encoding=\"windows-1251\"?>";
  const struct {
    const char* what;
    std::string bytes;
    std::string text;
  } cases[] = {
      {"nothing declared", "<a>Я№</a>", "<a>Я№</a>"},
      {"a character that 1251 lacks", "<a>\xE2\x82\xBF</a>", "<a>?</a>"},
      {"1251 declared", declared_1251 + win, declared_1251 + "Я"},
      {"blanks and single quotes", "<?xml  encoding = 'windows-1251'?>" + win,
       "<?xml  encoding=\"windows-1251\"?>Я"},
      {"a mark wins over the declaration", bom + declared_1251 + "Я", declared_1251 + "Я"},
      {"text between the mark and the root", bom + "x '<a b = 'c'/>", "<a b = 'c'/>"},
      {"1251 declared too late", std::string(82, ' ') + "<a n=\"windows-1251\"/>",
       "<a n=\"windows-1251\"/>"},
      {"the last place where it counts", std::string(81, ' ') + "<a n=\"windows-1251\"/>" + win,
       "<a n=\"windows-1251\"/>Я"},
      {"normalising brings the declaration near",
       std::string(81, ' ') + "<a n = \"windows-1251\"/>" + win, "<a n=\"windows-1251\"/>Я"},
      {"UTF-16", Utf16("<?xml encoding=\"UTF-16\"?>") + "\x2F\x04\x16\x21",
       "<?xml encoding=\"UTF-16\"?>Я№"},
      {"nothing but blanks", " x ", " x "},
      {"an empty file", "", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(Loaded(c.bytes), c.text) << c.what;
}

TEST(XmlText, KnowsOneSchemaPrefixAndDropsTheFirstComment) {
  const struct {
    const char* bytes;
    const char* text;
  } cases[] = {
      {"<xs:a t=\"xs:b\">xs xxs:</xs:a>", "<xsd:a t=\"xsd:b\">xs xxsd:</xsd:a>"},
      {"XS:<XS:a/>", "<XS:a/>"},
      {"\r\n<?xml?><!-- one --><a/><!-- two -->", "<?xml?><a/><!-- two -->"},
      {"<!--><b/> --><a/>", "<b/> --><a/>"},
      {"x<!-- one --><a/>", "<a/>"},
      {"<a>--><!-- one --></a>", "<a>--><!-- one --></a>"},
      {"<a><!-- open", "<a><!-- open"},
      {"!--<a>!--<!--!---->", "<a>!--"},
  };
  for (const auto& c : cases) EXPECT_EQ(Loaded(c.bytes), c.text) << c.bytes;
}

TEST(XmlText, ABrokenFileIsNamed) {
  const std::string message = "A.XML\rОшибка при перекодировке из UTF-8 - битый файл!";
  for (const char* bytes : {"<a>\xC3</a>", "\xEF\xBB", "\xEF\xBB\xBFno root", "<a>\xFF\xFE"}) {
    EXPECT_EQ(Utf8(ErrorOf([&] { (void)XmlTextFromBytes(bytes, "A.XML"); })), message) << bytes;
  }
  FakeHost host;
  host.files["C:\\A.XML"] = "<xs:a/>";
  EXPECT_EQ(LoadXmlText(host.files, "C:\\A.XML"), "<xsd:a/>");
  EXPECT_NE(ErrorOf([&] { (void)LoadXmlText(host.files, "C:\\B.XML"); }).find("C:\\B.XML"),
            std::string::npos);
}

}  // namespace
}  // namespace customsconv
