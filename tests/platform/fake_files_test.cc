// The fake must keep the promises of the real files, else tests on it prove
// nothing; and its faults must be what they claim to be.
#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "platform/posix/posix_files.h"
#include "support/fake_host.h"
#include "support/temp_folder.h"
#include "support/text.h"

namespace customsconv {
namespace {

// The same steps on the real files and on the fake ones must give the same account.
std::string AccountOf(Files& files, const std::string& folder) {
  using Kind = FileError::Kind;
  std::string account;
  const auto note = [&account](const auto& value) { account += std::to_string(value) + ' '; };
  const auto attempt = [&](const std::function<void()>& call) {
    try {
      call();
      account += "done ";
    } catch (const FileError& error) {
      note(static_cast<int>(error.kind()));
    }
  };
  const std::string file = folder + Win("\\Ёж.DBF");
  note(files.Exists(file));
  note(files.CreateNew(file));
  note(files.CreateNew(folder + Win("/ёж.dbf")));
  files.Replace(file, "one");
  files.Append(folder + Win("/ёЖ.dbf"), "two");
  account += files.Read(file) + ' ' + files.Read(file, 4) + ' ';
  note(files.FolderExists(folder));
  note(files.Exists(folder));
  attempt([&] { (void)files.Read(folder); });
  attempt([&] { (void)files.Read(folder + "\\none"); });
  attempt([&] { files.Replace(folder, "x"); });
  attempt([&] { files.Replace(folder + "\\none\\x", "x"); });
  attempt([&] { (void)files.Open(folder + "\\none", kModeRead); });
  attempt([&] { (void)files.Open(folder + "\\none\\x", kModeCreate); });
  {
    const auto stream = files.Open(file, kModeReadWrite | kShareDenyWrite);
    stream->Seek(1, SeekOrigin::kBegin);
    stream->Write("XY", 2);
    stream->Seek(8, SeekOrigin::kBegin);
    stream->Write("end", 3);
    note(stream->Size());
    attempt([&] { (void)files.Open(file, kModeReadWrite | kShareDenyNone); });
    attempt([&] { (void)files.Open(file, kModeRead | kShareDenyNone); });
  }
  account += files.Read(file);
  files.Replace(folder + "\\b.txt", "");
  for (const std::string& name : files.Find(folder, "*.*")) account += Utf8(name) + ' ';
  note(files.Delete(folder + Win("\\ЁЖ.dbf")));
  note(files.Delete(file));
  note(files.Stamp(file) == kNoStamp);
  note(static_cast<int>(Kind::kWrite));
  return account;
}

TEST(FakeFiles, BehavesAsTheRealFilesDo) {
  const TempFolder folder;
  posix::PosixFiles real;
  FakeFiles fake;
  fake.AddFolder("C:\\Out");
  EXPECT_EQ(AccountOf(fake, "c:/OUT"), AccountOf(real, folder.Win("")));
}

TEST(FakeFiles, RefusesTearsAndDiesOnDemand) {
  FakeFiles files;
  files["C:\\A"] = "old";
  const auto append = [&] { files.Append("C:\\a", "1234"); };
  const auto replace = [&] { files.Replace("C:\\a", "new"); };

  files.FailChange(2);
  append();
  EXPECT_NE(ErrorOf(append), kNoError);
  EXPECT_EQ(files["C:\\A"], "old1234");
  files.FailChange(1, true);
  EXPECT_NE(ErrorOf(append), kNoError);
  EXPECT_EQ(files["C:\\A"], "old123412");
  files.FailChange(2, true);  // the commit behind the stage
  EXPECT_NE(ErrorOf(replace), kNoError);
  EXPECT_EQ(files["C:\\A"], "old123412") << "whole or not at all";

  files.DieAtChange(2);
  EXPECT_THROW(replace(), SuddenDeath);
  EXPECT_FALSE(files.Delete("C:\\A")) << "what destructors try is ignored";
  EXPECT_EQ(files["C:\\A"], "old123412");
  files.Revive();
  files.FailPath("c:/a", FileOp::kRead, FileError::Kind::kRead);
  EXPECT_NE(ErrorOf([&] { (void)files.Read("C:\\A"); }), kNoError);
  replace();
  EXPECT_EQ(files["C:\\A"], "new");
  files.SetReadOnly("C:\\");
  EXPECT_NE(ErrorOf(replace), kNoError);
}

TEST(FakeClock, MovesByHandAndOverMidnight) {
  FakeClock clock;
  clock.Set({2024, 2, 29}, 23, 59, 59);
  const auto ticks = clock.Ticks();
  clock.Sleep(1500);
  EXPECT_EQ(clock.Today(), DateOf({2024, 3, 1}));
  EXPECT_NEAR(clock.Now() - clock.Today(), 0.5 / 86400, 1e-9);
  EXPECT_EQ(clock.Ticks() - ticks, 1500u);
}

}  // namespace
}  // namespace customsconv
