#include "validation/schema/schema_tree.h"

#include <gtest/gtest.h>

#include <optional>

#include "base/error.h"
#include "support/schemas/schema_world.h"
#include "validation/schema/facets.h"
#include "validation/schema/schema_set.h"

namespace customsconv::schema {
namespace {

std::string Count(int count) { return count == kUnbounded ? "*" : std::to_string(count); }

// "  name 0..* string(10) {1.2}" for each element, indented by depth; what is in braces are
// choices and branches.
std::string Shown(const SchemaTree& tree) {
  std::string text;
  for (const std::size_t index : tree.InOrder()) {
    const TreeElement& element = tree.At(index);
    for (std::size_t at = index; at != SchemaTree::kRoot; at = tree.At(at).parent) text += "  ";
    text += element.element->name.local;
    if (index != SchemaTree::kRoot) {
      text += " " + Count(element.occurs.min) + ".." + Count(element.occurs.max);
    }
    if (const SimpleType* type = TextOf(*element.element); type != nullptr) {
      const std::optional<int> most = MostCharacters(*type);
      text += " " + type->built_in + (most ? "(" + std::to_string(*most) + ")" : "");
    }
    if (element.element->complex != nullptr) {
      for (const Attribute* attribute : AttributesOf(*element.element->complex)) {
        text += " @" + attribute->name.local + (attribute->required ? "!" : "");
      }
    }
    for (const Branch& branch : element.branches) {
      text += " {" + std::to_string(branch.choice) + "." + std::to_string(branch.number) + "}";
    }
    text += element.repeats_in_group ? " group" : "";
    text += element.several_places ? " places" : "";
    text += element.holds_any ? " any" : "";
    text += element.cut ? " cut" : "";
    text += "\n";
  }
  return text;
}

class SchemaTreeTest : public testing::Test {
 protected:
  std::string Tree() {
    SchemaSet schemas(world_.files, SchemaWorld::kMain);
    return Shown(SchemaTree(schemas.Root("r")));
  }
  std::string Failure() {
    try {
      return Tree();
    } catch (const Error& error) {
      return error.what();
    }
  }

  SchemaWorld world_;
};

TEST_F(SchemaTreeTest, FlattensGroupsAndCountsWhatTheyRepeat) {
  world_.Schema("t.xsd", R"(
    <xs:group name="pair"><xs:sequence><xs:element name="p" type="xs:date"/></xs:sequence></xs:group>
    <xs:element name="r"><xs:complexType><xs:sequence>
      <xs:element name="a" type="xs:string" maxOccurs="3"/>
      <xs:sequence minOccurs="0" maxOccurs="unbounded"><xs:element name="b"/></xs:sequence>
      <xs:choice minOccurs="0">
        <xs:element name="c1" type="xs:int"/>
        <xs:sequence><xs:element name="c2"/><xs:element name="c3" minOccurs="0"/></xs:sequence>
        <xs:choice><xs:element name="c4"/><xs:element name="c5"/></xs:choice>
      </xs:choice>
      <xs:choice maxOccurs="2"><xs:element name="d1"/><xs:element name="d2"/></xs:choice>
      <xs:choice><xs:element name="only"/></xs:choice>
      <xs:group ref="t:pair" minOccurs="2" maxOccurs="2"/>
      <xs:element name="none" maxOccurs="0" minOccurs="0"/>
      <xs:any processContents="skip"/>
    </xs:sequence></xs:complexType></xs:element>)");
  EXPECT_EQ(Tree(),
            "r any\n"
            "  a 1..3 string\n"
            "  b 0..*\n"
            "  c1 0..1 int {1.1}\n"
            "  c2 0..1 {1.2}\n"
            "  c3 0..1 {1.2}\n"
            "  c4 0..1 {1.3} {2.1}\n"
            "  c5 0..1 {1.3} {2.2}\n"
            "  d1 0..2 group\n"
            "  d2 0..2 group\n"
            "  only 1..1\n"
            "  p 2..2 date(10)\n");
}

TEST_F(SchemaTreeTest, JoinsPlacesOfOneName) {
  world_.Schema("t.xsd", R"(
    <xs:element name="r"><xs:complexType><xs:sequence>
      <xs:element name="a" type="xs:string"/><xs:element name="b" type="xs:string"/>
      <xs:element name="a" type="xs:string" minOccurs="0"/>
      <xs:choice>
        <xs:sequence><xs:element name="x" type="xs:string"/><xs:element name="y" type="xs:string"/>
        </xs:sequence>
        <xs:element name="x" type="xs:string"/>
      </xs:choice>
    </xs:sequence></xs:complexType></xs:element>)");
  EXPECT_EQ(Tree(),
            "r\n  a 1..2 string places\n  b 1..1 string\n  x 0..1 string places\n"
            "  y 0..1 string {1.1}\n");
}

TEST_F(SchemaTreeTest, FollowsDerivedTypes) {
  world_.Schema("t.xsd", R"(
    <xs:simpleType name="code"><xs:restriction base="xs:token"><xs:maxLength value="9"/>
      </xs:restriction></xs:simpleType>
    <xs:simpleType name="short"><xs:restriction base="t:code"><xs:pattern value="\d{2,4}"/>
      </xs:restriction></xs:simpleType>
    <xs:simpleType name="list"><xs:list itemType="t:code"/></xs:simpleType>
    <xs:simpleType name="either"><xs:union memberTypes="t:short">
      <xs:simpleType><xs:restriction base="xs:string"><xs:enumeration value="другое"/>
      </xs:restriction></xs:simpleType></xs:union></xs:simpleType>
    <xs:attributeGroup name="ids"><xs:attribute name="id" use="required"/></xs:attributeGroup>
    <xs:complexType name="base"><xs:sequence><xs:element name="first" type="t:short"/></xs:sequence>
      <xs:attributeGroup ref="t:ids"/><xs:attribute name="n"/></xs:complexType>
    <xs:complexType name="more"><xs:complexContent><xs:extension base="t:base"><xs:all>
      <xs:element name="second" type="t:either"/></xs:all></xs:extension></xs:complexContent>
      </xs:complexType>
    <xs:complexType name="less"><xs:complexContent><xs:restriction base="t:more"><xs:sequence>
      <xs:element name="first" type="t:short"/></xs:sequence><xs:attribute name="n" use="prohibited"/>
      </xs:restriction></xs:complexContent></xs:complexType>
    <xs:complexType name="text"><xs:simpleContent><xs:extension base="t:code">
      <xs:attribute name="list"/></xs:extension></xs:simpleContent></xs:complexType>
    <xs:complexType name="cut"><xs:simpleContent><xs:restriction base="t:text">
      <xs:maxLength value="5"/></xs:restriction></xs:simpleContent></xs:complexType>
    <xs:complexType name="same"><xs:simpleContent><xs:extension base="t:cut"/></xs:simpleContent>
      </xs:complexType>
    <xs:element name="r"><xs:complexType><xs:sequence>
      <xs:element name="m" type="t:more"/><xs:element name="l" type="t:less"/>
      <xs:element name="c" type="t:same"/><xs:element name="i" type="t:list"/>
    </xs:sequence></xs:complexType></xs:element>)");
  EXPECT_EQ(Tree(),
            "r\n  m 1..1 @n @id!\n    first 1..1 token(4)\n    second 1..1 string(6)\n"
            "  l 1..1 @id!\n    first 1..1 token(4)\n  c 1..1 token(5) @list\n  i 1..1 string\n");
}

TEST_F(SchemaTreeTest, ElementsThatHoldThemselvesEndAfterASecondRound) {
  world_.Schema("t.xsd", R"(
    <xs:element name="r"><xs:complexType><xs:sequence><xs:element name="g" type="t:group"/>
      </xs:sequence></xs:complexType></xs:element>
    <xs:complexType name="group"><xs:sequence>
      <xs:element name="name" type="xs:string"/><xs:element name="g" type="t:group" minOccurs="0"/>
      </xs:sequence></xs:complexType>)");
  EXPECT_EQ(Tree(),
            "r\n  g 1..1\n    name 1..1 string\n    g 0..1\n      name 1..1 string\n"
            "      g 0..1 cut\n");
}

TEST_F(SchemaTreeTest, TakesSubstitutesAndOtherFilesOfTheFolder) {
  world_.Schema("t.xsd", R"(<xs:include schemaLocation="part.xsd"/>
    <xs:import namespace="urn:o" schemaLocation="o.xsd"/>
    <xs:import namespace="urn:u" schemaLocation="http://example.org/u.xsd"/>
    <xs:element name="r"><xs:complexType><xs:sequence>
      <xs:element ref="o:head"/><xs:element name="e" type="t:fromPart"/>
    </xs:sequence></xs:complexType></xs:element>
    <xs:element name="one" type="xs:date" substitutionGroup="o:head"/>
    <xs:element name="two" type="xs:date" substitutionGroup="t:one"/>)");
  world_.Schema("o.xsd", R"(<xs:element name="head" type="xs:date" abstract="true"/>)");
  world_.File("part.xsd", R"(<schema xmlns="http://www.w3.org/2001/XMLSchema">
    <simpleType name="fromPart"><restriction base="string"><length value="7"/></restriction>
    </simpleType></schema>)");
  EXPECT_EQ(Tree(),
            "r\n  one 0..1 date(10) {1.1}\n  two 0..1 date(10) {1.2}\n  e 1..1 string(7)\n");
  EXPECT_EQ(world_.files.Count(FileOp::kRead), 3);
}

TEST_F(SchemaTreeTest, NamesFileAndLineOfWhatIsWrong) {
  constexpr const char* kRoot = "<xs:element name=\"r\" type=\"t:x\"/>\n";
  const std::string unusable = "Не могу использовать схему t.xsd, строка ";
  const std::pair<std::string, std::string> cases[] = {
      {"<xs:element name=\"r\" type=\"t:x\"/>", unusable + "2: нет описания типа t:x"},
      {"<xs:element name=\"r\" type=\"q:x\"/>", unusable + "2: не объявлен префикс q"},
      {"<xs:element name=\"q\"/>", "Схема t.xsd не описывает корневой элемент r"},
      {"\n<xs:include schemaLocation=\"no.xsd\"/>", unusable + "3: нет файла no.xsd"},
      {"<xs:include schemaLocation=\"file:///t.xsd\"/>", unusable + "2: нет файла file:///t.xsd"},
      {"<xs:redefine schemaLocation=\"t.xsd\"/>", unusable + "2: xs:redefine не читается"},
      {std::string(kRoot) + "<xs:complexType name=\"x\"><xs:complexContent><xs:extension "
                            "base=\"t:x\"/></xs:complexContent></xs:complexType>",
       "Тип схемы выведен из самого себя"},
      {std::string(kRoot) + "<xs:simpleType name=\"x\"><xs:restriction base=\"t:x\"/>"
                            "</xs:simpleType>",
       "Тип схемы выведен из самого себя"},
      {std::string(kRoot) +
           "<xs:complexType name=\"x\"><xs:group ref=\"t:x\"/></xs:complexType>"
           "<xs:group name=\"x\"><xs:sequence><xs:group ref=\"t:x\"/></xs:sequence>"
           "</xs:group>",
       "Группы схемы вложены слишком глубоко"},
      {"<xs:element name=\"r\">", unusable + "3: "}};
  for (const auto& [content, failure] : cases) {
    world_.Schema("t.xsd", content);
    EXPECT_EQ(Failure().substr(0, failure.size()), failure) << content;
  }
  world_.File("t.xsd", "<!DOCTYPE a [<!ENTITY b SYSTEM \"file:///etc/passwd\">]><a>&b;</a>");
  EXPECT_EQ(Failure(), unusable + "1: DOCTYPE не допускается");
}

// Each type leads to the next, so a reader that recursed would need a stack of that depth.
TEST_F(SchemaTreeTest, LongChainsOfTypesNeedNoStack) {
  constexpr int kLinks = 20000;
  std::string types = "<xs:element name=\"r\" type=\"t:c0\"/>";
  for (int i = 0; i < kLinks; ++i) {
    const std::string number = std::to_string(i);
    const std::string next = i + 1 == kLinks ? "End" : std::to_string(i + 1);
    types += "<xs:complexType name=\"c" + number +
             "\"><xs:complexContent><xs:extension base=\"t:c" + next +
             "\"/></xs:complexContent></xs:complexType>\n<xs:complexType name=\"d" + number +
             "\"><xs:sequence><xs:element name=\"e\" type=\"t:d" + next +
             "\"/></xs:sequence></xs:complexType>\n<xs:simpleType name=\"s" + number +
             "\"><xs:restriction base=\"t:s" + next + "\"/></xs:simpleType>\n";
  }
  types +=
      "<xs:complexType name=\"cEnd\"><xs:attribute name=\"a\" type=\"t:s0\"/></xs:complexType>"
      "<xs:simpleType name=\"sEnd\"><xs:restriction base=\"xs:date\"/></xs:simpleType>"
      "<xs:complexType name=\"dEnd\"/><xs:element name=\"deep\" type=\"t:d0\"/>";
  world_.Schema("t.xsd", types);
  SchemaSet schemas(world_.files, SchemaWorld::kMain);
  const auto attributes = AttributesOf(*schemas.Root("r").complex);
  ASSERT_EQ(attributes.size(), 1U);
  EXPECT_TRUE(IsDate(*attributes.front()->type));
  const Element& deep = schemas.Root("deep");
  EXPECT_THROW(SchemaTree{deep}, Error);
}

}  // namespace
}  // namespace customsconv::schema
