#include "validation/formats/type_draft.h"

#include <gtest/gtest.h>

#include "support/schemas/schema_world.h"

namespace customsconv {
namespace {

class TypeDraftTest : public testing::Test {
 protected:
  // The Fields section for a root with this content, without the blanks that align it.
  std::string Fields(std::string_view content, std::string_view types = "") {
    world_.Schema("t.xsd", "<xs:element name=\"r\"><xs:complexType>" + std::string(content) +
                               "</xs:complexType></xs:element>" + std::string(types));
    const std::string draft = Draft({});
    return draft.substr(draft.find(".Fields]\n") + 9);
  }

  std::string Draft(const DraftOptions& options) {
    schema::SchemaSet schemas(world_.files, SchemaWorld::kMain);
    std::string text;
    for (const char c : Utf8(DraftType(schemas, options))) {
      const bool padding = c == ' ' && !text.empty() && text.back() == ' ';
      const bool indent = text.find_last_not_of(' ') == text.rfind('\n');
      if (c != '\r' && (!padding || indent)) text += c;
    }
    return text;
  }

  SchemaWorld world_;
};

std::string Sequence(std::string_view content) {
  return "<xs:sequence>" + std::string(content) + "</xs:sequence>";
}

// An element of a type that restricts a type of the schema language.
std::string Element(const std::string& name, const std::string& base, const std::string& facets,
                    const std::string& attributes = "") {
  return "<xs:element name=\"" + name + "\" " + attributes +
         "><xs:simpleType><xs:restriction base=\"" + base + "\">" + facets +
         "</xs:restriction></xs:simpleType></xs:element>";
}

TEST_F(TypeDraftTest, GivesValuesTypesAndWidths) {
  const std::string digits = "<xs:totalDigits value=\"15\"/><xs:fractionDigits value=\"2\"/>";
  const std::string length = "<xs:maxLength value=\"40\"/>";
  const struct {
    std::string element;
    const char* line;
  } cases[] = {
      {Element("e", "xs:decimal", digits), "N15.2 |e"},
      {Element("e", "xs:integer", "<xs:maxInclusive value=\"365\"/>"), "N3 |e"},
      {Element("e", "xs:int", ""), "N10 |e"},
      {Element("e", "xs:integer", "<xs:pattern value=\"[0-9]{3}\"/>"),
       "C3 |e PATTERN=\"^[0-9]{3}$\""},
      {Element("e", "xs:string", length), "C40 |e"},
      {Element("e", "xs:string", "<xs:maxLength value=\"51\"/>"), "51 |e"},
      {Element("e", "xs:string", length, "maxOccurs=\"3\""), "C40X3 |e"},
      {Element("e", "xs:date", "", "maxOccurs=\"unbounded\""), "C10X99 |e"},
      {Element("e", "xs:token", "<xs:pattern value=\"а\"/><xs:pattern value=\"b\"/>"),
       "C1 |e PATTERN=\"^(а|b)$\""},
      {Element("e", "xs:boolean", ""), "L |e"},
      {Element("e", "xs:date", ""), "D |e"},
      {Element("e", "xs:gYear", "<xs:length value=\"4\"/>"), "C4 |e"},
  };
  for (const auto& c : cases) {
    const bool gathered = c.element.find("maxOccurs") != std::string::npos;
    EXPECT_EQ(Fields(Sequence(c.element)), "e = " + std::string(c.line) + " NAMESPACE=\"e\"" +
                                               (gathered ? " SEQ=\"1\"" : "") + "\n");
  }
}

TEST_F(TypeDraftTest, SaysInCommentsWhatTheCatalogueCannot) {
  EXPECT_EQ(
      Fields(Sequence(Element("e", "xs:string",
                              "<xs:enumeration value=\"A\"/>"
                              "<xs:enumeration value=\"Б\"/>") +
                      Element("p", "xs:string", "<xs:pattern value=\"\\p{L}+\"/>") +
                      Element("n", "xs:decimal", "") + Element("b", "xs:base64Binary", "") +
                      "<xs:element name=\"x\" nillable=\"true\"/>"
                      "<xs:any processContents=\"skip\"/>")),
      "; r: держит и элементы, которых нет в схеме; они не читаются\n"
      "; e: значения: A, Б\n"
      "e = C1 |e NAMESPACE=\"e\"\n"
      "; p: длина схемой не ограничена\n"
      "; p: шаблон схемы не перенесен: \\p{L}+\n"
      "p = C250 |p NAMESPACE=\"p\"\n"
      "; n: больше шести знаков после запятой не выгружается\n"
      "n = N15.6 |n NAMESPACE=\"n\"\n"
      "; b: вложение (base64) не выгружается\n"
      "b = Y |b NAMESPACE=\"b\"\n"
      "; ---- x\n"
      "; x: xsi:nil не выгружается\n"
      "; x: любое содержание, не читается\n"
      "x#x_required = T1 |Элемент обязателен и пустым NAMESPACE=\"x#x_required\" PRNT=\"1\"\n");
}

// One path is filled once; order among repeated neighbours, and attributes below the root, are
// not written back.
TEST_F(TypeDraftTest, TellsOfPathsThatCannotBeTold) {
  EXPECT_EQ(
      Fields(Sequence("<xs:sequence maxOccurs=\"2\"><xs:element name=\"a\" type=\"xs:date\"/>"
                      "<xs:element name=\"A\" type=\"xs:date\"/></xs:sequence>"
                      "<xs:element name=\"w\"><xs:complexType><xs:attribute name=\"id\" "
                      "use=\"required\"/></xs:complexType></xs:element>"
                      "<xs:element name=\"v\"><xs:complexType><xs:simpleContent><xs:extension "
                      "base=\"xs:date\"><xs:attribute name=\"id\"/></xs:extension>"
                      "</xs:simpleContent></xs:complexType></xs:element>")),
      "; a: повторяется вместе с соседями, порядок не хранится\n"
      "a { |a NAMESPACE=\"a\"\n"
      "  NodeText = D |Текст элемента\n"
      "}\n"
      "; A: этот путь уже занят, элемент не читается\n"
      "; ---- w\n"
      "w#id = T50 |w#id NAMESPACE=\"att=id\"\n"
      "; w#id: обязательный атрибут не выгружается\n"
      "w#w_required = T1 |Элемент обязателен и пустым NAMESPACE=\"w#w_required\" PRNT=\"1\"\n"
      "v { |v NAMESPACE=\"v\"\n"
      "  NodeText = D |Текст элемента\n"
      "  id = T50 |id NAMESPACE=\"att=id\"\n"
      "}\n");
}

TEST_F(TypeDraftTest, NumbersTheBranchesOfAChoice) {
  const std::string choice =
      "<xs:choice><xs:element name=\"one\" type=\"xs:date\"/><xs:element name=\"two\">"
      "<xs:complexType><xs:choice><xs:element name=\"in1\" type=\"xs:date\"/>"
      "<xs:element name=\"in2\" type=\"xs:date\"/></xs:choice></xs:complexType></xs:element>";
  EXPECT_EQ(Fields(Sequence(choice + "</xs:choice>")),
            "one_choice = T3 |Номер заполненной ветви NAMESPACE=\"one_choice\"\n"
            "one = D |one NAMESPACE=\"one\" CHOICE=\"1\"\n"
            "two = B |two NAMESPACE=\"two\"\n"
            "; одно из, номер ветви не хранится: in1 | in2\n"
            "two#in1 = D |in1 NAMESPACE=\"two#in1\" CHOICE=\"2\"\n"
            "two#in2 = D |in2 NAMESPACE=\"two#in2\" CHOICE=\"2\"\n");
  // The fields of a choice must stand together, and a block ends them.
  const std::string with_block = Fields(
      Sequence(choice + "<xs:element name=\"three\" maxOccurs=\"2\" type=\"t:c\"/></xs:choice>"),
      "<xs:complexType name=\"c\"><xs:sequence/></xs:complexType>");
  EXPECT_EQ(with_block.substr(0, with_block.find('\n')),
            "; одно из, номер ветви не хранится: one | two | three");
}

TEST_F(TypeDraftTest, KeepsNamesAndPathsWithinTheirBounds) {
  const std::string long_name(90, 'n');
  const std::string inner = "<xs:element name=\"" + long_name + "\"><xs:complexType><xs:sequence>";
  const std::string close = "</xs:sequence></xs:complexType></xs:element>";
  const std::string text =
      Fields(Sequence(inner + inner + inner + "<xs:element name=\"a.b\" type=\"xs:date\"/>" +
                      close + close + close));
  EXPECT_EQ(text, "; ---- " + long_name + "\n; ---- " + long_name + "\n" + std::string(32, 'n') +
                      "#" + std::string(32, 'n') + "#" + std::string(32, 'n') + " { |" + long_name +
                      " NAMESPACE=\"" + long_name + "#" + long_name + "#" + long_name +
                      "\"\n  a_b = D |a.b NAMESPACE=\"a.b\"\n}\n");
}

TEST_F(TypeDraftTest, HeadsTheTypeWithItsRootTag) {
  world_.Schema("o.xsd", "<xs:element name=\"far\" type=\"xs:date\"/>");
  world_.Schema("t.xsd", R"(<xs:import namespace="urn:o" schemaLocation="o.xsd"/>
    <xs:element name="r"><xs:annotation><xs:documentation>Проба
      {формата}</xs:documentation></xs:annotation><xs:complexType><xs:sequence>
        <xs:element ref="o:far"/>
        <xs:element name="g" maxOccurs="2"><xs:annotation><xs:documentation>Товар {1} [да/нет] "x"
          </xs:documentation></xs:annotation><xs:complexType/></xs:element>
      </xs:sequence><xs:attribute name="Mode" fixed="7E" use="required"/></xs:complexType>
    </xs:element>)");
  const std::string fields =
      "Mode = T2 |Mode NAMESPACE=\"att=Mode\"\nfar = D |far NAMESPACE=\"o:far\"\n"
      "; g: обязателен, но пустым не выгружается\n";
  EXPECT_EQ(
      Draft({}),
      "; Черновик по схеме t.xsd. Что язык каталога не может сказать, стоит в пояснениях.\n"
      "[r.HEADER]\nFullName=Проба {формата}\nShortName=r\n; MainBlock - один из блоков: g\n"
      "XmlType=r\nPrefix=<r xmlns=\"urn:t\" xmlns:o=\"urn:o\" Mode=\"7E\">\nXmlCoding=UTF-8\n\n"
      "[r.Fields]\n" +
          fields + "g { |Товар (1) (да/нет) 'x' NAMESPACE=\"g\"\n}\n");
  const std::string prefixed = Draft({.root = "r", .prefix = "D", .code = "Doc"});
  EXPECT_NE(prefixed.find("\nPrefix=<D:r xmlns:D=\"urn:t\" xmlns:o=\"urn:o\" Mode=\"7E\">\n"),
            std::string::npos);
  EXPECT_NE(prefixed.find("\n[Doc.Fields]\n" + fields +
                          "g { |Товар (1) (да/нет) 'x' NAMESPACE=\"D:g\"\n"),
            std::string::npos);
}

}  // namespace
}  // namespace customsconv
