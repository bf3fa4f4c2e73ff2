#include <gtest/gtest.h>
#include <libxml/xmlregexp.h>

#include <memory>

#include "support/fake_files.h"
#include "support/text.h"
#include "text/pattern.h"
#include "text/words.h"
#include "validation/schema/facets.h"
#include "validation/schema/schema_set.h"
#include "validation/schema/schema_tree.h"
#include "validation/schema/value_pattern.h"

namespace customsconv::schema {
namespace {

constexpr const char* kFile = "C:\\XSD\\t.xsd";

std::string Schema(std::string_view content) {
  return R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema" xmlns:t="urn:t" )"
         R"(targetNamespace="urn:t">)"
         "\n" +
         std::string(content) + "\n</xs:schema>";
}

// What trees look like, the drafts of types show.
TEST(SchemaTree, NamesFileAndLineOfWhatIsWrong) {
  const std::string root = "<xs:element name=\"r\" type=\"t:x\"/>\n";
  const std::string unusable = "Не могу использовать схему t.xsd, строка ";
  const std::pair<std::string, std::string> cases[] = {
      {Schema(root), unusable + "2: нет описания типа t:x"},
      {Schema(R"(<xs:element name="r" type="q:x"/>)"), unusable + "2: не объявлен префикс q"},
      {Schema(R"(<xs:element name="q"/>)"), "Схема t.xsd не описывает корневой элемент r"},
      {Schema("\n<xs:include schemaLocation=\"no.xsd\"/>"), unusable + "3: нет файла no.xsd"},
      {Schema(R"(<xs:include schemaLocation="file:///t.xsd"/>)"),
       unusable + "2: нет файла file:///t.xsd"},
      {Schema(R"(<xs:redefine schemaLocation="t.xsd"/>)"), unusable + "2: xs:redefine не читается"},
      {Schema(root + R"(<xs:complexType name="x"><xs:complexContent><xs:extension base="t:x"/>
              </xs:complexContent></xs:complexType>)"),
       "Тип схемы выведен из самого себя"},
      {Schema(root + R"(<xs:simpleType name="x"><xs:restriction base="t:x"/></xs:simpleType>)"),
       "Тип схемы выведен из самого себя"},
      {Schema(root + R"(<xs:complexType name="x"><xs:group ref="t:x"/></xs:complexType>
              <xs:group name="x"><xs:sequence><xs:group ref="t:x"/></xs:sequence></xs:group>)"),
       "Группы схемы вложены слишком глубоко"},
      {Schema("<xs:element name=\"r\">"), unusable + "3: "},
      {"<!DOCTYPE a [<!ENTITY b SYSTEM \"file:///etc/passwd\">]><a>&b;</a>",
       unusable + "1: DOCTYPE не допускается"}};
  for (const auto& [bytes, failure] : cases) {
    FakeFiles files;
    files[kFile] = bytes;
    const std::string told = Utf8(ErrorOf([&] { SchemaTree{SchemaSet(files, kFile).Root("r")}; }));
    EXPECT_EQ(told.substr(0, failure.size()), failure) << bytes;
  }
}

// Each type leads to the next, so a reader that recursed would need a stack of that depth.
TEST(SchemaTree, LongChainsOfTypesNeedNoStack) {
  constexpr int kLinks = 20000;
  constexpr std::string_view kLink = R"(
    <xs:complexType name="c#"><xs:complexContent><xs:extension base="t:c@"/></xs:complexContent>
    </xs:complexType><xs:complexType name="d#"><xs:sequence><xs:element name="e" type="t:d@"/>
    </xs:sequence></xs:complexType><xs:simpleType name="s#"><xs:restriction base="t:s@"/>
    </xs:simpleType>)";
  std::string types = R"(<xs:element name="r" type="t:c0"/><xs:element name="deep" type="t:d0"/>
    <xs:complexType name="cEnd"><xs:attribute name="a" type="t:s0"/></xs:complexType>
    <xs:simpleType name="sEnd"><xs:restriction base="xs:date"/></xs:simpleType>
    <xs:complexType name="dEnd"/>)";
  for (int i = 0; i < kLinks; ++i) {
    const std::string next = i + 1 == kLinks ? "End" : std::to_string(i + 1);
    types += ReplaceAll(ReplaceAll(kLink, "#", std::to_string(i)), "@", next);
  }
  FakeFiles files;
  files[kFile] = Schema(types);
  SchemaSet schemas(files, kFile);
  const auto attributes = AttributesOf(*schemas.Root("r").complex);
  ASSERT_EQ(attributes.size(), 1U);
  EXPECT_TRUE(IsDate(*attributes.front()->type));
  const Element& deep = schemas.Root("deep");
  EXPECT_THROW(SchemaTree{deep}, Error);
}

constexpr int kNoLimit = -1;

TEST(ValuePattern, SaysTheSameInPerlAndKnowsTheLongestValue) {
  const struct {
    const char* schema;
    const char* perl;
    int most;
  } cases[] = {
      {"\\d{2}", "[0-9]{2}", 2},
      {"[A-Z]{2}|[0]{2}|\\d{5,6}", "[A-Z]{2}|0{2}|[0-9]{5,6}", 6},
      {"(\\d{3}/[А-ЯЁ]{2}-\\d)?", "([0-9]{3}/[ЁА-Я]{2}\\-[0-9])?", 8},
      {"R(\\.[A-Z]{2}){0,2}\\.", "R(\\.[A-Z]{2}){0,2}\\.", 8},
      {"a+b*", "a+b*", kNoLimit},
      {"((a|b){2}c){3,}", "((a|b){2}c){3,}", kNoLimit},
      {"^$", "\\^\\$", 2},  // letters there
      {"[^a-z\\]]", "[^\\]a-z]", 1},
      {"\\D", "[^0-9]", 1},
      {"\"{1}\\{", "\\x22\\x7B", 2},  // a catalogue line could not hold them
      {"[+\\-]?[,.-]", "[\\+\\-]?[,-\\.]", 2},
      {"", "", 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.schema);
    const auto pattern = ValuePattern::Parse(c.schema);
    ASSERT_TRUE(pattern);
    EXPECT_EQ(pattern->MostCharacters().value_or(kNoLimit), c.most);
    EXPECT_EQ(Utf8(pattern->PerlExpression()), c.perl);
  }
}

TEST(ValuePattern, RefusesWhatItDoesNotUnderstand) {
  for (const char* text : {"(", ")", "[", "[]", "a{", "a{2", "a{3,2}", "*", "[z-a]", "\\", "\\p{L}",
                           "\\w", "\\i", "[a-z-[b]]", "日本", "a{,2}"}) {
    EXPECT_FALSE(ValuePattern::Parse(text)) << text;
  }
}

// All texts of up to four letters of a small alphabet, against the expressions of the library that
// checks documents.
TEST(ValuePattern, MatchesWhatAnotherLibraryMatches) {
  constexpr std::string_view kAlphabet = "a1.-";
  for (const char* text : {"a|1", "(a|1){2}", "a?1*", "[^a]{1,2}", "[a-z.]+", "\\d\\.|\\D-", ".",
                           "(a1)?(\\.|-)*", "aa|(1|a-){1,2}", "(a?1){2,3}", "[\\-a]|\\S1"}) {
    SCOPED_TRACE(text);
    const auto pattern = ValuePattern::Parse(text);
    ASSERT_TRUE(pattern);
    const Pattern perl("^(" + pattern->PerlExpression() + ")$");
    const std::unique_ptr<xmlRegexp, decltype(&xmlRegFreeRegexp)> other(
        xmlRegexpCompile(BAD_CAST text), &xmlRegFreeRegexp);
    ASSERT_TRUE(other);
    for (int number = 0; number < 5 * 5 * 5 * 5; ++number) {
      std::string value;
      for (int rest = number; rest > 0; rest /= 5) {
        if (rest % 5 > 0) value += kAlphabet[static_cast<std::size_t>(rest % 5 - 1)];
      }
      EXPECT_EQ(perl.FoundIn(value), xmlRegexpExec(other.get(), BAD_CAST value.c_str()) == 1)
          << "'" << value << "'";
    }
  }
}

}  // namespace
}  // namespace customsconv::schema
