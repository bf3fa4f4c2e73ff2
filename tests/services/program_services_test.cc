#include <gtest/gtest.h>

#include "services/archive_run.h"
#include "services/exchange_lock.h"
#include "services/file_services.h"
#include "services/numbering.h"
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
    TestEnvironment world("[Tmr]\nArcNum=5\nId=12\n[System]\nLastNumsFile=D:\\NET\\nums.ini\n");
    world.host.files["D:\\NET\\nums.ini"] = "";  // who draws numbers there is not in the way
    const auto drawing = world.host.files.Lock("D:\\NET\\nums.ini", [] {});
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

struct Station : TestEnvironment {
  explicit Station(std::string_view kord_ini = {}) : TestEnvironment(kord_ini) {
    host.clock.Set({2026, 3, 17}, 12);  // day 46098
  }
  std::string Next(std::string_view series, bool four_digit_year = false) {
    return NextRegNumber(series, four_digit_year, environment).str();
  }
};

TEST(Numbering, CompactDatesOfADeclaration) {
  Station station;
  for (const char* good : {"170326", "17036", "17032026", "010190", "210427", "\n170326 "}) {
    EXPECT_EQ(CheckCompactDate(good, station), good);
  }
  for (const char* bad : {"", "1703266", "311289", "220427", "300226", "17.326"}) {
    EXPECT_EQ(CheckCompactDate(bad, station), "") << bad;
  }
}

TEST(Numbering, NumbersByPatternAndCounters) {
  const struct {
    std::string series, pattern, ini, first, second;
  } cases[] = {
      {"S", "%DNUM-%GNUM-%GNUM", "", "0000002-0000002-%GNUM", "0000003-0000003-%GNUM"},
      {"S", "%DNUM-%GNUM",  // a new day
       "MinOrdNumber=7\n[S]\nLastDate=46097\nTodayOrdNumber=5\nTotalOrdNumber=9\n",
       "0000007-0000010", "0000008-0000011"},
      {"S", "%GNUM",  // a new year
       "MinOrdNumber=7\n[S]\nLastDate=46000\nTotalOrdNumber=90\n", "0000007", "0000008"},
      {"S", "%GNUM",  // one that does not count
       "NewYearNumber=0\n[S]\nLastDate=46000\nTotalOrdNumber=90\n", "0000091", "0000092"},
      {"S", "%GNUM", "MinOrdNumber=3\n[S]\nTotalOrdNumber=9999999\n", "0000003", "0000004"},
      {"S", "%DATE", "[System]\nRegNumsYear2Digit=0\n", "17036", "17036"},
      {"DUT", "%CODE", "CustomHouseCode=10702020\n", "10702020", "10702020"},
      {"DUT", "%DATE", "", "17032026", "17032026"}};
  for (const auto& c : cases) {
    Station station("[Kord.ArmTI]\nRegNumStructure=" + c.pattern + "\n" + c.ini);
    EXPECT_EQ(station.Next(c.series), c.first) << c.pattern << " with\n" << c.ini;
    EXPECT_EQ(station.Next(c.series), c.second) << c.pattern << " with\n" << c.ini;
  }
  Station station;
  EXPECT_EQ(station.Next("Kord.ArmTi"), "00000000/170326/0000002");
  EXPECT_EQ(station.Next("Kord.ArmTi", true), "00000000/17032026/0000003");
  EXPECT_EQ(station.host.files["C:\\PROG\\kord.ini"],  // no daily counter
            "[Kord.ArmTi]\r\nLastDate=46098\r\nTotalOrdNumber=3\r\n");
}

TEST(Numbering, SharesACounterFileBetweenStations) {
  Station station("[System]\nLastNumsFile=Nums/last.ini\\\n");
  station.host.files["C:\\PROG\\Nums\\last.ini"] = "[S]\r\nTotalOrdNumber=41\r\n";
  EXPECT_EQ(station.Next("S"), "00000000/170326/0000042");
  station.host.files["C:\\PROG\\Nums\\last.ini"] = "[S]\r\nN=50\r\n";  // by others
  EXPECT_EQ(NextCounter("S", "N", 1, 60, station), 51);
  WriteCounter("S", "N", 60, station);
  EXPECT_EQ(NextCounter("S", "N", 1, 60, station), 1);
  EXPECT_EQ(ReadCounter("S", "N", 0, station), 1);
  EXPECT_FALSE(station.config().SectionExists("S"));
  station.config().SetBool("Kord", "SQLLastNum", true);  // then the main configuration counts
  EXPECT_EQ(NextCounter("S", "N", 6, 60, station), 7);
}

TEST(Numbering, AsksBeforeItMakesTheSharedFile) {
  constexpr const char* kShared = "C:\\PROG\\last.ini";
  for (const bool create : {false, true}) {
    Station station("[System]\nLastNumsFile=last.ini\n");
    station.host.dialogs.confirmations = {create};
    station.host.dialogs.on_question = [&] {
      const auto other_station = station.host.files.Lock(kShared, [] { FAIL() << "must wait"; });
    };
    EXPECT_EQ(ReadCounter("S", "N", 8, station), 8);  // asks nothing
    EXPECT_EQ(NextCounter("S", "N", 1, 60, station), 2);
    ASSERT_EQ(station.host.dialogs.log.size(), 1U);
    EXPECT_EQ(station.host.dialogs.log[0],
              "confirm: Не могу открыть файл общей нумерации деклараций\r\nC:\\PROG\\last.ini"
              "\r\nСоздать новый файл и начать нумерацию с единицы?");
    EXPECT_EQ(station.host.files.Has(kShared), create);
    EXPECT_EQ(station.config().ReadInteger("S", "N", 0), create ? 0 : 2);
    station.host.files.Remove(kShared);
    station.host.dialogs.confirmations = {create};
    station.host.dialogs.on_question = [&] {
      station.host.files[kShared] = "[S]\r\nN=40\r\n";  // by another station
    };
    EXPECT_EQ(NextCounter("S", "N", 1, 60, station), 41) << "looked at again after the question";
  }
}

TEST(Numbering, GivesNoNumberThatCouldNotBeStoredAndStoresItNeverLater) {
  for (const std::string ini : {"", "[System]\nLastNumsFile=last.ini\n"}) {
    Station station(ini + "[S]\nN=5\n");
    station.host.files["C:\\PROG\\last.ini"] = "[S]\r\nN=5\r\n";
    const auto next = [&](bool may_write) {  // each time by a configuration of its own
      TConfiguration config(station.host, "C:\\PROG\\kord.ini", CreateMode::kMustExist,
                            CodePage::kWindows);
      Environment environment = station.environment;
      environment.config = &config;
      station.host.files.SetReadOnly("C:\\PROG", !may_write);
      std::int32_t number = 0;
      const auto draw = [&] { number = NextCounter("S", "N", 1, 60, environment); };
      EXPECT_EQ(ErrorOf(draw) == kNoError, may_write);
      station.host.files.SetReadOnly("C:\\PROG", false);
      return number;
    };
    EXPECT_EQ(next(true), 6);
    EXPECT_EQ(next(false), 0);
    EXPECT_EQ(next(true), 7) << "the configuration of the failed call wrote nothing when it went";
  }
}

}  // namespace
}  // namespace customsconv
