#include "xml/read/xml_text.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"
#include "support/text.h"

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
  const std::pair<const char*, const char*> cases[] = {
      {"<xs:a t=\"xs:b\">xs xxs:</xs:a>", "<xsd:a t=\"xsd:b\">xs xxsd:</xsd:a>"},
      {"<?xml?><!-- one --><a/><!-- two -->", "<?xml?><a/><!-- two -->"},
      {"<!--><b/> --><a/>", "<b/> --><a/>"},
      {"<a>--><!-- one --></a>", "<a>--><!-- one --></a>"},
      {"<a><!-- open", "<a><!-- open"},
      {"!--<a>!--<!--!---->", "<a>!--"}};
  for (const auto& [bytes, text] : cases) EXPECT_EQ(Loaded(bytes), text);
}

TEST(XmlText, ABrokenFileIsNamed) {
  const std::string message = Win("A.XML\rОшибка при перекодировке из UTF-8 - битый файл!");
  for (const char* bytes : {"<a>\xC3</a>", "\xEF\xBB", "\xEF\xBB\xBFno root", "<a>\xFF\xFE"}) {
    EXPECT_EQ(ErrorOf([&] { (void)Loaded(bytes); }), message) << bytes;
  }
}

}  // namespace
}  // namespace customsconv
