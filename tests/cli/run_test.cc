#include "cli/run.h"

#include <gtest/gtest.h>

#include "cli_world.h"

namespace customsconv::cli {
namespace {

class RunTest : public CliWorld, public testing::Test {};

TEST_F(RunTest, WrongUsageEndsWithTwoAndTouchesNothing) {
  const std::string long_path = "C:\\" + std::string(253, 'x');
  const std::string dump = R"(dump --program C:\PROG )";
  const std::string too_long = "path is longer than 255 bytes: ";
  const std::string not_1251 = "code page 1251 cannot hold this text: ";
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},
      {"unknown", "there is no command 'unknown'\n"},
      {"convrt --program x", "there is no command 'convrt'; did you mean 'convert'?"},
      {"tables --json shwo x.dbf", "there is no command 'shwo'; did you mean 'show'?"},
      {"convert --expalin x", "there is no option '--expalin' here; did you mean '--explain'?"},
      {"dump --color=red x", ""},
      {R"(convert --program C:\PROG)", ""},
      {"convert --on-lock never", ""},
      {dump, ""},
      {"dump --program " + long_path + " x.xml", too_long + long_path},
      {"dump --program " + Utf8(std::string(255, '\xFF')) + " x.xml", too_long},  // no room for "/"
      {R"(validate --program C:\PROG --schemas C:\漢 x.xml)", not_1251},
      {R"(validate --program C:\PROG --schemas C:\XSD x.xml)", "no such folder: C:\\XSD"},
      {R"(export --program C:\PROG --document 0 x.xml)", ""},
      {"tables", ""},
      {"tables show", ""},
      {R"(tables show --rows 5-2 C:\OUT\DBRTOV.DBF)", "--rows takes N, N- or N-M"},
      {R"(catalogue show --program C:\PROG)", ""},
      {R"(catalogue show --program C:\PROG 漢)", not_1251}};
  const std::vector<std::string> before = host.files.Names();
  for (const auto& [command_line, cause] : cases) {
    SCOPED_TRACE(command_line);
    EXPECT_EQ(RunProgram(command_line), kUsage);
    const bool json = command_line.find("--json") != std::string::npos;
    EXPECT_EQ(output.results, json ? R"({"messages":[],"error":")" + cause + "\"}\n" : "");
    EXPECT_TRUE(output.remarks.starts_with("error: " + cause)) << output.remarks;
  }
  EXPECT_EQ(host.files.Names(), before);
  EXPECT_EQ(host.files.changes(), 0);
  // 255 bytes of code page 1251 are more bytes of UTF-8.
  EXPECT_EQ(RunProgram(dump + Utf8(std::string(255, '\xFF'))), kError);
}

TEST_F(RunTest, AStartUpThatFailsIsAResultOfEachCommand) {
  const std::string commands[] = {"catalogue list", R"(dump x.xml)",
                                  R"(validate --schemas C:\RULES x.xml)",
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
  const std::pair<const char*, const char*> cases[] = {
      {"--help", "catalogue"},    {"convert --help", "--on-lock"},  {"--version", "customsconv "},
      {"help tables", "recover"}, {"help tables show", "--filled"}, {"-V", "customsconv "}};
  for (const auto& [command_line, part] : cases) {
    EXPECT_EQ(RunProgram(command_line), kDone);
    EXPECT_TRUE(Printed(part));
  }
}

}  // namespace
}  // namespace customsconv::cli
