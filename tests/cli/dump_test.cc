#include <gtest/gtest.h>

#include "cli_world.h"

namespace customsconv::cli {
namespace {

class DumpTest : public CliWorld, public testing::Test {
 protected:
  int Dump(const std::string& file, bool json = true) {
    std::vector<std::string> arguments = {"dump", "--program", "C:\\PROG", file};
    if (json) arguments.emplace_back("--json");
    return RunProgram(arguments);
  }
};

TEST_F(DumpTest, JsonHoldsWhatIsFilledInFieldOrder) {
  Xml("1",
      "<Goods><Code>a\"\\\t\x01</Code><Part><Sum>1,50</Sum></Part><Part/></Goods><Goods/>"
      "<Proc>ИМ</Proc><Empty></Empty>");
  EXPECT_EQ(Dump("C:\\IN\\1.xml"), 0);
  EXPECT_EQ(output.results,
            R"({"documents":[{"code":"ESADout","occurrence":1,"root":{)"
            R"("values":[["Proc","ИМ"]],"blocks":[["Goods",[)"
            R"({"values":[["Code","a\"\\\t\u0001"]],"blocks":[["Part",[)"
            R"({"values":[["Sum","1.50"]],"blocks":[]},{"values":[],"blocks":[]}]]]},)"
            R"({"values":[],"blocks":[]}]]]}}],"unknown_ids":false,"messages":[]})"
            "\n");
  EXPECT_EQ(output.remarks, "");
}

TEST_F(DumpTest, TextIsAnIndentedTree) {
  Xml("1", "<Proc>ИМ</Proc><Goods><Code>0101</Code><Part><Sum>1</Sum></Part></Goods>");
  EXPECT_EQ(Dump("C:\\IN\\1.xml", false), 0);
  EXPECT_EQ(output.results,
            "ESADout 1\n  Proc = ИМ\n  Goods 1\n    Code = 0101\n    Part 1\n      Sum = 1\n");
}

TEST_F(DumpTest, TellsOfUnknownNamesAndOfDocumentsWithoutContent) {
  host.files["C:\\IN\\1.xml"] =
      "<DocBody><ESADout a=\"1\"><Old>x</Old></ESADout></DocBody><DocBody><ESADout></DocBody>";
  EXPECT_EQ(Dump("C:\\IN\\1.xml"), 0);
  EXPECT_EQ(output.results,
            R"({"documents":[)"
            R"({"code":"ESADout","occurrence":1,"root":{"values":[],"blocks":[]}},)"
            R"({"code":"ESADout","occurrence":2,"root":{"values":[],"blocks":[]}}],)"
            R"("unknown_ids":true,"messages":[]})"
            "\n");
}

TEST_F(DumpTest, AnErrorFollowsTheDocumentsBeforeIt) {
  host.files["C:\\IN\\1.xml"] =
      "<DocBody><ESADout a=\"1\"><Proc>A</Proc></ESADout></DocBody>"
      "<DocBody><ESADout a=\"1\"><Proc>B";
  EXPECT_EQ(Dump("C:\\IN\\1.xml"), 3);
  EXPECT_EQ(output.results,
            R"({"documents":[{"code":"ESADout","occurrence":1,"root":)"
            R"({"values":[["Proc","A"]],"blocks":[]}}],"unknown_ids":false,"messages":[],)"
            R"("error":"Отсутствует окончание документа: </ESADout>"})"
            "\n");
  EXPECT_EQ(output.remarks, "error: Отсутствует окончание документа: </ESADout>\n");
}

TEST_F(DumpTest, AStartUpThatFailsIsANegativeResult) {
  host.files.Remove("C:\\PROG\\document.dcf");
  EXPECT_EQ(Dump(kFile), 1);
  EXPECT_EQ(output.results.rfind(R"({"documents":[],"unknown_ids":false,"messages":[)", 0), 0U)
      << output.results;
  host.files.Remove("C:\\PROG\\kord.ini");
  EXPECT_EQ(Dump(kFile), 3);
  EXPECT_TRUE(Printed("Не найден файл C:\\\\PROG/Kord.ini"));
}

}  // namespace
}  // namespace customsconv::cli
