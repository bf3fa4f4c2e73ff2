#include <gtest/gtest.h>

#include "cli_world.h"

namespace customsconv::cli {
namespace {

class DumpTest : public CliWorld, public testing::Test {};

TEST_F(DumpTest, JsonHoldsWhatIsFilledInFieldOrder) {
  Xml("1",
      "<Goods><Code>a\"\\\t\x01</Code><Part><Sum>1,50</Sum></Part><Part/></Goods><Goods/>"
      "<Proc>ИМ</Proc><Empty></Empty><Old>x</Old>");
  EXPECT_EQ(RunProgram(R"(dump --json --program C:\PROG C:\IN\1.xml)"), kDone);
  EXPECT_EQ(output.results,
            R"({"documents":[{"code":"ESADout","occurrence":1,"root":{)"
            R"("values":[["Proc","ИМ"]],"blocks":[["Goods",[)"
            R"({"values":[["Code","a\"\\\t\u0001"]],"blocks":[["Part",[)"
            R"({"values":[["Sum","1.50"]],"blocks":[]},{"values":[],"blocks":[]}]]]},)"
            R"({"values":[],"blocks":[]}]]]}}],"unknown_ids":true,"messages":[]})"
            "\n");
  EXPECT_EQ(output.remarks, "");
}

// What was lost before the error is told as well.
TEST_F(DumpTest, AnErrorFollowsTheDocumentsBeforeIt) {
  host.files["C:\\IN\\1.xml"] =
      "<DocBody><ESADout a=\"1\"><Proc>A</Proc><Old>x</Old></ESADout></DocBody>"
      "<DocBody><ESADout a=\"1\"><Proc>B";
  EXPECT_EQ(RunProgram(R"(dump --json --program C:\PROG C:\IN\1.xml)"), kError);
  EXPECT_EQ(output.results,
            R"({"documents":[{"code":"ESADout","occurrence":1,"root":)"
            R"({"values":[["Proc","A"]],"blocks":[]}}],"unknown_ids":true,"messages":[],)"
            R"("error":"Отсутствует окончание документа: </ESADout>"})"
            "\n");
  EXPECT_EQ(output.remarks, "error: Отсутствует окончание документа: </ESADout>\n");
}

}  // namespace
}  // namespace customsconv::cli
