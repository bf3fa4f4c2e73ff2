#include <gtest/gtest.h>

#include "services/archive_run.h"
#include "services/exchange_lock.h"
#include "services/file_services.h"
#include "services/program_paths.h"
#include "services/program_start.h"
#include "services/run_log.h"
#include "support/environment_builder.h"

namespace customsconv {
namespace {

// "FOLDER> COMMAND PARAMETERS" of everything that was started.
std::vector<std::string> CommandLines(const FakeProcesses& processes) {
  std::vector<std::string> lines;
  for (const ProgramStart& start : processes.starts) {
    lines.push_back(start.folder + "> " + start.command + " " + start.parameters);
  }
  return lines;
}

TEST(ExchangeLock, WaitsForTheMarkerOfAnotherStationAndDeletesItsOwn) {
  constexpr std::string_view kMarker = "C:\\OUT\\veltlock.$$$";
  FakeHost host;
  host.files[kMarker] = "other";
  host.clock.on_sleep = [&](std::uint32_t) {
    if (host.clock.slept.size() == 22) host.files.Remove(kMarker);
  };
  for (const bool taken_over : {false, true}) {
    {
      const ExchangeLock lock(host, "C:\\OUT\\");
      EXPECT_EQ(host.files[kMarker], "");
      if (taken_over) host.files[kMarker] = "";  // a newer one
    }
    EXPECT_EQ(host.files.Has(kMarker), taken_over);
  }
  const auto& log = host.dialogs.log;
  ASSERT_EQ(log.size(), 24U);
  EXPECT_EQ(log[0], "progress: База занята - ждем... (20)");
  EXPECT_EQ(log[21],
            "choose: База занята!: База АРМ-ТИ занята с другого компьютера. Возможно выгружается "
            "длинная ГТД, или программа зависла. [Подождать еще|Снять блокировку и выгрузить"
            "                 |Прервать выгрузку]");
  EXPECT_EQ(log[22] + log[23], "progress: 1progress closed");
}

TEST(FileNames, TemporaryNamesAreNotTakenYet) {
  FakeHost host;
  host.clock.Set({2026, 3, 17}, 12);
  const auto name = [&host] {
    return UniqueTempFileName(host.files, host.clock, "C:\\TMP", "~v", "tmp");
  };
  EXPECT_EQ(name(), "C:\\TMP\\~v50000000.tmp");
  host.files["C:\\TMP\\~v50000000.tmp"] = "";
  host.files["C:\\TMP\\~v50000001.tmp"] = "";
  EXPECT_EQ(name(), "C:\\TMP\\~v50000002.tmp");
}

TEST(ProgramPaths, ExpandAgainstTheBaseFolder) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"C:\\PROG\\", "Utils/a.bat", "C:\\PROG\\Utils\\a.bat"},
      {"C:\\PROG\\", "/nums\\\\\\last.ini", "C:\\nums\\last.ini"},
      {"C:\\PROG\\", "//srv//nums", "\\\\srv\\nums"},
      {"C:\\PROG\\", "D:/x\\\\y", "D:\\x\\y"},
      {"\\opt\\prog\\", "\\nums", "\\nums"},
      {"\\mnt\\smb-share:server=s\\", "/nums/a:b", "\\nums\\a:b"},
      {"\\mnt\\smb-share:server=s\\", "no:b", "\\mnt\\smb-share:server=s\\no:b"},
      {"C:\\PROG\\", "smb:x", "C:\\PROG\\smb:x"},
      {".\\", "nums", "C:\\EXE\\nums"}};
  TestEnvironment world;
  world.host.processes.executable_folder = "C:\\EXE\\";
  for (const auto& [base, path, whole] : cases) {
    world.environment.base_path = base;
    EXPECT_EQ(ExpandProgramPath(path, world), whole) << base << " and " << path;
  }
}

TEST(RunLog, AppendsLinesWithTheTime) {
  TestEnvironment world;
  world.host.clock.Set({2026, 3, 7}, 9, 5, 4);
  LogLine("a", "C:\\PROG\\run.log", world.host);
  LogLine("b", "C:\\PROG\\run.log", world.host);
  LogLine("c", "", world.host);  // the default log is switched off
  EXPECT_EQ(world.host.files["C:\\PROG\\run.log"],
            "2026-03-07 09:05:04 - a\r\n2026-03-07 09:05:04 - b\r\n");
  LogLine("d", "C:\\NONE\\run.log", world.host);
  EXPECT_EQ(world.host.dialogs.log,
            std::vector<std::string>{"message: Ошибка при записи C:\\NONE\\run.log"});
}

TEST(ProgramStart, TriesTheAssociatedProgram) {
  TestEnvironment world;
  FakeProcesses& processes = world.host.processes;
  EXPECT_EQ(ExecFile("run.exe", "-a", WindowStyle::kHidden, true, world), 0);
  processes.results = {std::nullopt, std::nullopt, 7};
  EXPECT_EQ(ExecFile("D:\\X\\a.txt", "-a", WindowStyle::kNormal, true, world), std::nullopt);
  processes.associated_program = "C:\\my edit.exe";
  world.host.files["C:\\PROG\\a b.txt"] = "";
  EXPECT_EQ(ExecFile("a b.txt", "-a", WindowStyle::kNormal, true, world), 7);
  const std::vector<std::string> expected = {
      "C:\\PROG\\> run.exe -a", "D:\\X> D:\\X\\a.txt -a", "C:\\PROG\\> \"C:\\PROG\\a b.txt\" -a",
      "C:\\PROG\\> \"C:\\my edit.exe\" \"C:\\PROG\\a b.txt\" -a"};
  EXPECT_EQ(CommandLines(processes), expected);
}

TEST(ArchiveRun, StartsTheBatchFileWhenWantedAndCountsItThen) {
  const std::optional<int> started = 0;
  const struct {
    const char* what;
    bool wanted, new_archive;
    std::optional<int> start;
    int next;
    const char* archive;
  } cases[] = {{"not wanted", false, true, started, 5, "D1703012.005"},
               {"the last one again", true, false, started, 5, "D1703012.004"},
               {"a new one", true, true, started, 6, "D1703012.005"},
               {"does not start", true, true, std::nullopt, 5, "D1703012.005"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TestEnvironment world("[Tmr]\nArcNum=5\nId=12\n");
    world.environment.base_path = "C:\\MY PROG\\";
    world.host.clock.Set({2026, 3, 17});
    world.host.files["C:\\MY PROG\\Utils\\arctmr.bat"] = "";
    world.host.files.AddFolder("C:\\OUT");
    world.host.dialogs.confirmations = {c.wanted};
    world.host.processes.results = {c.start};
    ArchiveForTpo("C:\\OUT\\", c.new_archive, world);
    const std::string name = c.archive;
    EXPECT_EQ(Utf8(world.host.dialogs.questions.at(0)),
              "Призвести архивацию файлов для загрузки в АРМ ТПО (архив " + name + ")?");
    std::vector<std::string> expected = {
        R"(C:\MY PROG\Utils> "C:\MY PROG\Utils\arctmr.bat" C:\OUT\ "C:\MY PROG\Utils\" )" + name};
    if (!c.wanted) expected.clear();
    EXPECT_EQ(CommandLines(world.host.processes), expected);
    EXPECT_EQ(world.config().GetInteger("Tmr", "ArcNum", 0), c.next);
    EXPECT_EQ(world.host.dialogs.messages.size(), c.start ? 0U : 1U);
  }
}

}  // namespace
}  // namespace customsconv
