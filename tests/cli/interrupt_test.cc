#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
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
  void PressCtrlC() { ASSERT_EQ(write(terminal_, "\x03", 1), 1); }
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

class InterruptTest : public testing::Test {
 protected:
  InterruptTest() {
    fs::copy(fs::path(CUSTOMSCONV_SOURCE_DIR) / "examples", folder_.path(),
             fs::copy_options::recursive);
    fs::create_directory(folder_.path() / "out");
    posix::PosixFiles files;
    posix::PosixClock clock;
    posix::PosixProcesses processes;
    RecordingOutput output;
    EXPECT_EQ(cli::Run({"tables", "create", "--description", folder_ / "armti/tables.txt",
                        "--output", folder_ / "out"},
                       {files, clock, processes}, output),
              ExitStatus::kDone);
    tables_ = Names();
  }

  std::vector<std::string> Arguments(const std::vector<std::string>& files) {
    std::vector<std::string> arguments = {
        "convert",  "--program",    folder_ / "program", "--rules", folder_ / "rules/armti.txt",
        "--output", folder_ / "out"};
    for (const std::string& file : files) arguments.push_back(folder_ / ("xml/" + file));
    return arguments;
  }

  // Names of all files in the output folder.
  std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.path() / "out")) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  TempFolder folder_;
  std::vector<std::string> tables_;
};

TEST_F(InterruptTest, CtrlCWhileWaitingLeavesTheOtherStationsLockOnly) {
  folder_.Write("out/veltlock.$$$", "");
  const std::string before = folder_.Read("out/DBRHEAD.DBF");
  TerminalProcess program(Arguments({"dts.xml", "transit.xml"}));
  ASSERT_TRUE(program.WaitFor("База занята - ждем...")) << program.printed();
  program.PressCtrlC();
  EXPECT_EQ(program.End(), 130) << program.printed();
  EXPECT_NE(program.printed().find("interrupted"), std::string::npos) << program.printed();
  tables_.emplace_back("veltlock.$$$");
  std::sort(tables_.begin(), tables_.end());
  EXPECT_EQ(Names(), tables_);
  EXPECT_EQ(folder_.Read("out/DBRHEAD.DBF"), before);
}

// Whatever the program is at when the person gives up: nothing half done is left behind.
TEST_F(InterruptTest, CtrlCWhileConvertingLeavesWholeTables) {
  TerminalProcess program(Arguments({"dts.xml", "kdt.xml", "transit.xml", "card.xml", "dts.xml",
                                     "kdt.xml", "transit.xml", "card.xml", "descriptions.xml"}));
  ASSERT_TRUE(program.WaitFor("transit.xml")) << program.printed();
  program.PressCtrlC();
  EXPECT_EQ(program.End(), 130) << program.printed();
  EXPECT_EQ(Names(), tables_) << "no lock, no temporary file";
  const auto rows = [this](const std::string& table) {
    const std::string dump = TableDump(folder_.Read("out/" + table));
    return std::count(dump.begin(), dump.end(), '\n') - 1;
  };
  EXPECT_EQ(rows("SBRHEAD.DBF"), rows("SBRTOVAR.DBF"));
  EXPECT_GE(rows("SBRHEAD.DBF"), 1);
}

}  // namespace
}  // namespace customsconv::cli
