// Real processes on real files, as stations that share a folder.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
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

// Runs `work` in kStations processes. Its argument returns once all of them have
// called it. Result: in how many `work` gave true.
int CountTrue(const std::function<bool(const std::function<void()>& meet)>& work) {
  int arrived[2];
  int go[2];
  EXPECT_EQ(pipe(arrived) + pipe(go), 0);
  char byte = 0;
  std::vector<pid_t> children;
  for (int i = 0; i < kStations; ++i) {
    children.push_back(fork());
    if (children.back() != 0) continue;
    close(go[1]);
    _exit(work([&] { (void)!(write(arrived[1], &byte, 1) + read(go[0], &byte, 1)); }) ? 0 : 1);
  }
  for (int i = 0; i < kStations; ++i) EXPECT_EQ(read(arrived[0], &byte, 1), 1);
  close(go[1]);
  int count = 0;
  for (const pid_t child : children) {
    int status = -1;
    waitpid(child, &status, 0);
    if (status == 0) ++count;
  }
  for (const int end : {arrived[0], arrived[1], go[0]}) close(end);
  return count;
}

TEST(Stations, NeverDrawTheSameNumber) {
  constexpr int kNumbers = 10;
  for (const char* kord_ini : {"", "[System]\r\nLastNumsFile=last.ini\r\n"}) {
    const TempFolder folder;
    folder.Write("kord.ini", kord_ini);
    folder.Write("last.ini", "");
    const int done = CountTrue([&folder](const auto& meet) {
      Station station;
      station.clock.on_sleep = [](std::uint32_t milliseconds) { usleep(1000 * milliseconds); };
      TConfiguration config(station.host, folder.Win("kord.ini"), CreateMode::kMustExist,
                            CodePage::kWindows);
      SharedConfigurations shared(station.host);
      KeptToday today(station.clock);
      Environment environment{station.host, folder.Win(""), "", "", &config, shared, today};
      meet();
      for (int i = 0; i < kNumbers; ++i) {
        const ShortText number = NextRegNumber("S", false, environment);
        folder.Write("drawn-" + number.str().substr(16), "");
      }
      return true;
    });
    EXPECT_EQ(done, kStations);
    const std::string listing = folder.Listing();
    EXPECT_EQ(std::count(listing.begin(), listing.end(), '-'), kStations * kNumbers) << kord_ini;
    EXPECT_NE(listing.find(" drawn-0000041 kord.ini"), std::string::npos) << listing;
  }
}

TEST(Stations, OneTakesTheExchangeLock) {
  for (const bool take_over : {false, true}) {
    const TempFolder folder;
    if (take_over) folder.Write("veltlock.$$$", "");
    const int taken = CountTrue([&](const auto& meet) {
      Station station;
      station.dialogs.on_question = [&] {
        if (station.dialogs.lock_answers.size() == 2) meet();
      };
      station.dialogs.lock_answers = {LockAnswer::kTakeOver, LockAnswer::kAbandon};
      if (!take_over) {
        station.dialogs.lock_answers.pop_front();
        meet();
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
