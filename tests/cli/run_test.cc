#include "cli/run.h"

#include <gtest/gtest.h>

#include "cli_world.h"

namespace customsconv::cli {
namespace {

class RunTest : public CliWorld, public testing::Test {};

TEST_F(RunTest, WrongUsageEndsWithTwoAndTouchesNothing) {
  const std::string long_path = "C:\\" + std::string(253, 'x');
  const std::vector<std::string> cases[] = {
      {},
      {"unknown"},
      {"convert", "--program", "C:\\PROG"},
      {"convert", "--on-lock", "never"},
      {"dump", "--program", "C:\\PROG"},
      {"dump", "--program", "C:\\PROG", long_path},
      {"dump", "--program", long_path, kFile},
      {"dump", "--json", "--program", "C:\\PROG", kFile, "C:\\漢字.xml"},
      {"dump", "--program", "C:\\PROG", "bad\xFFutf8.xml"},
      {"validate", "--program", "C:\\PROG", "--schemas", "C:\\漢", kFile},
      {"validate", "--program", "C:\\PROG", "--schemas", "C:\\XSD", kFile, long_path},
      {"export", "--program", "C:\\PROG", "--document", "0", kFile},
      {"tables"},
      {"tables", "show"},
      {"tables", "show", "--rows", "5-2", "C:\\OUT\\DBRTOV.DBF"},
      {"catalogue", "show", "--program", "C:\\PROG"},
      {"catalogue", "show", "--program", "C:\\PROG", "漢"}};
  const std::vector<std::string> before = host.files.Names();
  for (const auto& arguments : cases) {
    SCOPED_TRACE(testing::PrintToString(arguments));
    EXPECT_EQ(RunProgram(arguments), 2);
    EXPECT_EQ(output.results, "");
    EXPECT_EQ(output.remarks.rfind("error: ", 0), 0U) << output.remarks;
  }
  EXPECT_EQ(host.files.Names(), before);
  EXPECT_EQ(host.files.changes(), 0);
}

TEST_F(RunTest, NamesTheArgumentThatCannotWork) {
  RunProgram({"dump", "--program", "C:\\PROG", "C:\\漢字.xml"});
  EXPECT_EQ(output.remarks, "error: code page 1251 cannot hold this text: C:\\漢字.xml\n");
  const std::string path(256, 'x');
  RunProgram({"dump", "--program", "C:\\PROG", path});
  EXPECT_EQ(output.remarks, "error: path is longer than 255 bytes: " + path + "\n");
  // 255 bytes of code page 1251 are more bytes of UTF-8.
  std::string cyrillic;
  for (int i = 0; i < 255; ++i) cyrillic += "я";
  EXPECT_EQ(RunProgram({"dump", "--program", "C:\\PROG", cyrillic}), 3);
  EXPECT_EQ(RunProgram({"dump", "--program", cyrillic, kFile}), 2) << "no room for the separator";
}

TEST_F(RunTest, AStartUpThatFailsIsAResultOfEachCommand) {
  const std::vector<std::string> commands[] = {
      {"catalogue", "list"},
      {"dump", kFile},
      {"validate", "--schemas", "C:\\XSD", kFile},
      {"convert", "--rules", "C:\\RULES\\armti.txt", "--output", "C:\\OUT", kFile},
      {"export", kFile}};  // without a JSON form
  const auto expect = [&](int status, const std::string& json_end) {
    for (std::vector<std::string> arguments : commands) {
      SCOPED_TRACE(arguments[0]);
      const bool json = arguments[0] != "export";
      arguments.insert(arguments.end(), {"--program", "C:\\PROG"});
      if (json) arguments.emplace_back("--json");
      EXPECT_EQ(RunProgram(arguments), status);
      EXPECT_EQ(output.remarks.starts_with("error: "), status == 3) << output.remarks;
      EXPECT_TRUE(json ? Printed(json_end) : output.results.empty());
    }
  };
  host.files.Remove("C:\\PROG\\document.dcf");
  expect(1, R"("messages":[{"kind":"message","text":"Не найден системный файл )");
  host.files.Remove("C:\\PROG\\kord.ini");
  expect(3, R"("messages":[],"error":"Не найден файл C:\\PROG/Kord.ini"})");
}

TEST_F(RunTest, HelpAndVersionAreResults) {
  EXPECT_EQ(RunProgram({"--help"}), 0);
  for (const char* command : {"convert", "validate", "dump", "export", "tables", "catalogue"}) {
    EXPECT_TRUE(Printed(command));
  }
  EXPECT_EQ(RunProgram({"convert", "--help"}), 0);
  EXPECT_TRUE(Printed("--on-lock"));
  EXPECT_EQ(RunProgram({"--version"}), 0);
  EXPECT_EQ(output.results.rfind("customsconv ", 0), 0U);
}

}  // namespace
}  // namespace customsconv::cli
