#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "support/table_image.h"
#include "support/temp_folder.h"

namespace customsconv::cli {
namespace {

namespace fs = std::filesystem;

// A shell's command line as a process of its own on a terminal.
class TerminalProcess {
 public:
  explicit TerminalProcess(const std::string& command) {
    pid_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
    if (pid_ != 0) return;
    execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
    _exit(127);
  }
  ~TerminalProcess() { close(terminal_); }
  TerminalProcess(const TerminalProcess&) = delete;
  TerminalProcess& operator=(const TerminalProcess&) = delete;

  // Reads until `text` was printed, then types the answer; false when the process ended before.
  bool Answer(std::string_view text, std::string_view answer) {
    char bytes[4096];
    while (printed.find(text) == std::string::npos) {
      const ssize_t count = read(terminal_, bytes, sizeof bytes);
      if (count <= 0) return false;
      printed.append(bytes, static_cast<std::size_t>(count));
    }
    return write(terminal_, answer.data(), answer.size()) > 0;
  }
  // The exit status; 128 + the signal that killed the process.
  int End() {
    Answer("\x01 never printed", "");
    int status = 0;
    waitpid(pid_, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }

  std::string printed;

 private:
  int terminal_ = -1;
  pid_t pid_ = -1;
};

constexpr const char* kCtrlC = "\x03";

// The exit status of a shell's command line.
int StatusOf(const std::string& command) { return WEXITSTATUS(std::system(command.c_str())); }

class ProgramTest : public testing::Test {
 protected:
  ProgramTest() {
    fs::copy(fs::path(CUSTOMSCONV_SOURCE_DIR) / "examples", in_.path(),
             fs::copy_options::recursive);
    EXPECT_EQ(StatusOf(InXml("tables create --description ../armti/tables.txt --output ") +
                       out_ / "" + " > /dev/null"),
              0);
    tables_ = out_.Listing();
  }

  // The command line that runs the program in the folder of the examples' files.
  std::string InXml(const std::string& arguments) {
    return "cd " + in_ / "xml" + " && exec " CUSTOMSCONV_PROGRAM " " + arguments;
  }
  std::string Convert(const std::string& files) {
    return InXml("convert --program ../program --rules ../rules/armti.txt --output " + out_ / "" +
                 " " + files);
  }

  TempFolder in_;   // the examples
  TempFolder out_;  // an empty table set
  std::string tables_;
};

TEST_F(ProgramTest, CtrlCWhileWaitingLeavesTheOtherStationsLockOnly) {
  out_.Write("veltlock.$$$", "");
  const std::string before = out_.Read("DBRHEAD.DBF");
  TerminalProcess program(Convert("dts.xml transit.xml"));
  ASSERT_TRUE(program.Answer("База занята - ждем...", kCtrlC)) << program.printed;
  EXPECT_EQ(program.End(), 130) << program.printed;
  EXPECT_NE(program.printed.find("interrupted"), std::string::npos) << program.printed;
  EXPECT_EQ(out_.Listing(), tables_ + " veltlock.$$$");
  EXPECT_EQ(out_.Read("DBRHEAD.DBF"), before);
}

// Whatever the program is at when the person gives up: nothing half done is left behind.
TEST_F(ProgramTest, CtrlCWhileConvertingLeavesWholeTables) {
  TerminalProcess program(
      Convert("dts.xml kdt.xml transit.xml card.xml dts.xml kdt.xml transit.xml card.xml "
              "descriptions.xml"));
  ASSERT_TRUE(program.Answer("transit.xml", kCtrlC)) << program.printed;
  EXPECT_EQ(program.End(), 130) << program.printed;
  EXPECT_EQ(out_.Listing(), tables_) << "no lock, no temporary file";
  const auto rows = [this](const std::string& table) {
    const std::string dump = TableDump(out_.Read(table));
    return std::count(dump.begin(), dump.end(), '\n') - 1;
  };
  EXPECT_EQ(rows("SBRHEAD.DBF"), rows("SBRTOVAR.DBF"));
  EXPECT_EQ(rows("SBRHEAD.DBF") > 0, program.printed.find("SBRHEAD.DBF +1") != std::string::npos)
      << program.printed;
}

TEST_F(ProgramTest, AQuestionIsAnsweredByWhatIsTyped) {
  in_.Write("program/kord.ini", "[System]\r\nLastNumsFile=last.ini\r\n");
  for (const char* answer : {"\n", "2\n", "\x04", "1\n"}) {  // \x04 ends the input
    EXPECT_FALSE(fs::exists(in_ / "program/last.ini"));
    TerminalProcess program(Convert("transit.xml"));
    ASSERT_TRUE(program.Answer("2 - No", answer)) << program.printed;
    EXPECT_EQ(program.End(), 0) << program.printed;
  }
  EXPECT_TRUE(fs::exists(in_ / "program/last.ini"));
}

// A file that may not grow is told like a full disk.
TEST_F(ProgramTest, ALimitOfTheFileSizeEndsNoProgramHalfWay) {
  EXPECT_EQ(StatusOf("ulimit -f 1; " + Convert("transit.xml > /dev/null 2>&1 < /dev/null")), 1);
  EXPECT_EQ(out_.Listing(), tables_);
}

TEST_F(ProgramTest, AWaitForAPipeEndsWithTheSignalThatEndsPrograms) {
  const std::string dump = " sh -c '" + InXml("dump --program ../program pipe > log 2>&1'");
  ASSERT_EQ(StatusOf("mkfifo " + in_ / "xml/pipe"), 0);
  EXPECT_EQ(StatusOf("timeout --preserve-status 1" + dump), 130);
  EXPECT_EQ(StatusOf("cd " + in_ / "xml" + "; cat transit.xml > pipe & timeout 60" + dump), 0)
      << in_.Read("xml/log");
}

// A result that does not arrive is no success: scripts look at the status alone.
TEST_F(ProgramTest, AResultThatCannotBeWrittenIsAnError) {
  EXPECT_EQ(StatusOf(CUSTOMSCONV_PROGRAM " --help > /dev/full 2> " + (in_ / "log")), 3);
  EXPECT_EQ(in_.Read("log"), "error: the result could not be written\n");
}

}  // namespace
}  // namespace customsconv::cli
