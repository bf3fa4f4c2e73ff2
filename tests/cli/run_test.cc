#include "cli/run.h"

#include <gtest/gtest.h>

#include "cli_world.h"

namespace customsconv::cli {
namespace {

class RunTest : public CliWorld, public testing::Test {};

TEST_F(RunTest, WrongUsageEndsWithTwoAndTouchesNothing) {
  const std::string long_path = "C:\\" + std::string(253, 'x');
  const std::string cases[] = {"",
                               "unknown",
                               R"(convert --program C:\PROG)",
                               "convert --on-lock never",
                               R"(dump --program C:\PROG)",
                               R"(dump --program C:\PROG )" + long_path,
                               "dump --program " + long_path + " x.xml",
                               R"(dump --json --program C:\PROG x.xml C:\漢字.xml)",
                               "dump --program C:\\PROG bad\xFFutf8.xml",
                               R"(validate --program C:\PROG --schemas C:\漢 x.xml)",
                               R"(validate --program C:\PROG --schemas C:\XSD x.xml )" + long_path,
                               R"(export --program C:\PROG --document 0 x.xml)",
                               "tables",
                               "tables show",
                               R"(tables show --rows 5-2 C:\OUT\DBRTOV.DBF)",
                               R"(catalogue show --program C:\PROG)",
                               R"(catalogue show --program C:\PROG 漢)"};
  const std::vector<std::string> before = host.files.Names();
  for (const std::string& command_line : cases) {
    SCOPED_TRACE(command_line);
    EXPECT_EQ(RunProgram(command_line), kUsage);
    EXPECT_EQ(output.results, "");
    EXPECT_EQ(output.remarks.rfind("error: ", 0), 0U) << output.remarks;
  }
  EXPECT_EQ(host.files.Names(), before);
  EXPECT_EQ(host.files.changes(), 0);
}

TEST_F(RunTest, NamesTheArgumentThatCannotWork) {
  const auto dump = [this](const std::string& file) {
    return RunProgram(R"(dump --program C:\PROG )" + file);
  };
  EXPECT_EQ(dump("C:\\漢字.xml"), kUsage);
  EXPECT_EQ(output.remarks, "error: code page 1251 cannot hold this text: C:\\漢字.xml\n");
  const std::string path(256, 'x');
  EXPECT_EQ(dump(path), kUsage);
  EXPECT_EQ(output.remarks, "error: path is longer than 255 bytes: " + path + "\n");
  // 255 bytes of code page 1251 are more bytes of UTF-8.
  const std::string cyrillic = Utf8(std::string(255, '\xFF'));
  EXPECT_EQ(dump(cyrillic), kError);
  EXPECT_EQ(RunProgram("dump --program " + cyrillic + " x.xml"), kUsage)
      << "no room for the separator";
}

TEST_F(RunTest, AStartUpThatFailsIsAResultOfEachCommand) {
  const std::string commands[] = {"catalogue list", R"(dump x.xml)",
                                  R"(validate --schemas C:\XSD x.xml)",
                                  R"(convert --rules C:\RULES\armti.txt --output C:\OUT x.xml)",
                                  "export x.xml"};  // without a JSON form
  const auto expect = [&](ExitStatus status, const std::string& json_end) {
    for (const std::string& command : commands) {
      SCOPED_TRACE(command);
      const bool json = command != "export x.xml";
      EXPECT_EQ(RunProgram(command + R"( --program C:\PROG)" + (json ? " --json" : "")), status);
      EXPECT_EQ(output.remarks.starts_with("error: "), status == kError) << output.remarks;
      EXPECT_TRUE(json ? Printed(json_end) : output.results.empty());
    }
  };
  host.files.Remove("C:\\PROG\\document.dcf");
  expect(kNegative, R"("messages":[{"kind":"message","text":"Не найден системный файл )");
  host.files.Remove("C:\\PROG\\kord.ini");
  expect(kError, R"("messages":[],"error":"Не найден файл C:\\PROG/Kord.ini"})");
}

TEST_F(RunTest, HelpAndVersionAreResults) {
  EXPECT_EQ(RunProgram("--help"), kDone);
  for (const char* command : {"convert", "validate", "dump", "export", "tables", "catalogue"}) {
    EXPECT_TRUE(Printed(command));
  }
  EXPECT_EQ(RunProgram("convert --help"), kDone);
  EXPECT_TRUE(Printed("--on-lock"));
  EXPECT_EQ(RunProgram("--version"), kDone);
  EXPECT_EQ(output.results.rfind("customsconv ", 0), 0U);
}

}  // namespace
}  // namespace customsconv::cli
