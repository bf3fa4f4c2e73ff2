#include "entry/library_host.h"

#include <gtest/gtest.h>

#include <sstream>

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

}  // namespace
}  // namespace customsconv
