#include "entry/start_up.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "support/program_world.h"

namespace customsconv {
namespace {

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
