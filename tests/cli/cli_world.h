#ifndef CUSTOMSCONV_TESTS_CLI_CLI_WORLD_H_
#define CUSTOMSCONV_TESTS_CLI_CLI_WORLD_H_

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/run.h"
#include "support/program_world.h"
#include "text/words.h"

namespace customsconv::cli {

using enum ExitStatus;

// Keeps what is printed and answers from a queue.
class RecordingOutput : public Output {
 public:
  void Result(std::string_view bytes) override {
    results += bytes;
    if (on_result) on_result();
  }
  void Remark(std::string_view bytes) override { remarks += bytes; }
  [[nodiscard]] bool IsTerminal() const override { return terminal; }
  bool ReadAnswer(std::string& line) override {
    if (answers.empty()) return false;
    line = answers.front();
    answers.pop_front();
    return true;
  }

  std::function<void()> on_result;
  std::string results, remarks;
  bool terminal = false;
  std::deque<std::string> answers;
};

// The program over a world in memory.
class CliWorld : public ProgramWorld {
 public:
  // Runs the program with these words. What it prints is in `output`, afresh.
  ExitStatus RunProgram(std::string_view command_line) {
    output.results.clear();
    output.remarks.clear();
    const std::vector<std::string_view> words = Words(command_line, CharSet(" \n"));
    return cli::Run({words.begin(), words.end()}, {host.files, host.clock, host.processes}, output);
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

  RecordingOutput output;
};

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_TESTS_CLI_CLI_WORLD_H_
