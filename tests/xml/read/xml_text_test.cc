#include "xml/read/xml_text.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"
#include "support/text.h"
#include "xml/read/base64.h"
#include "xml/read/xml_value_lookup.h"

namespace customsconv {
namespace {

std::string Loaded(std::string_view bytes) {
  FakeHost host;
  host.files["A.XML"] = bytes;
  return Utf8(LoadXmlText(host.files, "A.XML"));
}

std::string Utf16(std::string_view ascii) {
  std::string bytes = "\xFF\xFE";
  for (const char c : ascii) bytes.append(1, c).append(1, '\0');
  return bytes;
}

TEST(XmlText, TheHeadOfTheFileDecidesItsEncoding) {
  const std::string bom = "\xEF\xBB\xBF", win = Win("Я"), late(82, ' '), last(81, ' ');
  const std::string declared = "<?xml e=\"windows-1251\"?>", utf16 = "<?xml e=\"UTF-16\"?>";
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"nothing declared", "<a>Я№\xE2\x82\xBF</a>", "<a>Я№?</a>"},
      {"1251 declared", declared + win, declared + "Я"},
      {"blanks and single quotes", "<?xml e = 'windows-1251'?>" + win, declared + "Я"},
      {"a mark wins over the declaration", bom + declared + "Я", declared + "Я"},
      {"text behind the mark", bom + "x '<a b = 'c'/>", "<a b = 'c'/>"},
      {"declared too late", late + "<a n=\"windows-1251\"/>", "<a n=\"windows-1251\"/>"},
      {"declared last", last + "<a n=\"windows-1251\"/>" + win, "<a n=\"windows-1251\"/>Я"},
      {"near once normalised", last + "<a n = \"windows-1251\"/>", "<a n=\"windows-1251\"/>"},
      {"UTF-16", Utf16(utf16) + "\x2F\x04\x16\x21", utf16 + "Я№"},
      {"no element", " x ", " x "},
      {"an empty file", "", ""}};
  for (const auto& [what, bytes, text] : cases) EXPECT_EQ(Loaded(bytes), text) << what;
}

TEST(XmlText, KnowsOneSchemaPrefixAndDropsTheFirstComment) {
  for (const auto& [bytes, text] : Cases(
           {"<xs:a t=\"xs:b\">xs xxs:</xs:a> -> <xsd:a t=\"xsd:b\">xs xxsd:</xsd:a>",
            "<?xml?><!-- one --><a/><!-- two --> -> <?xml?><a/><!-- two -->",
            "<!--><b/> --><a/> -> <b/> --><a/>", "<a>--><!-- one --></a> -> <a>--><!-- one --></a>",
            "<a><!-- open -> <a><!-- open", "!--<a>!--<!--!----> -> <a>!--"})) {
    EXPECT_EQ(Loaded(bytes), text);
  }
}

TEST(XmlText, ABrokenFileIsNamed) {
  const std::string message = Win("A.XML\rОшибка при перекодировке из UTF-8 - битый файл!");
  for (const char* bytes : {"<a>\xC3</a>", "\xEF\xBB", "\xEF\xBB\xBFno root", "<a>\xFF\xFE"}) {
    EXPECT_EQ(ErrorOf([&] { (void)Loaded(bytes); }), message) << bytes;
  }
}

TEST(Base64DecodeInPlace, DecodesInPlaceAndRefusesMisplacedPadding) {
  const std::tuple<const char*, const char*, bool> cases[] = {
      {"", "", true},
      {"TWFu\r\nTWE=", "ManMa", true},
      {"T\tW F-u", "Man", true},
      {"TQ= \r\n=TWFu", "MMan", true},  // the text goes on behind a padded group
      {"+/+/", "\xFB\xFF\xBF", true},
      {"TWFuTWE", "Man", true},  // an unfinished last group gives nothing
      {"=", "=", false},
      {"TWFu=TWFu", "Man=TWFu", false},
      {"T=", "=", false},
      {"TWFuTQ=", "Man", false},
      {"TWFuTQ=T", "ManT", false},
      {"TWE==", "Ma=", false}};
  for (const auto& [encoded, bytes, well_formed] : cases) {
    std::string text = encoded;
    EXPECT_EQ(Base64DecodeInPlace(text), well_formed) << encoded;
    EXPECT_EQ(text, bytes) << encoded;
  }
}

TEST(GetXmlValue, FindsAValueByItsPath) {
  const struct {
    const char *text, *path, *value;
  } cases[] = {{"<r><Code>1</Code><N><Code>2</Code></N></r>", "N\\Code", "2"},
               {"<N><ns:Code>2</ns:Code></N>", " N \\ Code ", "2"},
               {"<n><cODE>abвг</Code></N>", "N\\Code", "ABВГ"},
               {"<A><B><C>1</C></B></A>", "A\\B\\C", "1"},
               {"<N><x/></N><N><Code>2</Code></N>", "N\\Code", "2"},
               {"<N xmlns='u'><Code>2</Code></N>", "N\\Code", "2"},
               {"<N a='u'><Code>2</Code></N>", "N\\Code", ""},
               {"<Nx><Code>1</Code></Nx><N><Code>2</Code></N>", "N\\Code", ""},
               {"<a:N><Code>2</Code></a:N>", "N\\Code", ""},
               {"<N><Code>2</Code>", "N\\Code", "2"},
               {"<N><C>1</C><N>2</N></N>", "N\\N", "2"},
               {"<N>1</N><N>2</N>", "N", "2"},
               {"<r><Code>1<x>2</x></Code></r>", "Code", "1<X>2"},
               {"<r><Code>1", "Code", ""},
               {"<r><D>2015/06.11</D></r>", "D", "11.06.2015"},
               {"<r><D>\r\n 2015-06-11\r\n</D></r>", "D", "11.06.2015"},
               {"<r><D>1</D></r>", "\\D", "1"},
               {"<N><D>1</D></N>", "N\\", ""},
               {"<N></N>", "", ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(Utf8(GetXmlValue(Win(c.text), c.path)), c.value) << c.text;
  }
}

TEST(GetXmlValue, DecodesOnceMoreWhereTheTextNamesUtf8) {
  const std::string declaration = "<?xml encoding='utf-8'?>";
  EXPECT_EQ(Utf8(GetXmlValue(declaration + "<N><D>1</D></N>", "N\\D")), "1");
  EXPECT_EQ(Utf8(GetXmlValue(declaration + "<N><D>\xD0\x90</D></N>", "N\\D")), "А");
  EXPECT_EQ(Utf8(GetXmlValue(declaration + Win("<N><D>АБ</D></N>"), "N\\D")), "");
}

}  // namespace
}  // namespace customsconv
