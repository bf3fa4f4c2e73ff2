#include <gtest/gtest.h>

#include <sstream>

#include "base/error.h"
#include "entry/library_host.h"
#include "entry/start_up.h"
#include "support/program_world.h"
#include "support/temp_folder.h"

namespace customsconv {
namespace {

TEST(LibraryHost, WritesWhatThereIsToTellIntoALogAndAnswersSafely) {
  const TempFolder folder;
  LibraryHost library_host;
  Dialogs& dialogs = library_host.host().dialogs;
  dialogs.Message("before the log was started");
  library_host.StartLog(folder.Win("no such folder/"));
  dialogs.Message("nowhere to go");
  library_host.StartLog(folder.Win(""));
  EXPECT_EQ(folder.Listing(), "") << "nothing before the first message";
  dialogs.Message(Win("весть"));
  dialogs.Exception("trouble");
  EXPECT_FALSE(dialogs.Confirm("create?"));
  EXPECT_EQ(dialogs.Choose("title", "go on?", {}), LockAnswer::kWait);
  dialogs.StartProgress("saving", 20)->Show(1);
  dialogs.StartProgress("waiting", 0)->Show(0);
  dialogs.Status("not worth a line");
  std::istringstream log(folder.Read("customsconv.log"));
  std::string texts;
  for (std::string line; std::getline(log, line);) {
    texts += line.substr(std::string_view("2026-03-07 09:05:04 - ").size()) + "\n";
  }
  EXPECT_EQ(Utf8(texts),
            "message: весть\r\nexception: trouble\r\nquestion: create?\r\nchoice: go on?\r\n"
            "wait: waiting\r\n");
}

constexpr const char* kProgram = "C:\\PROG\\";

struct StartUpTest : ProgramWorld, testing::Test {
  StartUpState state{host};
};

TEST_F(StartUpTest, EachStartReadsTheFoldersOfItsArguments) {
  host.files["C:\\RULES\\more.dcf"] = "[MORE.HEADER]\r\nFullName=x\r\n";
  ASSERT_TRUE(state.StartUp(kProgram, "C:\\RULES\\"));
  EXPECT_EQ(state.environment().aux_path, "C:\\RULES\\");
  for (const char* code : {"ESADout", "_OLD", "MORE"}) {
    EXPECT_GE(state.types().IndexOf(code), 0) << code;
  }
  ASSERT_TRUE(state.StartUp(kProgram, "C:\\OTHER\\"));
  EXPECT_EQ(state.types().IndexOf("MORE"), -1);
  state.TearDown();
  EXPECT_EQ(state.environment().config, nullptr);
}

// A catalogue is read again when any of its sources changed, or had something to tell.
TEST_F(StartUpTest, KeepsACatalogueAsLongAsItIsWhatWouldBeRead) {
  const auto loads_anew = [&] {
    if (!state.StartUp(kProgram, "")) return false;
    const bool fresh = state.types().Item(0).Grouping != 77;
    state.types().Item(0).Grouping = 77;
    return fresh;
  };
  EXPECT_TRUE(loads_anew());
  EXPECT_FALSE(loads_anew());
  const std::string type = "[MORE.HEADER]\r\nFullName=x\r\n";
  const std::pair<const char*, std::string> changes[] = {
      {"C:\\PROG\\Data\\more.dcf", type},
      {"C:\\PROG\\Data\\more.dcf", type + "DocFileExt=y\r\n"},
      {"C:\\PROG\\DOCCHECK.INI", "[Common]\r\nCheckedDocs=MORE\r\n"},
      {"C:\\PROG\\kord.ini", "[Common]\r\nUpCaseDocs=*\r\n"}};
  for (const auto& [file, content] : changes) {
    host.files[file] = content;
    EXPECT_TRUE(loads_anew()) << file;
    EXPECT_FALSE(loads_anew()) << file;
  }
  host.files["C:\\PROG\\Data\\more.dcf"] = type + "DocFileLabel=TOOLONG\r\n";
  for (const std::size_t told : {1, 2}) {
    EXPECT_TRUE(loads_anew());
    EXPECT_EQ(host.dialogs.log.size(), told);
  }
}

// The former configuration writes what it still has to before the file is read anew; over other
// people's changes it writes nothing.
TEST_F(StartUpTest, AWaitingChangeIsInTheConfigurationThatFollows) {
  for (const bool others_wrote : {false, true}) {
    SCOPED_TRACE(others_wrote);
    host.files["C:\\PROG\\kord.ini"] = "[Tmr]\r\nArcNum=5\r\n";
    ASSERT_TRUE(state.StartUp(kProgram, ""));
    host.files.FailPath("C:\\PROG\\kord.ini", FileOp::kCommit, FileError::Kind::kWrite);
    EXPECT_NE(ErrorOf([&] { state.environment().config->SetInteger("Tmr", "ArcNum", 6); }), "");
    host.files.StopFailing();
    if (others_wrote) host.files["C:\\PROG\\kord.ini"] = "[Tmr]\r\nArcNum=9\r\n";
    ASSERT_TRUE(state.StartUp(kProgram, ""));
    EXPECT_EQ(state.environment().config->GetInteger("Tmr", "ArcNum", 0), others_wrote ? 9 : 6);
  }
}

TEST_F(StartUpTest, OnlyAMissingConfigurationReachesTheHost) {
  EXPECT_EQ(Utf8(ErrorOf([&] { (void)state.StartUp("C:\\PROG", ""); })),
            "Не найден файл C:\\PROGKord.ini");
  host.files.Delete("C:\\PROG\\DOCUMENT.DCF");
  EXPECT_FALSE(state.StartUp(kProgram, "C:\\RULES\\"));
  EXPECT_EQ(state.environment().config, nullptr);
  EXPECT_EQ(host.dialogs.log,
            std::vector<std::string>{"message: Не найден системный файл C:\\PROG\\document.dcf"});
}

}  // namespace
}  // namespace customsconv
