#include "validation/schema_check.h"

#include <gtest/gtest.h>

#include "support/environment_builder.h"
#include "validation/libxml_services.h"

namespace customsconv {
namespace {

// Services of one version that find what the test says.
class ScriptedServices : public XmlServices {
 public:
  class Document : public XmlDocumentService {
   public:
    explicit Document(ScriptedServices& owner) : owner_(owner) {}
    void SetAsync(bool async) override { owner_.log += async ? "async " : "sync "; }
    void SetValidateOnParse(bool on) override { owner_.log += on ? "validate " : "parse "; }
    void SetSchemas(XmlSchemaCache&) override { owner_.log += "schemas "; }
    bool LoadXml(std::string_view text) override {
      owner_.loaded = text;
      return owner_.report.error_code == 0;
    }
    [[nodiscard]] const XmlParseReport& ParseError() const override { return owner_.report; }

   private:
    ScriptedServices& owner_;
  };
  class Cache : public XmlSchemaCache {
   public:
    explicit Cache(ScriptedServices& owner) : owner_(owner) {}
    void Add(std::string_view name_space, std::string_view file) override {
      owner_.log += "add(" + std::string(name_space) + "," + std::string(file) + ") ";
    }

   private:
    ScriptedServices& owner_;
  };

  std::unique_ptr<XmlDocumentService> CreateDocument(std::string_view name) override {
    log += std::string(name) + " ";
    return name.find(versions) == std::string_view::npos ? nullptr
                                                         : std::make_unique<Document>(*this);
  }
  std::unique_ptr<XmlSchemaCache> CreateSchemaCache(std::string_view name) override {
    log += std::string(name) + " ";
    return std::make_unique<Cache>(*this);
  }

  std::string versions = "6.0";  // the one that is there
  XmlParseReport report;
  std::string loaded;
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

TEST_F(SchemaCheckTest, DrivesTheServicesInOrder) {
  EXPECT_EQ(Check("<r xmlns=\"urn:x\"/>"), "");
  EXPECT_EQ(services.log,
            "Msxml2.DOMDocument.6.0 sync validate Msxml2.XMLSchemaCache.6.0 "
            "add(urn:x,C:\\XSD\\r.xsd) schemas sync validate ");
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

TEST_F(SchemaCheckTest, HandsTheTextOverInOneCodePage) {
  for (const std::string& text : {std::string("<r>Ж</r>"), Win("<r>Ж</r>")}) {
    EXPECT_EQ(Check(text), "");
    EXPECT_EQ(services.loaded, Win("<r>Ж</r>"));
  }
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

std::string Doc(const std::string& body) { return "<r xmlns=\"urn:x\">\r\n" + body + "\r\n</r>"; }

TEST_F(LibXmlTest, NamesElementFoundAndExpectedWithItsLine) {
  const struct {
    const char* body;
    const char* reason;
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
  Schema("t.xsd", "<xs:simpleType name=\"t\"><xs:restriction base=\"xs:string\"/></xs:simpleType>");
  Schema("r.xsd", "<xs:include schemaLocation=\"t.xsd\"/><xs:element name=\"r\" type=\"t\"/>");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Error("<r xmlns=\"urn:x\"/>"), "");
  EXPECT_EQ(services.compilations(), 1);
  Schema("t.xsd",
         "<xs:simpleType name=\"t\"><xs:restriction base=\"xs:string\"><xs:minLength value=\"1\"/>"
         "</xs:restriction></xs:simpleType>");
  EXPECT_NE(Error("<r xmlns=\"urn:x\"/>"), "");
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
    EXPECT_EQ(Error("<r xmlns=\"urn:x\"/>").rfind("Не могу использовать схему C:\\XSD\\r.xsd", 0),
              0U);
    EXPECT_LE(world.host.files.Count(FileOp::kRead), 2);
  }
}

TEST_F(LibXmlTest, ADocumentBringsNothingOfItsOwn) {
  world.host.files.ResetCounts();
  EXPECT_EQ(
      Error(
          "<?xml version=\"1.0\"?><!DOCTYPE r SYSTEM \"file:///etc/passwd\"><r xmlns=\"urn:x\"/>"),
      "");  // the parser of the texts ends at a document type: there is no root to check
  EXPECT_EQ(Error("<r xmlns=\"urn:x\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                  "xsi:schemaLocation=\"urn:y file:///etc/passwd\"><n>1</n></r>"),
            "");
  EXPECT_EQ(world.host.files.Count(FileOp::kRead), 1);
}

TEST_F(LibXmlTest, ASchemaThatCannotBeUsedIsAnError) {
  const struct {
    const char* what;
    const char* schema;
    const char* text;
    const char* error;
  } cases[] = {
      {"cut off", "<xs:element name=\"r\">", "<r xmlns=\"urn:x\"/>",
       "Не могу использовать схему C:\\XSD\\r.xsd, строка 1: "},
      {"unknown type", "<xs:element name=\"r\" type=\"none\"/>", "<r xmlns=\"urn:x\"/>",
       "Не могу использовать схему C:\\XSD\\r.xsd, строка 1: "},
      {"another namespace", "<xs:element name=\"r\"/>", "<r xmlns=\"urn:y\"/>",
       "Схема C:\\XSD\\r.xsd описывает пространство имен \"urn:x\", а в документе указано "
       "\"urn:y\""},
      {"itself", "<xs:include schemaLocation=\"r.xsd\"/><xs:element name=\"r\"/>",
       "<r xmlns=\"urn:x\"/>",
       "Не могу использовать схему C:\\XSD\\r.xsd, строка 1: Element 'include': The schema "
       "document 'r.xsd' cannot include itself."},
  };
  for (const auto& c : cases) {
    Schema("r.xsd", c.schema);
    const std::string error = Error(c.text);
    EXPECT_EQ(error.substr(0, std::string(c.error).size()), c.error) << c.what << ": " << error;
  }
}

TEST_F(LibXmlTest, DeepNestingIsAnErrorText) {
  std::string deep = "<r xmlns=\"urn:x\">";
  for (int i = 0; i < 100000; ++i) deep += "<n>";
  const std::string error = Error(deep);
  EXPECT_NE(error, "");
}

}  // namespace
}  // namespace customsconv
