#include <gtest/gtest.h>

#include "cli_world.h"

namespace customsconv::cli {
namespace {

// The declaration's own schema: one procedure code of two letters.
class ValidateTest : public CliWorld, public testing::Test {
 protected:
  ValidateTest() {
    host.files["C:\\XSD\\ESADout.xsd"] = R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
        <xs:element name="ESADout"><xs:complexType>
          <xs:sequence><xs:element name="Proc"><xs:simpleType>
            <xs:restriction base="xs:string"><xs:maxLength value="2"/></xs:restriction>
          </xs:simpleType></xs:element></xs:sequence>
          <xs:attribute name="a"/>
        </xs:complexType></xs:element></xs:schema>)";
    host.files["C:\\IN\\2.xml"] =
        "<DocBody><ESADout a=\"1\"><Proc>AB</Proc></ESADout></DocBody>"
        "<DocBody><ESADout a=\"1\"><Proc>ABC</Proc></ESADout></DocBody>";
  }

  ExitStatus Validate(const std::string& more) {
    return RunProgram(R"(validate --program C:\PROG --schemas C:\XSD )" + more);
  }
};

TEST_F(ValidateTest, CountsDocumentsWithoutASchema) {
  EXPECT_EQ(Validate("C:\\IN\\2.xml"), kNegative);
  EXPECT_EQ(output.remarks, "2 documents, 0 without a schema, 1 failing\n");
  host.files.Remove("C:\\XSD\\ESADout.xsd");
  EXPECT_EQ(Validate("C:\\IN\\2.xml"), kDone);
  EXPECT_EQ(output.remarks, "2 documents, 2 without a schema, 0 failing\n");
}

TEST_F(ValidateTest, TellsThatTheCheckIsSwitchedOff) {
  host.files["C:\\PROG\\kord.ini"] = "[ED]\r\nCheckXSD=0\r\n";
  EXPECT_EQ(Validate("C:\\IN\\2.xml"), kDone);
  EXPECT_EQ(output.remarks,
            "2 documents, 2 not checked ([ED] CheckXSD=0 in kord.ini), 0 failing\n");
  EXPECT_EQ(Validate("--json C:\\IN\\2.xml"), kDone);
  EXPECT_TRUE(Printed(R"("documents":2,"without_schema":0,"switched_off":2,"lines":[])"));
}

TEST_F(ValidateTest, JsonNamesDocumentLineAndText) {
  EXPECT_EQ(Validate("--json C:\\IN\\2.xml"), kNegative);
  for (const char* member :
       {R"({"result":false,"documents":2,"without_schema":0,"switched_off":0,"lines":["ЭД ДТ:)",
        R"("failing":[{"file":"C:\\IN\\2.xml","type":"ЭД ДТ","occurrence":2,"reason":")",
        R"("line":3,"text":"  <Proc>ABC</Proc>"}],"messages":[]})"}) {
    EXPECT_TRUE(Printed(member));
  }
  EXPECT_EQ(output.remarks, "");
}

TEST_F(ValidateTest, ExportPrintsOneDocument) {
  EXPECT_EQ(RunProgram(R"(export --program C:\PROG --document 2 C:\IN\2.xml)"), kDone);
  EXPECT_TRUE(Printed("<Proc>ABC</Proc>\r\n"));
  EXPECT_EQ(output.results.find("<Proc>AB</Proc>"), std::string::npos);
  EXPECT_EQ(RunProgram(R"(export --program C:\PROG --document 3 C:\IN\2.xml)"), kNegative);
  EXPECT_EQ(output.results, "");
  EXPECT_EQ(output.remarks, "error: C:\\IN\\2.xml holds 2 documents, there is no document 3\n");
}

}  // namespace
}  // namespace customsconv::cli
