#include "validation/schema_check.h"

#include <gtest/gtest.h>

#include "support/environment_builder.h"
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
  EXPECT_EQ(Check("<r/>"), "X is bad<br>Строка XML № 3 (от начала документа r)<BR> Текст: X1/X");
}

TEST_F(SchemaCheckTest, ChecksNothingWhereThereIsNothingToCheck) {
  EXPECT_EQ(Check("<other/>"), "");
  world.config().WriteString("ED", "CheckXSD", "0");
  EXPECT_EQ(Check("not xml"), "");
  EXPECT_EQ(services.log, "");
  world.config().WriteString("ED", "CheckXSD", "1");
  EXPECT_EQ(Check("not xml"), "< expected");
}

// ---- with the services of this platform

constexpr const char* kSchemaHead =
    "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" targetNamespace=\"urn:x\" "
    "xmlns=\"urn:x\" elementFormDefault=\"qualified\">";

class LibXmlTest : public testing::Test {
 protected:
  LibXmlTest() {
    world.environment.aux_path = "C:\\XSD\\";
    Schema("r.xsd",
           "<xs:element name=\"r\"><xs:complexType><xs:sequence>"
           "<xs:element name=\"n\" maxOccurs=\"unbounded\"><xs:simpleType>"
           "<xs:restriction base=\"xs:string\"><xs:maxLength value=\"3\"/></xs:restriction>"
           "</xs:simpleType></xs:element></xs:sequence></xs:complexType></xs:element>");
  }

  void Schema(const std::string& name, const std::string& body) {
    world.host.files["C:\\XSD\\" + name] = kSchemaHead + body + "</xs:schema>";
  }
  SchemaVerdict Check(const std::string& text) {
    return check.ValidateXml(text, world.environment);
  }
  std::string Error(const std::string& text) { return Utf8(Check(text).error_text); }

  TestEnvironment world;
  LibXmlServices services{world.host.files};
  SchemaCheck check{services};
};

constexpr const char* kEmptyDocument = "<r xmlns=\"urn:x\"/>";
const std::string kUnusable = "Не могу использовать схему C:\\XSD\\r.xsd";

std::string Doc(const std::string& body) { return "<r xmlns=\"urn:x\">\r\n" + body + "\r\n</r>"; }

TEST_F(LibXmlTest, NamesElementFoundAndExpectedWithItsLine) {
  const struct {
    const char *body, *reason;
    int line;
  } cases[] = {
      {"<n>ЖЖЖ</n>", "", 0},
      {"<n>1</n>\r\n<n>ЖЖЖЖ</n>",
       "Element 'n': [facet 'maxLength'] The value has a length of '4'; this exceeds the allowed "
       "maximum length of '3'.",
       3},
      {"<m/>", "Element 'm': This element is not expected. Expected is ( n ).", 2},
      {"", "Element 'r': Missing child element(s). Expected is ( n ).", 3},
      {"<n>&bomb;</n>", "Entity 'bomb' not defined", 2},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.body);
    for (const std::string& text : {Doc(c.body), Win(Doc(c.body))}) {
      const SchemaVerdict verdict = Check(text);
      EXPECT_TRUE(verdict.checked);
      EXPECT_EQ(verdict.reason, c.reason);
      EXPECT_EQ(verdict.line, c.line);
    }
  }
}

TEST_F(LibXmlTest, KeepsItsPlaceInLongDocuments) {
  std::string body;
  for (int i = 0; i < 70000; ++i) body += "<n>Ж</n>\r\n";
  EXPECT_EQ(Error(Doc(body)), "");
  const SchemaVerdict verdict = Check(Doc(body + "<n>12345</n>"));
  EXPECT_EQ(verdict.line, 70002);
  EXPECT_EQ(verdict.line_text, "<n>12345</n>");
}

TEST_F(LibXmlTest, CompilesASchemaOnceWhileItsFilesStay) {
  const auto text_type = [this](const std::string& facet) {
    Schema("t.xsd", "<xs:simpleType name=\"t\"><xs:restriction base=\"xs:string\">" + facet +
                        "</xs:restriction></xs:simpleType>");
  };
  text_type("");
  Schema("r.xsd", "<xs:include schemaLocation=\"t.xsd\"/><xs:element name=\"r\" type=\"t\"/>");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Error(kEmptyDocument), "");
  EXPECT_EQ(services.compilations(), 1);
  text_type("<xs:minLength value=\"1\"/>");
  EXPECT_NE(Error(kEmptyDocument), "");
  EXPECT_EQ(services.compilations(), 2);
}

TEST_F(LibXmlTest, ReadsNothingOutsideTheSchemaFolder) {
  world.host.files["C:\\OTHER.xsd"] =
      std::string(kSchemaHead) + "<xs:element name=\"r\"/></xs:schema>";
  for (const char* place : {"../OTHER.xsd", "..\\OTHER.xsd", "C:\\OTHER.xsd", "file:///etc/passwd",
                            "/etc/passwd", "http://127.0.0.1:1/x.xsd", "%2e%2e/OTHER.xsd"}) {
    SCOPED_TRACE(place);
    Schema("r.xsd", std::string("<xs:include schemaLocation=\"") + place + "\"/>");
    world.host.files.ResetCounts();
    EXPECT_EQ(Error(kEmptyDocument).rfind(kUnusable, 0), 0U);
    EXPECT_LE(world.host.files.Count(FileOp::kRead), 2);
  }
}

TEST_F(LibXmlTest, ADocumentBringsNothingOfItsOwn) {
  world.host.files.ResetCounts();
  // The parser of the texts ends at a document type: there is no root to check.
  const std::string type = "<?xml version=\"1.0\"?><!DOCTYPE r SYSTEM \"file:///etc/passwd\">";
  EXPECT_EQ(Error(type + kEmptyDocument), "");
  EXPECT_EQ(Error("<r xmlns=\"urn:x\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                  "xsi:schemaLocation=\"urn:y file:///etc/passwd\"><n>1</n></r>"),
            "");
  EXPECT_EQ(world.host.files.Count(FileOp::kRead), 1);
}

TEST_F(LibXmlTest, ASchemaThatCannotBeUsedIsAnError) {
  const std::pair<const char*, std::string> cases[] = {
      {"<xs:element name=\"r\">", kUnusable + ", строка 1: "},  // cut off
      {"<xs:element name=\"r\" type=\"none\"/>", kUnusable + ", строка 1: "},
      {"<xs:include schemaLocation=\"r.xsd\"/><xs:element name=\"r\"/>",
       kUnusable + ", строка 1: Element 'include': The schema document 'r.xsd' cannot include "},
      {"<xs:element name=\"r\"/>",
       "Схема C:\\XSD\\r.xsd описывает пространство имен \"urn:x\", а в документе указано "
       "\"urn:y\""}};
  for (const auto& [schema, beginning] : cases) {
    Schema("r.xsd", schema);
    const std::string error = Error("<r xmlns=\"urn:y\"/>");
    EXPECT_EQ(error.substr(0, beginning.size()), beginning) << schema << ": " << error;
  }
}

TEST_F(LibXmlTest, DeepNestingIsAnErrorText) {
  std::string deep = "<r xmlns=\"urn:x\">";
  for (int i = 0; i < 100000; ++i) deep += "<n>";
  EXPECT_NE(Error(deep), "");
}

}  // namespace
}  // namespace customsconv
