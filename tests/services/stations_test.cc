// Real processes on real files, as stations that share a folder.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <functional>

#include "config/configuration.h"
#include "platform/posix/posix_files.h"
#include "services/exchange_lock.h"
#include "services/numbering.h"
#include "support/fake_host.h"
#include "support/temp_folder.h"

namespace customsconv {
namespace {

constexpr int kStations = 4;

// The real files; nobody to ask and no time lost.
struct Station {
  posix::PosixFiles files;
  FakeClock clock;
  ScriptedDialogs dialogs;
  FakeProcesses processes;
  Host host{files, clock, dialogs, processes};
};

// Runs `work` in kStations processes; in how many of them it gave true.
int CountTrue(const std::function<bool()>& work) {
  std::vector<pid_t> children;
  for (int i = 0; i < kStations; ++i) {
    children.push_back(fork());
    if (children.back() == 0) _exit(work() ? 0 : 1);
  }
  return static_cast<int>(std::count_if(children.begin(), children.end(), [](pid_t child) {
    int status = -1;
    waitpid(child, &status, 0);
    return status == 0;
  }));
}

// Returns once all stations have called it.
void Meet(const TempFolder& folder) {
  folder.Write("here/" + std::to_string(getpid()), "");
  const std::filesystem::directory_iterator end;
  const auto here = [&] {
    return std::distance(std::filesystem::directory_iterator(folder / "here"), end);
  };
  while (here() < kStations) continue;
}

TEST(Stations, NeverDrawTheSameNumber) {
  constexpr int kNumbers = 10;
  for (const char* kord_ini : {"", "[System]\r\nLastNumsFile=last.ini\r\n"}) {
    const TempFolder folder;
    folder.Write("kord.ini", kord_ini);
    folder.Write("last.ini", "");
    const int done = CountTrue([&folder] {
      Station station;
      station.clock.on_sleep = [](std::uint32_t milliseconds) { usleep(1000 * milliseconds); };
      TConfiguration config(station.host, folder.Win("kord.ini"), CreateMode::kMustExist,
                            CodePage::kWindows);
      SharedConfigurations shared(station.host);
      KeptToday today(station.clock);
      Environment environment{station.host, folder.Win(""), "", "", &config, shared, today};
      Meet(folder);
      for (int i = 0; i < kNumbers; ++i) {
        const ShortText number = NextRegNumber("S", false, environment);
        folder.Write("drawn-" + number.str().substr(16), "");
      }
      return true;
    });
    EXPECT_EQ(done, kStations);
    const std::string listing = folder.Listing();
    EXPECT_EQ(std::count(listing.begin(), listing.end(), '-'), kStations * kNumbers) << kord_ini;
    EXPECT_NE(listing.find(" drawn-0000041 here kord.ini"), std::string::npos) << listing;
  }
}

TEST(Stations, OneTakesTheExchangeLock) {
  for (const bool take_over : {false, true}) {
    const TempFolder folder;
    if (take_over) folder.Write("veltlock.$$$", "");
    const int taken = CountTrue([&] {
      Station station;
      station.dialogs.on_question = [&] {
        if (station.dialogs.lock_answers.size() == 2) Meet(folder);
      };
      station.dialogs.lock_answers = {LockAnswer::kTakeOver, LockAnswer::kAbandon};
      if (!take_over) {
        station.dialogs.lock_answers.pop_front();
        Meet(folder);
      }
      try {
        const ExchangeLock lock(station.host, folder.Win(""));
        _exit(0);  // and the marker stays
      } catch (const SilentAbort&) {
        return false;
      }
    });
    EXPECT_EQ(taken, 1) << take_over;
  }
}

}  // namespace
}  // namespace customsconv
