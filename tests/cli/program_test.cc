#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/run.h"
#include "cli_world.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/posix_processes.h"
#include "support/temp_folder.h"

namespace customsconv::cli {
namespace {

namespace fs = std::filesystem;

// The program as a process of its own on a terminal.
class TerminalProcess {
 public:
  explicit TerminalProcess(std::vector<std::string> arguments) {
    pid_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
    if (pid_ != 0) return;
    arguments.insert(arguments.begin(), CUSTOMSCONV_PROGRAM);
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    execv(argv[0], argv.data());
    _exit(127);
  }
  ~TerminalProcess() { close(terminal_); }
  TerminalProcess(const TerminalProcess&) = delete;
  TerminalProcess& operator=(const TerminalProcess&) = delete;

  // Reads until `text` was printed; false when the process ended before.
  bool WaitFor(std::string_view text) {
    char bytes[4096];
    while (printed_.find(text) == std::string::npos) {
      const ssize_t count = read(terminal_, bytes, sizeof bytes);
      if (count <= 0) return false;
      printed_.append(bytes, static_cast<std::size_t>(count));
    }
    return true;
  }
  void Type(std::string_view text) {
    ASSERT_EQ(write(terminal_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  void PressCtrlC() { Type("\x03"); }
  // The exit status; 128 + the signal that killed the process.
  int End() {
    WaitFor("\x01 never printed");
    int status = 0;
    waitpid(pid_, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }
  [[nodiscard]] const std::string& printed() const { return printed_; }

 private:
  int terminal_ = -1;
  pid_t pid_ = -1;
  std::string printed_;
};

// The exit status of a shell's command line.
int StatusOf(const std::string& command) { return WEXITSTATUS(std::system(command.c_str())); }

class ProgramTest : public testing::Test {
 protected:
  ProgramTest() {
    fs::copy(fs::path(CUSTOMSCONV_SOURCE_DIR) / "examples", in_.path(),
             fs::copy_options::recursive);
    posix::PosixFiles files;
    posix::PosixClock clock;
    posix::PosixProcesses processes;
    RecordingOutput output;
    EXPECT_EQ(cli::Run({"tables", "create", "--description", in_ / "armti/tables.txt", "--output",
                        out_.path()},
                       {files, clock, processes}, output),
              kDone);
    tables_ = out_.Listing();
  }

  // The command line that converts these files.
  std::vector<std::string> Convert(const std::vector<std::string>& files) {
    std::vector<std::string> arguments = {
        "convert",  "--program", in_ / "program", "--rules", in_ / "rules/armti.txt",
        "--output", out_.path()};
    for (const std::string& file : files) arguments.push_back(in_ / ("xml/" + file));
    return arguments;
  }

  TempFolder in_;   // the examples
  TempFolder out_;  // an empty table set
  std::string tables_;
};

TEST_F(ProgramTest, CtrlCWhileWaitingLeavesTheOtherStationsLockOnly) {
  out_.Write("veltlock.$$$", "");
  const std::string before = out_.Read("DBRHEAD.DBF");
  TerminalProcess program(Convert({"dts.xml", "transit.xml"}));
  ASSERT_TRUE(program.WaitFor("База занята - ждем...")) << program.printed();
  program.PressCtrlC();
  EXPECT_EQ(program.End(), 130) << program.printed();
  EXPECT_NE(program.printed().find("interrupted"), std::string::npos) << program.printed();
  EXPECT_EQ(out_.Listing(), tables_ + " veltlock.$$$");
  EXPECT_EQ(out_.Read("DBRHEAD.DBF"), before);
}

// Whatever the program is at when the person gives up: nothing half done is left behind.
TEST_F(ProgramTest, CtrlCWhileConvertingLeavesWholeTables) {
  TerminalProcess program(Convert({"dts.xml", "kdt.xml", "transit.xml", "card.xml", "dts.xml",
                                   "kdt.xml", "transit.xml", "card.xml", "descriptions.xml"}));
  ASSERT_TRUE(program.WaitFor("transit.xml")) << program.printed();
  program.PressCtrlC();
  EXPECT_EQ(program.End(), 130) << program.printed();
  EXPECT_EQ(out_.Listing(), tables_) << "no lock, no temporary file";
  const auto rows = [this](const std::string& table) {
    const std::string dump = TableDump(out_.Read(table));
    return std::count(dump.begin(), dump.end(), '\n') - 1;
  };
  EXPECT_EQ(rows("SBRHEAD.DBF"), rows("SBRTOVAR.DBF"));
  EXPECT_EQ(rows("SBRHEAD.DBF") > 0, program.printed().find("SBRHEAD.DBF +1") != std::string::npos)
      << program.printed();
}

TEST_F(ProgramTest, AQuestionIsAnsweredByWhatIsTyped) {
  in_.Write("program/kord.ini", "[System]\r\nLastNumsFile=last.ini\r\n");
  for (const std::string answer : {"\n", "2\n", "\x04", "1\n"}) {  // \x04 ends the input
    EXPECT_FALSE(fs::exists(in_ / "program/last.ini"));
    TerminalProcess program(Convert({"transit.xml"}));
    ASSERT_TRUE(program.WaitFor("2 - No")) << program.printed();
    program.Type(answer);
    EXPECT_EQ(program.End(), 0) << program.printed();
  }
  EXPECT_TRUE(fs::exists(in_ / "program/last.ini"));
}

// A file that may not grow is told like a full disk.
TEST_F(ProgramTest, ALimitOfTheFileSizeEndsNoProgramHalfWay) {
  std::string command = "ulimit -f 1; " CUSTOMSCONV_PROGRAM;
  for (const std::string& word : Convert({"transit.xml"})) command += " '" + word + "'";
  EXPECT_EQ(StatusOf(command + " > /dev/null 2>&1 < /dev/null"), 1);
  EXPECT_EQ(out_.Listing(), tables_);
}

TEST_F(ProgramTest, AWaitForAPipeEndsWithTheSignalThatEndsPrograms) {
  const std::string pipe = in_ / "pipe";
  const std::string dump = std::string(CUSTOMSCONV_PROGRAM " dump --program ") + in_ / "program " +
                           pipe + " > " + in_ / "log 2>&1";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(StatusOf("timeout --preserve-status 1 " + dump), 130);
  const std::string write = "cat " + in_ / "xml/transit.xml > " + pipe + " & ";
  EXPECT_EQ(StatusOf(write + "timeout 60 " + dump), 0) << in_.Read("log");
}

// A result that does not arrive is no success: scripts look at the status alone.
TEST_F(ProgramTest, AResultThatCannotBeWrittenIsAnError) {
  EXPECT_EQ(StatusOf(CUSTOMSCONV_PROGRAM " --help > /dev/full 2> " + (in_ / "log")), 3);
  EXPECT_EQ(in_.Read("log"), "error: the result could not be written\n");
}

}  // namespace
}  // namespace customsconv::cli
