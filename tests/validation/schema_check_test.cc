#include "validation/schema_check.h"

#include <gtest/gtest.h>

#include "support/environment_builder.h"

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

}  // namespace
}  // namespace customsconv
