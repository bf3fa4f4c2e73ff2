#include <gtest/gtest.h>

#include <filesystem>

#include "platform/full_path.h"
#include "platform/name_mask.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_processes.h"
#include "platform/wait_for_lock.h"
#include "support/fake_host.h"
#include "support/temp_folder.h"
#include "support/text.h"

namespace customsconv {
namespace {

TEST(FullPath, MakesNamesAbsolute) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"X.DBF", "/srv/out", "\\srv\\out\\X.DBF"},
      {"a/./b//..\\X", "\\srv\\", "\\srv\\a\\X"},
      {"..\\..\\..\\X", "/srv/out", "\\X"},
      {"", "/srv", "\\srv"},
      {"OUT\\", "/srv", "\\srv\\OUT\\"},
      {"/", "/srv", "\\"},
      {"\\\\server/share\\x", "C:\\W", "\\\\server\\share\\x"},
      {"c:/a/../b", "/srv", "c:\\b"},
      {"C:\\", "/srv", "C:\\"},
      {"\\b", "C:\\W", "C:\\b"},
      {"b", "C:\\W", "C:\\W\\b"}};
  for (const auto& [path, current, expected] : cases)
    EXPECT_EQ(FullPath(path, current), expected) << path;
}

TEST(MatchesMask, KnowsStarsAndQuestionMarks) {
  const std::tuple<const char*, const char*, bool> cases[] = {
      {"a.dcf", "*.DCF", true}, {"a.dcf.bak", "*.dcf", false},
      {"ЁЖ", "ё?", true},       {"ab", "?", false},
      {"", "*", true},          {"", "?", false},
      {"noext", "*.*", true},   {"noext", "*.?*", false},
      {"a.b.c", "*b*", true},   {"aXbXc", "a*X", false},
      {"abcbcd", "*bcd", true}, {"x", "", false}};
  for (const auto& [name, mask, matches] : cases) {
    EXPECT_EQ(MatchesMask(Win(name), Win(mask)), matches) << name << ' ' << mask;
  }
  EXPECT_FALSE(MatchesMask(std::string(20'000, 'a'), "*a*a*a*a*a*a*a*b")) << "and quickly so";
}

TEST(WaitForLock, SaysSoWhenItTakesLong) {
  for (const std::uint64_t milliseconds : {0u, 500u, 3000u}) {
    FakeHost host;
    host.files.AddFolder("C:\\NUMS");
    const auto locked = [&] { return WaitForLock(host, "C:\\NUMS\\last.ini"); };
    auto other_station = locked();
    const std::uint64_t start = host.clock.Ticks();
    host.clock.on_sleep = [&](std::uint32_t) {
      if (host.clock.Ticks() - start > milliseconds) other_station.reset();
    };
    EXPECT_NE(locked(), nullptr);
    std::vector<std::string> said = {
        "progress: Ждем, пока другая станция освободит C:\\NUMS\\last.ini (0)", "progress closed"};
    if (milliseconds < 1000) said.clear();
    EXPECT_EQ(host.dialogs.log, said);
  }
}

TEST(PosixClock, TellsLocalTimeAndSleeps) {
  posix::PosixClock clock;
  const CalendarDay day = DayOf(clock.Today());
  EXPECT_GE(day.year, 2024);
  EXPECT_LT(clock.Now() - clock.Today(), 1.0);
  const std::uint64_t before = clock.Ticks();
  clock.Sleep(20);
  EXPECT_GE(clock.Ticks() - before, 20u);
}

TEST(PosixProcesses, RunsProgramsInTheirFolder) {
  const TempFolder folder;
  folder.Write("Utils/Arc.bat", "#!/bin/sh\necho \"$# $1 $2\" > result\nexit 7\n");
  std::filesystem::permissions(folder / "Utils/Arc.bat", std::filesystem::perms(0755));
  posix::PosixProcesses processes;
  ProgramStart start;
  start.command = folder.Win("UTILS\\arc.BAT");
  start.parameters = Win("первый  \"второй аргумент\"");
  start.folder = folder.Win("utils\\");
  start.wait = true;
  EXPECT_EQ(processes.Start(start), 7);
  EXPECT_EQ(folder.Read("Utils/result"), "2 первый второй аргумент\n");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  start.command = "Utils/Arc.bat";  // counts from here, not from the folder it will work in
  EXPECT_EQ(processes.Start(start), 7);
  std::filesystem::current_path(before);
  start.command = folder.Win("Utils\\Arc.bat");
  start.wait = false;
  EXPECT_EQ(processes.Start(start), 0);
  start.command = folder.Win("Utils\\missing");
  EXPECT_EQ(processes.Start(start), std::nullopt);
  start.command = "true";
  start.folder = folder.Win("no such folder");
  EXPECT_EQ(processes.Start(start), std::nullopt);
  EXPECT_EQ(processes.Start({"sh -c", "\"kill -9 $$\"", "", WindowStyle::kNormal, true}), 128 + 9);
  EXPECT_EQ(processes.Start({}), std::nullopt);
}

TEST(PosixProcesses, SplitsCommandLinesAtBlanksOutsideQuotes) {
  using Words = std::vector<std::string>;
  EXPECT_EQ(posix::CommandWords("  a  \"b c\"d \"\" "), (Words{"a", "b cd", ""}));
  EXPECT_EQ(posix::CommandWords("\"open end"), Words{"open end"});
}

TEST(PosixProcesses, KnowsItsOwnFolder) {
  const std::string folder = posix::PosixProcesses().ExecutableFolder();
  EXPECT_TRUE(folder.ends_with("\\tests\\")) << folder;
}

}  // namespace
}  // namespace customsconv
