#ifndef CUSTOMSCONV_TESTS_CLI_CLI_WORLD_H_
#define CUSTOMSCONV_TESTS_CLI_CLI_WORLD_H_

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "cli/run.h"
#include "support/environment_builder.h"
#include "support/fake_host.h"
#include "support/table_image.h"
#include "text/words.h"

namespace customsconv::cli {

using enum ExitStatus;

// Keeps what is printed and answers from a queue.
class RecordingOutput : public Output {
 public:
  void Result(std::string_view bytes) override { results += bytes; }
  void Remark(std::string_view bytes) override { remarks += bytes; }
  [[nodiscard]] bool IsTerminal() const override { return terminal; }
  bool ReadAnswer(std::string& line) override {
    if (answers.empty()) return false;
    line = answers.front();
    answers.pop_front();
    return true;
  }

  std::string results;
  std::string remarks;
  bool terminal = false;
  std::deque<std::string> answers;
};

// The words of a command line as one types it.
[[nodiscard]] inline std::vector<std::string> Arguments(std::string_view command_line) {
  const std::vector<std::string_view> words = Words(command_line, CharSet(" \n"));
  return {words.begin(), words.end()};
}

// The program over a world in memory: a program folder with a small catalogue, a table set,
// rules and one declaration, C:\IN\10702020_110615_0001234.xml.
class CliWorld {
 public:
  CliWorld() {
    host.files["C:\\PROG\\kord.ini"] = "";
    host.files["C:\\PROG\\DOCUMENT.INI"] = "";
    host.files["C:\\PROG\\document.dcf"] = "[OLD.HEADER]\r\nFullName=x\r\n";
    host.files["C:\\PROG\\Data\\Kordwin.dcf"] = WinLines(kCatalogue);
    host.files["C:\\RULES\\armti.txt"] = WinLines(kRules);
    host.files["C:\\OUT\\DBRHEAD.DBF"] = TableImage("G073 C7, G011 C4").Bytes();
    host.files["C:\\OUT\\DBRTOV.DBF"] = TableImage("G073 C7, G33 C2").Bytes();
    Xml("10702020_110615_0001234", "<Proc>ИМ</Proc><Goods><Code>0101</Code></Goods>");
  }

  // A file of one declaration with this content.
  void Xml(std::string_view name, std::string_view content) {
    host.files["C:\\IN\\" + std::string(name) + ".xml"] =
        Win("<?xml version=\"1.0\" encoding=\"windows-1251\"?>\r\n<ESADout a=\"1\">" +
            std::string(content) + "</ESADout>\r\n");
  }

  // Runs the program. What it prints is in `output`, afresh.
  ExitStatus RunProgram(std::string_view command_line) {
    output.results.clear();
    output.remarks.clear();
    return cli::Run(Arguments(command_line), {host.files, host.clock, host.processes}, output);
  }
  ExitStatus Convert(const std::string& more = "") {
    return RunProgram(R"(convert --program C:\PROG --rules C:\RULES\armti.txt --output C:\OUT )" +
                      more + " " + kFile);
  }

  // Whether the results hold this text; the failed expectation shows them.
  testing::AssertionResult Printed(std::string_view text) {
    if (output.results.find(text) != std::string::npos) return testing::AssertionSuccess();
    return testing::AssertionFailure() << text << "\nis not in\n" << output.results;
  }

  std::string Table(std::string_view name) {
    return TableDump(host.files["C:\\OUT\\" + std::string(name)].bytes());
  }

  static constexpr const char* kFile = "C:\\IN\\10702020_110615_0001234.xml";
  static constexpr const char* kCatalogue = R"([ESADout.HEADER]
ShortName=ЭД ДТ
XmlType=x
MainBlock=Goods
Prefix=<ESADout a="1">
[ESADout.Fields]
Proc=C2 |Вид NAMESPACE="Proc"
Empty=C5 | NAMESPACE="Empty"
Goods { NAMESPACE="Goods"
  Code=C10 |Код NAMESPACE="p:Code"
  Part { NAMESPACE="Part"
    Sum=N10.2 | NAMESPACE="Sum"
  }
}
[DT5.HEADER]
ShortName=ДТ 5
MainBlock=TOVAR
DbfName=DBRHEAD.DBF
[DT5.Files]
DBRHEAD = DBRHEAD.DBF [G073]
  TOVAR = DBRTOV.DBF [G073]
)";
  static constexpr const char* kRules = R"([DBRHEAD]
=ESADout
G011=Proc
[DBRTOV]
Goods{
G33=Code
NOFIELD=Code
G33=*Nothing
G073=Code
)";

  FakeHost host;
  RecordingOutput output;
};

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_TESTS_CLI_CLI_WORLD_H_
