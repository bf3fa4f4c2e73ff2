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
      "<Proc>ИМ</Proc><Empty></Empty><Old>x</Old>");
  EXPECT_EQ(Dump("C:\\IN\\1.xml"), 0);
  EXPECT_EQ(output.results,
            R"({"documents":[{"code":"ESADout","occurrence":1,"root":{)"
            R"("values":[["Proc","ИМ"]],"blocks":[["Goods",[)"
            R"({"values":[["Code","a\"\\\t\u0001"]],"blocks":[["Part",[)"
            R"({"values":[["Sum","1.50"]],"blocks":[]},{"values":[],"blocks":[]}]]]},)"
            R"({"values":[],"blocks":[]}]]]}}],"unknown_ids":true,"messages":[]})"
            "\n");
  EXPECT_EQ(output.remarks, "");
}

TEST_F(DumpTest, TextIsAnIndentedTree) {
  Xml("1", "<Proc>ИМ</Proc><Goods><Code>0101</Code><Part><Sum>1</Sum></Part></Goods>");
  EXPECT_EQ(Dump("C:\\IN\\1.xml", false), 0);
  EXPECT_EQ(output.results,
            "ESADout 1\n  Proc = ИМ\n  Goods 1\n    Code = 0101\n    Part 1\n      Sum = 1\n");
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

}  // namespace
}  // namespace customsconv::cli
