#include <gtest/gtest.h>

#include "cli_world.h"

namespace customsconv::cli {
namespace {

class CatalogueTest : public CliWorld, public testing::Test {};

// The page of the catalogue shows the same as text.
TEST_F(CatalogueTest, JsonHoldsTypesAndTheirFieldTrees) {
  EXPECT_EQ(RunProgram(R"(catalogue list --json --program C:\PROG)"), kDone);
  EXPECT_TRUE(
      Printed(R"({"code":"ESADout","short_name":"ЭД ДТ","full_name":"","main_block":"Goods",)"
              R"("table":"","root":"ESADout","file":"C:\\PROG/Data\\Kordwin.dcf"})"));
  EXPECT_EQ(RunProgram(R"(catalogue show --json --program C:\PROG ESADout)"), kDone);
  for (const char* part :
       {R"({"fields":[{"name":"Proc","caption":"Вид","xml_path":"Proc","type":"C","width":2,)",
        R"("block":[{"name":"Sum","caption":"","xml_path":"Sum","type":"N","width":13,"lines":1,)",
        R"("decimals":2}]}]}],"messages":[]})"}) {
    EXPECT_TRUE(Printed(part));
  }
  host.files["C:\\PROG\\Data\\Kordwin.dcf"] =
      WinLines("[X.HEADER]\nShortName=x\n[X.Fields]\nA=Ж5 |\n");
  EXPECT_EQ(RunProgram(R"(catalogue show --program C:\PROG X)"), kDone);
  EXPECT_TRUE(Printed("  A  Ж 5\n")) << "a type letter of any kind";
}

TEST_F(CatalogueTest, DraftWritesATypeInTheCataloguesOwnEncoding) {
  host.files["C:\\XSD\\Note.xsd"] =
      "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" targetNamespace=\"urn:n\" "
      "elementFormDefault=\"qualified\"><xs:element name=\"Note\"><xs:complexType><xs:sequence>"
      "<xs:element name=\"Day\" type=\"xs:date\"><xs:annotation><xs:documentation>День"
      "</xs:documentation></xs:annotation></xs:element></xs:sequence></xs:complexType></xs:element>"
      "</xs:schema>";
  EXPECT_EQ(RunProgram(R"(catalogue draft --output C:\PROG\Data\Note.dcf C:\XSD\Note.xsd)"), kDone);
  EXPECT_EQ(output.results, "");
  EXPECT_EQ(RunProgram(R"(catalogue show --program C:\PROG Note)"), kDone);
  EXPECT_EQ(output.results, "Note  Note  C:\\PROG/Data\\Note.dcf\n  Day  D 1  <Day>  День\n");
  const std::string draft = host.files["C:\\PROG\\Data\\Note.dcf"].bytes();
  EXPECT_EQ(RunProgram(R"(catalogue draft C:\XSD\Note.xsd)"), kDone);
  EXPECT_EQ(output.results, draft);
  EXPECT_EQ(RunProgram(R"(catalogue draft --json C:\XSD\Note.xsd)"), kDone);
  EXPECT_TRUE(Printed("|День NAMESPACE=\\\"Day\\\"\\r\\n\",\"messages\":[]}"));
  EXPECT_EQ(RunProgram(R"(catalogue draft --root No C:\XSD\Note.xsd)"), kError);
  EXPECT_EQ(output.remarks, "error: Схема Note.xsd не описывает корневой элемент No\n");
}

}  // namespace
}  // namespace customsconv::cli
