#include "validation/schema_check.h"

#include <gtest/gtest.h>

#include "support/environment_builder.h"
#include "text/words.h"
#include "validation/libxml_services.h"

namespace customsconv {
namespace {

// Services of one version that report what the test says and note what they are asked for.
class ScriptedServices : public XmlServices {
 public:
  struct Service : XmlDocumentService, XmlSchemaCache {
    explicit Service(ScriptedServices& services) : owner(services) {}
    void SetAsync(bool async) override { owner.log += async ? "async " : "sync "; }
    void SetValidateOnParse(bool on) override { owner.log += on ? "validate " : "parse "; }
    void SetSchemas(XmlSchemaCache&) override { owner.log += "schemas "; }
    bool LoadXml(std::string_view text) override {
      owner.log += "load(" + Utf8(text) + ") ";
      return owner.report.error_code == 0;
    }
    [[nodiscard]] const XmlParseReport& ParseError() const override { return owner.report; }
    void Add(std::string_view name_space, std::string_view file) override {
      owner.log += "add(" + std::string(name_space) + "," + std::string(file) + ") ";
    }
    ScriptedServices& owner;
  };

  std::unique_ptr<XmlDocumentService> CreateDocument(std::string_view name) override {
    log += std::string(name) + " ";
    if (name.find(versions) == std::string_view::npos) return nullptr;
    return std::make_unique<Service>(*this);
  }
  std::unique_ptr<XmlSchemaCache> CreateSchemaCache(std::string_view name) override {
    log += std::string(name) + " ";
    return std::make_unique<Service>(*this);
  }

  std::string versions = "6.0";  // the one that is there
  XmlParseReport report;
  std::string log;
};

class SchemaCheckTest : public testing::Test {
 protected:
  SchemaCheckTest() {
    world.environment.aux_path = "C:\\XSD\\";
    world.host.files["C:\\XSD\\r.xsd"] = "x";
  }

  std::string Check(std::string_view text) {
    return Utf8(check.ValidateXml(text, world.environment).error_text);
  }

  TestEnvironment world;
  ScriptedServices services;
  SchemaCheck check{services};
};

TEST_F(SchemaCheckTest, DrivesTheServicesInOrderWithTextInOneCodePage) {
  const std::string text = "<r xmlns=\"urn:x\">Ж</r>";
  for (const std::string& encoded : {text, Win(text)}) {
    services.log.clear();
    EXPECT_EQ(Check(encoded), "");
    EXPECT_EQ(services.log,
              "Msxml2.DOMDocument.6.0 sync validate Msxml2.XMLSchemaCache.6.0 "
              "add(urn:x,C:\\XSD\\r.xsd) schemas load(" +
                  text + ") sync validate ");
  }
}

TEST_F(SchemaCheckTest, FallsBackToOlderVersionsAndRemembersTheLast) {
  services.versions = "4.0";
  EXPECT_EQ(Check("<r/>"), "");
  services.log.clear();
  EXPECT_EQ(Check("<r/>"), "");
  EXPECT_EQ(services.log.substr(0, 23), "Msxml2.DOMDocument.4.0 ");
  services.versions = "none";
  EXPECT_EQ(Check("<r/>"),
            "Не обнаружен компонент для проверки (MSXML).\rУстановите его с дистрибутивного CD "
            "фирмы Вельт или скачайте со странички <a href=\"https://example.org/xml-component\">"
            "https://example.org/xml-component</a>");
}

TEST_F(SchemaCheckTest, ComposesTheErrorText) {
  services.report = {
      .error_code = 1, .reason = "{urn:a.b}X is bad", .line = 3, .src_text = "<X>{a:b}1</X>"};
  EXPECT_EQ(Check("not xml"), "< expected");
  EXPECT_EQ(Check("<r/>"), "X is bad<br>Строка XML № 3 (от начала документа r)<BR> Текст: X1/X");
}

// Documents of the root "r" in the namespace "urn:x", checked against C:\XSD\r.xsd.
class LibXmlTest : public testing::Test {
 protected:
  LibXmlTest() {
    world.environment.aux_path = "C:\\XSD\\";
    ListOf(R"(<xs:maxLength value="3"/>)");
  }

  // A schema file with this content.
  void Schema(const std::string& name, const std::string& body,
              const std::string& space = "urn:x") {
    world.host.files["C:\\XSD\\" + name] =
        R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema" xmlns="urn:x" xmlns:y="urn:y")"
        R"( elementFormDefault="qualified" targetNamespace=")" +
        space + "\">" + body + "</xs:schema>";
  }
  // The root holds elements "n", texts of this restriction, under a further constraint.
  void ListOf(const std::string& facets, const std::string& constraint = "") {
    Schema("r.xsd", R"(<xs:element name="r">
        <xs:complexType><xs:sequence><xs:element name="n" maxOccurs="unbounded">
          <xs:simpleType><xs:restriction base="xs:string">)" +
                        facets + R"(</xs:restriction></xs:simpleType>
        </xs:element></xs:sequence></xs:complexType>)" +
                        constraint + "</xs:element>");
  }

  SchemaVerdict Check(const std::string& text) {
    return check.ValidateXml(text, world.environment);
  }
  std::string Error(const std::string& text) { return Utf8(Check(text).error_text); }
  std::string Reason(const std::string& text) { return Utf8(Check(text).reason); }

  TestEnvironment world;
  LibXmlServices services{world.host.files};
  SchemaCheck check{services};
};

constexpr const char* kEmptyDocument = R"(<r xmlns="urn:x"/>)";
const std::string kUnusable = "Не могу использовать схему C:\\XSD\\r.xsd";

std::string Doc(const std::string& body) { return "<r xmlns=\"urn:x\">\r\n" + body + "\r\n</r>"; }

// The user's line loses short texts in braces, which there are namespaces. So a pattern, whose
// counts would go, is not named, and a value that would be another one without its braces shows
// that something is left out; the reason by itself keeps it.
TEST_F(LibXmlTest, NamesElementFoundAndExpectedWithItsLine) {
  const char* digits = R"(<xs:pattern value="[0-9]{10}"/>)";
  const struct {
    const char *facets, *body;
    std::string reason;
    int line = 2;
    std::string shown{};  // where the user's line has another text
  } cases[] = {
      {"", "<n>ЖЖЖ</n>", "", 0},
      {R"(<xs:maxLength value="3"/>)", "<n>1</n>\r\n<n>ЖЖЖЖ</n>",
       "Element 'n': [facet 'maxLength'] The value has a length of '4'; this exceeds the allowed "
       "maximum length of '3'.",
       3},
      {"", "<m/>", "Element 'm': This element is not expected. Expected is ( n )."},
      {"", "<n a='1'>1</n>", "Element 'n', attribute 'a': The attribute 'a' is not allowed."},
      {"", "<n>&bomb;</n>", "Entity 'bomb' not defined"},
      {digits, "<n>77</n>",
       "Element 'n': [facet 'pattern'] The value '77' is not accepted by the pattern of its type."},
      {digits, "<n>a{10}b  c</n>",
       "Element 'n': [facet 'pattern'] The value 'a{10}b  c' is not accepted by the pattern of its "
       "type.",
       2,
       "Element 'n': [facet 'pattern'] The value 'a…b  c' is not accepted by the pattern of its "
       "type."},
      {R"(<xs:enumeration value="{a}A"/><xs:enumeration value="{b c}"/>)", "<n>{urn:x}n</n>",
       "Element 'n': [facet 'enumeration'] The value '{urn:x}n' is not an element of the set "
       "{'{a}A', '{b c}'}.",
       2,
       "Element 'n': [facet 'enumeration'] The value '…n' is not an element of the set {'…A', '{b "
       "c}'}."},
      {R"(<xs:enumeration value="Ж"/>)", "<n>{Ж}Ж</n>",
       "Element 'n': [facet 'enumeration'] The value '{Ж}Ж' is not an element of the set {'Ж'}."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.body);
    ListOf(c.facets);
    for (const std::string& text : {Doc(c.body), Win(Doc(c.body))}) {
      const SchemaVerdict verdict = Check(text);
      EXPECT_EQ(verdict.outcome, SchemaVerdict::Outcome::kChecked);
      EXPECT_EQ(Utf8(verdict.reason), c.reason);
      EXPECT_EQ(verdict.line, c.line);
      const std::string line = Utf8(verdict.error_text);
      EXPECT_EQ(line.substr(0, line.find("<br>")), c.shown.empty() ? c.reason : c.shown);
    }
  }
}

// Names in messages come with their namespace in braces, values may look like that.
TEST_F(LibXmlTest, OnlyNamespacesAreTakenOutOfAReason) {
  ListOf("", R"(<xs:unique name="u" xmlns:x="urn:x"><xs:selector xpath="x:n"/><xs:field xpath="."/>
                </xs:unique>)");
  EXPECT_EQ(Reason(Doc("<n>{urn:x}u</n><n>{urn:x}u</n>")),
            "Element 'n': Duplicate key-sequence ['{urn:x}u'] in unique identity-constraint 'u'.");
  Schema("r.xsd", R"(<xs:simpleType name="t"><xs:restriction base="xs:int"/></xs:simpleType>
                     <xs:element name="r" type="t"/>)");
  EXPECT_EQ(Reason(R"(<r xmlns="urn:x">{urn:x}t</r>)"),
            "Element 'r': '{urn:x}t' is not a valid value of the atomic type 't'.");
}

TEST_F(LibXmlTest, BearsLongAndDeepDocuments) {
  std::string body;
  for (int i = 0; i < 70000; ++i) body += "<n>Ж</n>\r\n";
  EXPECT_EQ(Error(Doc(body)), "");
  const SchemaVerdict verdict = Check(Doc(body + "<n>12345</n>"));
  EXPECT_EQ(verdict.line, 70002);
  EXPECT_EQ(verdict.line_text, "<n>12345</n>");
  EXPECT_NE(Error(ReplaceAll(Doc(body), "Ж</n>", "")), "");
}

TEST_F(LibXmlTest, CompilesASchemaOnceWhileItsFilesStay) {
  const auto text_type = [this](const std::string& facet) {
    Schema("t.xsd", R"(<xs:simpleType name="t"><xs:restriction base="xs:string">)" + facet +
                        "</xs:restriction></xs:simpleType>");
  };
  text_type("");
  Schema("r.xsd", R"(<xs:include schemaLocation="t.xsd"/><xs:element name="r" type="t"/>)");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Error(kEmptyDocument), "");
  EXPECT_EQ(services.compilations(), 1);
  text_type(R"(<xs:minLength value="1"/>)");
  EXPECT_NE(Error(kEmptyDocument), "");
  EXPECT_EQ(services.compilations(), 2);
}

TEST_F(LibXmlTest, ReadsNothingOutsideTheSchemaFolder) {
  world.host.files["C:\\OTHER.xsd"] = world.host.files["C:\\XSD\\r.xsd"].bytes();
  for (const std::string place :
       {"../OTHER.xsd", "..\\OTHER.xsd", "C:\\OTHER.xsd", "file:///etc/passwd", "/etc/passwd",
        "http://127.0.0.1:1/x.xsd", "%2e%2e/OTHER.xsd"}) {
    SCOPED_TRACE(place);
    Schema("r.xsd", R"(<xs:include schemaLocation=")" + place + "\"/>");
    world.host.files.ResetCounts();
    const std::string error = Error(kEmptyDocument);
    EXPECT_EQ(error.rfind(kUnusable, 0), 0U) << error;
    EXPECT_LE(world.host.files.Count(FileOp::kRead), 2);
  }
}

TEST_F(LibXmlTest, ADocumentBringsNothingOfItsOwn) {
  world.host.files.ResetCounts();
  EXPECT_EQ(Error(R"(<r xmlns="urn:x" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance")"
                  R"( xsi:schemaLocation="urn:y file:///etc/passwd"><n>1</n></r>)"),
            "");
  EXPECT_EQ(world.host.files.Count(FileOp::kRead), 1);
  // The check finds no root behind a document type, so the service is asked by itself.
  const auto document = services.CreateDocument("Msxml2.DOMDocument.6.0");
  EXPECT_FALSE(document->LoadXml(R"(<!DOCTYPE r SYSTEM "file:///etc/passwd"><r/>)"));
  EXPECT_EQ(document->ParseError().reason, "A document type declaration (DOCTYPE) is not allowed.");
}

// Foreign schemas name others that brokers do not have; what nothing uses is not missed.
TEST_F(LibXmlTest, AMissingImportMattersWhereItIsUsed) {
  const std::string import = R"(<xs:import namespace="urn:y" schemaLocation=")";
  for (const std::string place : {"y.xsd", "http://127.0.0.1:1/y.xsd"}) {
    SCOPED_TRACE(place);
    Schema("r.xsd", import + place + R"("/><xs:element name="r" type="xs:string"/>)");
    EXPECT_EQ(Error(kEmptyDocument), "");
    EXPECT_NE(Error(R"(<r xmlns="urn:x"><m/></r>)"), "");
  }
  Schema("r.xsd", import + R"(y.xsd"/><xs:element name="r" type="y:t"/>)");
  const std::string error = Error(kEmptyDocument);
  EXPECT_EQ(error.rfind(kUnusable + ", строка 1: ", 0), 0U) << error;
  EXPECT_NE(error.find("'t' does not resolve to a(n) type definition. (Не найден файл "
                       "C:\\XSD\\y.xsd)"),
            std::string::npos)
      << error;
  Schema("y.xsd", R"(<xs:simpleType name="t"><xs:restriction base="xs:string"/></xs:simpleType>)",
         "urn:y");
  EXPECT_EQ(Error(kEmptyDocument), "") << "it is looked for again";
  world.host.files["C:\\XSD\\y.xsd"] = "<xs:schema";
  EXPECT_EQ(Error(kEmptyDocument).rfind(kUnusable + " (y.xsd), строка 1: ", 0), 0U);
}

TEST_F(LibXmlTest, ASchemaThatCannotBeUsedIsAnError) {
  const std::pair<const char*, std::string> cases[] = {
      {R"(<xs:element name="r">)", kUnusable + ", строка 1: "},  // cut off
      {R"(<xs:element name="r" type="none"/>)", kUnusable + ", строка 1: "},
      {R"(<xs:include schemaLocation="r.xsd"/><xs:element name="r"/>)",
       kUnusable + ", строка 1: Element 'include': The schema document 'r.xsd' cannot include "},
      {R"(<xs:include schemaLocation="t.xsd"/><xs:element name="r"/>)",
       kUnusable + ", строка 1: Element 'include': Failed to load the document 't.xsd' for "
                   "inclusion. (Не найден файл C:\\XSD\\t.xsd)"},
      {R"(<xs:include schemaLocation="http://example.org/t.xsd"/><xs:element name="r"/>)",
       kUnusable + ", строка 1: Element 'include': Failed to load the document "
                   "'http://example.org/t.xsd' for inclusion. (http://example.org/t.xsd лежит вне "
                   "папки схем)"},
      {R"(<xs:element name="r"/>)",
       "Схема C:\\XSD\\r.xsd описывает пространство имен \"urn:x\", а в документе указано "
       "\"urn:y\""}};
  for (const auto& [schema, beginning] : cases) {
    Schema("r.xsd", schema);
    const std::string error = Error(R"(<r xmlns="urn:y"/>)");
    EXPECT_EQ(error.substr(0, beginning.size()), beginning) << schema << ": " << error;
  }
}

}  // namespace
}  // namespace customsconv
