#include <gtest/gtest.h>

#include "services/archive_run.h"
#include "services/file_services.h"
#include "services/program_paths.h"
#include "services/program_start.h"
#include "services/run_log.h"
#include "support/environment_builder.h"

namespace customsconv {
namespace {

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
    EXPECT_EQ(ExpandFamilyPath(path, world), whole) << base << " and " << path;
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
  EXPECT_EQ(processes.starts[0].folder, "C:\\PROG\\");
  processes.results = {std::nullopt, std::nullopt, 7};
  EXPECT_EQ(ExecFile("D:\\X\\a.txt", "-a", WindowStyle::kNormal, true, world), std::nullopt);
  processes.associated_program = "edit.exe";
  EXPECT_EQ(ExecFile("D:\\X\\a.txt", "-a", WindowStyle::kNormal, true, world), 7);
  EXPECT_EQ(processes.starts.back().command, "edit.exe");
  EXPECT_EQ(processes.starts.back().parameters, "D:\\X\\a.txt -a");
}

TEST(ArchiveRun, StartsTheBatchFileWhenWanted) {
  TestEnvironment world("[Tmr]\nArcNum=5\nId=12\n");
  world.host.clock.Set({2026, 3, 17});
  world.host.files["C:\\PROG\\Utils\\arctmr.bat"] = "";
  world.host.files.AddFolder("C:\\OUT");
  world.host.dialogs.confirmations = {false, true, true};
  ArchiveForTpo("C:\\OUT\\", true, world);
  EXPECT_TRUE(world.host.processes.starts.empty());
  ArchiveForTpo("C:\\OUT\\", false, world);
  EXPECT_EQ(world.config().GetInteger("Tmr", "ArcNum", 0), 5);
  ArchiveForTpo("C:\\OUT\\", true, world);
  EXPECT_EQ(world.config().GetInteger("Tmr", "ArcNum", 0), 6);
  EXPECT_EQ(Utf8(world.host.dialogs.questions.at(0)),
            "Призвести архивацию файлов для загрузки в АРМ ТПО (архив D1703012.005)?");
  const auto& starts = world.host.processes.starts;
  ASSERT_EQ(starts.size(), 2U);
  EXPECT_EQ(starts[0].command, "C:\\PROG\\Utils\\arctmr.bat");
  EXPECT_EQ(starts[1].parameters, "C:\\OUT\\ C:\\PROG\\Utils\\ D1703012.005");
}

}  // namespace
}  // namespace customsconv
