#include <gtest/gtest.h>

#include "cli_world.h"

namespace customsconv::cli {
namespace {

constexpr const char* kXml = "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n";

// Commands that show or check documents; the schema wants a procedure code of two letters.
class DocumentsTest : public CliWorld, public testing::Test {
 protected:
  DocumentsTest() {
    host.files["C:\\XSD\\ESADout.xsd"] = R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
        <xs:element name="ESADout"><xs:complexType>
          <xs:sequence><xs:element name="Proc"><xs:simpleType>
            <xs:restriction base="xs:string"><xs:maxLength value="2"/></xs:restriction>
          </xs:simpleType></xs:element></xs:sequence>
          <xs:attribute name="a"/>
        </xs:complexType></xs:element></xs:schema>)";
    host.files["C:\\IN\\2.xml"] =
        "<DocBody><ESADout a=\"1\"><Proc>AB</Proc></ESADout></DocBody>"
        "\n<DocBody><ESADout a=\"1\"><Proc>ABC</Proc></ESADout></DocBody>";
  }

  ExitStatus Validate(const std::string& more) {
    return RunProgram(R"(validate --program C:\PROG --schemas C:\XSD )" + more);
  }
};

TEST_F(DocumentsTest, CountsDocumentsWithoutASchema) {
  EXPECT_EQ(Validate("C:\\IN\\2.xml"), kNegative);
  EXPECT_EQ(output.remarks, "2 documents, 0 without a schema, 1 failing\n");
  host.files.Remove("C:\\XSD\\ESADout.xsd");
  EXPECT_EQ(Validate("C:\\IN\\2.xml"), kDone);
  const std::string told =
      "C:\\IN\\2.xml: ЭД ДТ 2 is not checked: there is no schema ESADout.xsd\n";
  const std::string summary = "2 documents, 2 without a schema, 0 failing\n";
  EXPECT_TRUE(output.remarks.ends_with(told + summary)) << output.remarks;
  EXPECT_EQ(Validate("--require-schema C:\\IN\\2.xml"), kNegative);
  EXPECT_TRUE(Printed(told));
}

TEST_F(DocumentsTest, TellsThatTheCheckIsSwitchedOff) {
  host.files["C:\\PROG\\kord.ini"] = "[ED]\r\nCheckXSD=0\r\n";
  EXPECT_EQ(Validate("C:\\IN\\2.xml"), kDone);
  EXPECT_EQ(output.remarks,
            "2 documents, 2 not checked ([ED] CheckXSD=0 in kord.ini), 0 failing\n");
  EXPECT_EQ(Validate("--json C:\\IN\\2.xml"), kDone);
  EXPECT_TRUE(Printed(
      R"("documents":2,"without_schema":0,"switched_off":2,"lines":[],"failing":[],"unchecked":[{)"));
}

TEST_F(DocumentsTest, JsonNamesDocumentLineAndText) {
  EXPECT_EQ(Validate("--json C:\\IN\\2.xml"), kNegative);
  for (
      const char* member :
      {R"({"result":false,"documents":2,"without_schema":0,"switched_off":0,"lines":["ЭД ДТ:)",
       R"("failing":[{"file":"C:\\IN\\2.xml","type":"ЭД ДТ","occurrence":2,"reason":")",
       R"("line":3,"text":"  <Proc>ABC</Proc>","path":"ESADout/Proc","file_line":2}],"unchecked":[],"errors":[],)"
       R"("messages":[]})"}) {
    EXPECT_TRUE(Printed(member));
  }
  EXPECT_EQ(output.remarks, "");
}

// Every fault of the table is in the fourth line of its file.
TEST_F(DocumentsTest, AFaultIsFoundInTheFile) {
  const std::string proc = "<Proc>ABC</Proc></ESADout>";
  const std::string start = kXml + std::string("<ESADout a=\"1\">");
  const std::string files[] = {"\n\n" + start + proc, start + "<Goods>\n</Goods>\n" + proc,
                               kXml + std::string("<!--\n-->\n<ESADout a=\"1\">") + proc,
                               kXml + std::string("<ESADout a=\"1\">\n<!--\n-->") + proc,
                               start + "\n<Old/>\n<p:Proc>ABC</p:Proc></ESADout>"};
  for (const std::string& file : files) {
    host.files["C:\\IN\\1.xml"] = file;
    EXPECT_EQ(Validate("C:\\IN\\1.xml"), kNegative);
    EXPECT_TRUE(output.results.starts_with("C:\\IN\\1.xml: ЭД ДТ:Element 'Proc': "));
    EXPECT_TRUE(Printed(" (ESADout/Proc, line 4 of the file)\n")) << file;
  }
}

TEST_F(DocumentsTest, ExportPrintsOneDocument) {
  EXPECT_EQ(RunProgram(R"(export --program C:\PROG --document 2 C:\IN\2.xml)"), kDone);
  EXPECT_TRUE(Printed("<Proc>ABC</Proc>\r\n"));
  EXPECT_EQ(output.results.find("<Proc>AB</Proc>"), std::string::npos);
  EXPECT_EQ(RunProgram(R"(export --program C:\PROG --document 3 C:\IN\2.xml)"), kNegative);
  EXPECT_EQ(output.results, "");
  EXPECT_EQ(output.remarks, "error: C:\\IN\\2.xml holds 2 documents, there is no document 3\n");
}

TEST_F(DocumentsTest, JsonHoldsWhatIsFilledInFieldOrder) {
  Xml("1",
      "<Goods><Code>a\"\\\t\x01</Code><Part><Sum>1,50</Sum></Part><Part/></Goods><Goods/>"
      "<Proc>ИМ</Proc><Empty></Empty><Old>x</Old>");
  EXPECT_EQ(RunProgram(R"(dump --json --program C:\PROG C:\IN\1.xml)"), kDone);
  EXPECT_EQ(output.results,
            R"({"documents":[{"file":"C:\\IN\\1.xml","code":"ESADout","occurrence":1,"root":{)"
            R"("values":[["Proc","ИМ"]],"blocks":[["Goods",[)"
            R"({"values":[["Code","a\"\\\t\u0001"]],"blocks":[["Part",[)"
            R"({"values":[["Sum","1.50"]],"blocks":[]},{"values":[],"blocks":[]}]]]},)"
            R"({"values":[],"blocks":[]}]]]}}],"unknown_ids":true,"messages":[]})"
            "\n");
  EXPECT_EQ(output.remarks, "");
}

// What was lost before the error is told as well.
TEST_F(DocumentsTest, AnErrorFollowsTheDocumentsBeforeIt) {
  host.files["C:\\IN\\1.xml"] =
      "<DocBody><ESADout a=\"1\"><Proc>A</Proc><Old>x</Old></ESADout></DocBody>"
      "<DocBody><ESADout a=\"1\"><Proc>B";
  EXPECT_EQ(RunProgram(R"(dump --json --program C:\PROG C:\IN\1.xml)"), kError);
  EXPECT_EQ(output.results,
            R"({"documents":[{"file":"C:\\IN\\1.xml","code":"ESADout","occurrence":1,"root":)"
            R"({"values":[["Proc","A"]],"blocks":[]}}],"unknown_ids":true,"messages":[],)"
            R"("error":"Отсутствует окончание документа: </ESADout>"})"
            "\n");
  EXPECT_EQ(output.remarks, "error: Отсутствует окончание документа: </ESADout>\n");
}

}  // namespace
}  // namespace customsconv::cli
