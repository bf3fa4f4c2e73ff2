// The fake must keep the promises of the real files, else tests on it prove nothing.
#include "support/fake_files.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <vector>

#include "platform/posix/posix_files.h"
#include "support/temp_folder.h"
#include "support/text.h"

namespace customsconv {
namespace {

// The same steps on the real files and on the fake ones must give the same account.
std::string AccountOf(Files& files, const std::string& folder) {
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
  for (const std::string& path : {folder, folder + "\\none", folder + "\\none\\x"}) {
    attempt([&] { (void)files.Read(path); });
    attempt([&] { (void)files.Open(path, kModeRead); });
    if (path.ends_with("none")) continue;  // that could be made
    attempt([&] { (void)files.Open(path, kModeCreate); });
    attempt([&] { files.Replace(path, "x"); });
    attempt([&] { files.Append(path, "x"); });
    attempt([&] { (void)files.CreateNew(path); });
  }
  {
    const auto stream = files.Open(file, kModeReadWrite | kShareDenyWrite);
    note(stream->Seek(8, SeekOrigin::kBegin));
    stream->Write("end", 3);
    note(stream->Seek(-10, SeekOrigin::kCurrent));
    stream->Write("XY", 2);
    note(stream->Seek(-4, SeekOrigin::kEnd));
    std::string rest(8, '.');
    note(stream->Read(rest.data(), rest.size()));
    account += rest;
    note(stream->Size());
    stream->Reserve(1000);
    stream->Resize(12);
    const FileStamp before = stream->Stamp();
    stream->Sync();
    note(stream->Size() + (stream->Stamp() != before ? 0 : 1));
    attempt([&] { stream->Seek(-1, SeekOrigin::kBegin); });
  }
  account += files.Read(file);
  files.Replace(folder + "\\b.txt", "");
  files.Replace(folder + "\\held", "");  // as a dead process leaves it
  {
    const auto held = files.HoldFile(folder + "\\held");
    note(files.HoldFile(folder + "\\held") == nullptr);
    note(files.CreateNew(folder + "\\twin", folder + "\\held"));
    note(files.CreateNew(folder + "\\twin", folder + "\\held"));
    note(files.Stamp(folder + "\\twin") == files.Stamp(folder + "\\held"));
    note(files.Stamp(folder + "\\twin") == files.Stamp(folder + "\\b.txt"));
    note(files.Rename(folder + "\\twin", folder + "\\b.txt"));
    note(files.Rename(folder + "\\twin", folder + "\\c.txt"));
    note(files.SyncFolder(folder + "\\c.txt"));
  }
  attempt([&] { (void)files.HoldFile(folder + "\\none\\held"); });
  for (const std::string& name : files.Find(folder, "*.*")) account += Utf8(name) + ' ';
  note(files.Delete(folder + Win("\\ЁЖ.dbf")));
  note(files.Delete(file));
  note(files.Stamp(file) == kNoStamp);
  return account;
}

// Whether a file that is open in the first mode can be opened in the second, and what then can
// be done with it.
std::string ShareModesOf(Files& files, const std::string& path) {
  std::vector<FileMode> modes = {kModeCreate};
  for (const FileMode access : {kModeRead, kModeWrite, kModeReadWrite}) {
    for (const FileMode share : {kShareExclusive, kShareDenyWrite, kShareDenyNone}) {
      modes.push_back(access | share);
    }
  }
  std::string account;
  for (const FileMode first : modes) {
    files.Replace(path, "x");
    const auto held = files.Open(path, first);
    account += ErrorOf([&] { held->Write("y", 1); }) == kNoError ? " writes" : " reads";
    for (const FileMode second : modes) {
      account += ErrorOf([&] { (void)files.Open(path, second); }) == kNoError ? '+' : '-';
    }
  }
  return account;
}

// What a power cut may leave of two sectors in an old file and of a new file.
TEST(FakeFiles, LosesWhatWasNotSynced) {
  const std::string old_bytes(1024, 'o'), new_bytes(1024, 'n');
  std::vector<std::string> states;
  for (unsigned order = 0; order < 40; ++order) {
    FakeFiles files;
    files["C:\\A"] = old_bytes;
    const auto stream = files.Open("C:\\A", kModeReadWrite | kShareDenyNone);
    stream->Write(new_bytes.data(), new_bytes.size());
    EXPECT_TRUE(files.CreateNew("C:\\B"));
    if (order == 39) stream->Sync();
    if (order == 39) files.SyncFolder("C:\\A");
    files.LosePower(order);
    states.push_back(files["C:\\A"].bytes() + (files.Has("C:\\B") ? "+" : "-"));
  }
  EXPECT_EQ(states[0], old_bytes + "-");
  EXPECT_EQ(states[1], new_bytes + "+");
  EXPECT_EQ(states[39], new_bytes + "+");
  EXPECT_EQ(std::set(states.begin(), states.end()).size(), 8u) << "each sector and name on its own";
}

TEST(FakeFiles, BehavesAsTheRealFilesDo) {
  const TempFolder folder;
  posix::PosixFiles real;
  FakeFiles fake;
  fake.AddFolder("C:\\Out");
  EXPECT_EQ(AccountOf(fake, "c:/OUT"), AccountOf(real, folder.Win("")));
  EXPECT_EQ(ShareModesOf(fake, "c:/OUT/x"), ShareModesOf(real, folder.Win("x")));
}

}  // namespace
}  // namespace customsconv
