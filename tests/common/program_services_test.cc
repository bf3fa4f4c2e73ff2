#include <gtest/gtest.h>

#include "common/archive_run.h"
#include "common/program_paths.h"
#include "common/program_start.h"
#include "common/run_log.h"
#include "support/environment_builder.h"

namespace customsconv {
namespace {

TEST(ProgramPaths, ExpandAgainstTheBaseFolder) {
  const struct {
    const char *base, *path, *whole;
  } cases[] = {{"C:\\PROG\\", "Utils/a.bat", "C:\\PROG\\Utils\\a.bat"},
               {"C:\\PROG\\", "/nums\\\\\\last.ini", "C:\\nums\\last.ini"},
               {"C:\\PROG\\", "//srv//nums", "\\\\srv\\nums"},
               {"C:\\PROG\\", "D:/x\\\\y", "D:\\x\\y"},
               {"\\opt\\prog\\", "\\nums", "\\nums"},
               {".\\", "nums", "C:\\EXE\\nums"}};
  TestEnvironment world;
  world.host.processes.executable_folder = "C:\\EXE\\";
  for (const auto& c : cases) {
    world.environment.base_path = c.base;
    EXPECT_EQ(ExpandFamilyPath(c.path, world), c.whole) << c.base << " and " << c.path;
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
