#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <vector>

#include "platform/output_file.h"
#include "platform/posix/file_descriptor.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/system_names.h"
#include "support/fake_files.h"
#include "support/temp_folder.h"
#include "support/text.h"

namespace customsconv {
namespace {

namespace fs = std::filesystem;
using posix::PosixFiles;

// Starts `work` in a process of its own.
pid_t Start(const std::function<int()>& work) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(work());
  return child;
}

// Its exit status.
int EndOf(pid_t child) {
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// An empty folder.
class PosixFilesTest : public testing::Test {
 protected:
  TempFolder folder;
  PosixFiles files;
};

TEST_F(PosixFilesTest, FindsNamesWithoutRegardToLetterCase) {
  folder.Write("Данные/Ёлки/Kord.ini", "one");
  folder.Write("Данные/ёлки/KORD.INI", "two");
  folder.Write("данные/x", "three");
  folder.Write("A.TXT", "A");
  folder.Write("a.txt", "a");
  const std::map<const char*, const char*> contents = {
      {"Данные/Ёлки/Kord.ini", "one"},
      {"ДАННЫЕ\\ёЛКИ\\kord.INI", "one"},
      {"Данные/ёлки/kord.ini", "two"},
      {"данные/X", "three"},
      {"a.txt", "a"},
      {"A.txt", "A"},
      {"Данные\\.\\\\..\\ДАННЫЕ\\ЁЛКИ\\kord.ini", "one"}};
  for (const auto& [name, content] : contents) {
    EXPECT_EQ(files.Read(folder.Win(name)), content) << name;
  }
  EXPECT_TRUE(files.FolderExists(folder.Win("дАННЫЕ\\ёлки")));
  EXPECT_FALSE(files.Exists(folder.Win("дАННЫЕ\\ёлки")));
  // "данные" exists as written, so a file of "Данные" is not looked for there.
  EXPECT_FALSE(files.Exists(folder.Win("данные/Ёлки/Kord.ini")));
}

TEST_F(PosixFilesTest, ReplacesInOneStepAndKeepsNamesPermissionsAndLinks) {
  folder.Write("old", "before");
  fs::permissions(folder / "old", fs::perms(0640));
  fs::create_symlink("old", folder / "link");
  const std::string piece(100'000, 'p'), pieces = piece + piece + piece;
  for (const bool commit : {false, true}) {
    const auto output = files.StartOutput(folder.Win("LINK"));
    for (const std::string& bytes : {piece, pieces, std::string("end")}) output->Write(bytes);
    EXPECT_EQ(folder.Read("old"), "before") << "not in place yet";
    if (commit) output->Commit();
  }
  EXPECT_EQ(folder.Listing(), "link old") << "nothing is left of an abandoned output";
  EXPECT_EQ(folder.Read("old"), piece + pieces + "end");
  (void)files.Stage(folder.Win("link"), "abandoned, too");
  EXPECT_EQ(folder.Listing() + folder.Read("old").substr(0, 1), "link oldp");
  files.Replace(folder.Win("link"), "after");
  EXPECT_EQ(folder.Read("old"), "after");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(fs::status(folder / "old").permissions(), fs::perms(0640));
  // A library that opens the temporary file by its name.
  const auto named = files.StartOutput(folder.Win("old"));
  std::ofstream(named->SystemName()) << "by name";
  named->Commit();
  EXPECT_EQ(folder.Read("old"), "by name");
  fs::create_directory(folder / "Out");
  files.Replace(folder.Win("OUT\\Новый.Dbf"), "x");
  EXPECT_EQ(folder.Read("Out/Новый.Dbf"), "x") << "a new name is stored as given";
}

// A process that was started without standard streams goes on printing to their numbers.
TEST_F(PosixFilesTest, NoFileTakesThePlaceOfAStandardStream) {
  const pid_t child = Start([&] {
    for (const int number : {0, 1, 2}) ::close(number);
    const auto pending = files.Stage(folder.Win("staged"), "whole");
    const auto stream = files.Open(folder.Win("stream"), kModeCreate);
    stream->Write("whole", 5);
    for (const int number : {0, 1, 2}) {
      if (::write(number, "error", 5) == 5) return 1;
    }
    pending->Commit();
    posix::OpenStandardDescriptors();
    const bool all_open = ::fcntl(0, F_GETFD) + ::fcntl(1, F_GETFD) + ::fcntl(2, F_GETFD) == 0;
    return all_open && ::write(2, "error", 5) < 0 ? 0 : 2;
  });
  EXPECT_EQ(EndOf(child), 0);
  EXPECT_EQ(folder.Read("staged") + folder.Read("stream"), "wholewhole");
}

TEST_F(PosixFilesTest, WhatKilledRunsLeftGoesWithTheFirstReplacing) {
  const auto old_time = fs::file_time_type::clock::now() - std::chrono::hours(1);
  for (const char* name : {"~cc1-1-1.tmp", "~cc1-1-2.tmp"}) folder.Write(name, "left behind");
  fs::last_write_time(folder / "~cc1-1-1.tmp", old_time);
  files.Replace(folder.Win("f"), "x");
  EXPECT_EQ(folder.Listing(), "f ~cc1-1-2.tmp") << "a young one may be in use";
}

TEST_F(PosixFilesTest, FailuresNameTheFileAndTheCause) {
  fs::create_directory(folder / "Папка");
  folder.Write("file", "x");
  folder.Write("busy", "kept");
  const auto held = files.Open(folder.Win("busy"), kModeRead | kShareExclusive);
  const auto read = [&](const std::string& path) { (void)files.Read(path); };
  const auto replace = [&](const std::string& path) { files.Replace(path, ""); };
  const std::tuple<std::function<void(const std::string&)>, std::string, std::string> cases[] = {
      {read, "нет", "Не найден файл %"},
      {read, "ПАПКА", "Не могу открыть файл %: это папка"},
      {read, "file/x", "Не найден файл %: часть пути - не папка"},
      {read, "busy", "Не могу открыть файл %: файл занят"},
      {read, std::string(300, 'n'), "Не могу открыть файл %: слишком длинное имя"},
      {replace, "Папка", "Не могу создать файл %: это папка"},
      {replace, "нет/x", "Не могу создать файл %: нет такого файла или папки"}};
  for (auto [call, name, expected] : cases) {  // "%" stands for the path
    expected.replace(expected.find('%'), 1, folder / name);
    const std::function<void()> act = std::bind(call, folder.Win(name));
    EXPECT_EQ(Utf8(ErrorOf(act)), expected);
  }
  EXPECT_NE(ErrorOf([&] { (void)files.Open(folder.Win("busy"), kModeCreate); }), kNoError);
  EXPECT_EQ(folder.Read("busy"), "kept") << "refused before anything is cut off";
  EXPECT_FALSE(files.Delete(folder.Win("Папка")));
}

TEST_F(PosixFilesTest, RespectsPermissions) {
  fs::permissions(folder.path(), fs::perms(0777));
  fs::create_directory(folder / "out");
  for (const char* name : {"secret", "fixed"}) folder.Write(name, "x");
  const std::pair<const char*, unsigned> rights[] = {{"secret", 0}, {"fixed", 0444}, {"out", 0555}};
  for (const auto& [name, right] : rights) fs::permissions(folder / name, fs::perms(right));
  const auto replace = [&](const char* name) { files.Replace(folder.Win(name), "y"); };
  const pid_t child = Start([&] {
    if (::getuid() == 0 && ::setuid(65534) != 0) return 9;  // root may do everything
    const auto denied = [](const char* action, const auto& call) {
      const std::string message = Utf8(ErrorOf(call));
      return message.starts_with(action) && message.ends_with("нет прав доступа");
    };
    const bool all = denied("Не могу открыть", [&] { (void)files.Read(folder.Win("secret")); }) &&
                     denied("Не могу создать", [&] { replace("fixed"); }) &&
                     denied("Не могу создать", [&] { replace("out/x"); });
    return all ? 0 : 1;
  });
  EXPECT_EQ(EndOf(child), 0);
  EXPECT_EQ(folder.Read("fixed"), "x");
}

TEST_F(PosixFilesTest, ReadsWholeFilesAndTheirBeginnings) {
  const std::string content = std::string("a\0\r\n\xFF", 5) + std::string(200'000, 'x');
  folder.Write("f", content);
  folder.Write("empty", "");
  EXPECT_EQ(files.Read(folder.Win("f")), content);
  for (const std::size_t limit : {std::size_t{3}, content.size(), content.size() + 7}) {
    EXPECT_EQ(files.Read(folder.Win("f"), limit), content.substr(0, limit));
  }
  EXPECT_EQ(files.Read(folder.Win("empty")), "");
  EXPECT_NE(files.Read("/proc/self/status").find("Name:"), std::string::npos)
      << "a file whose size the system does not know";
  EXPECT_NE(ErrorOf([&] { (void)files.Read("/dev/zero"); }), kNoError) << "without an end";
}

TEST_F(PosixFilesTest, APipeIsReadOnceAndTheReaderMayGiveUp) {
  struct GivenUp {};
  const std::string pipe = folder.Win("pipe"), content(200'000, 'x');
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const FileStamp before = files.Stamp(pipe);
  for (const std::size_t limit : {0, 150'000}) {
    const pid_t writer = Start([&] {
      std::ofstream out(pipe);
      out << content.substr(0, 10) << std::flush;
      ::usleep(150'000);
      out << content.substr(10) << std::flush;
      return 0;
    });
    EXPECT_EQ(files.Read(pipe, limit).size(), limit == 0 ? content.size() : limit);
    EndOf(writer);
  }
  EXPECT_EQ(files.Stamp(pipe), before) << "so nobody reads it again";
  const PosixFiles impatient([] { throw GivenUp(); });
  EXPECT_THROW((void)impatient.Read(pipe), GivenUp);
}

TEST_F(PosixFilesTest, EveryWriteChangesTheStamp) {
  const std::string path = folder.Win("f");
  EXPECT_EQ(files.Stamp(path), kNoStamp);
  EXPECT_EQ(files.Stamp(folder.Win("")), kNoStamp) << "a folder";
  files.Replace(path, "1");
  const FileStamp first = files.Stamp(path);
  EXPECT_EQ(files.Stamp(folder.Win("F")), first);
  EXPECT_EQ(files.Open(path, kModeRead)->Stamp(), first);
  files.Replace(path, "2");  // the same size within the same tick of the clock
  const FileStamp second = files.Stamp(path);
  EXPECT_NE(second, first);
  files.Append(path, "3");
  EXPECT_NE(files.Stamp(path), second);
}

TEST_F(PosixFilesTest, FindsFilesByMaskInByteOrder) {
  for (const char* name : {"b.DCF", "A.dcf", "Ёж.Dcf", "a.txt", "漢.dcf"}) folder.Write(name, "");
  fs::create_directory(folder / "folder.dcf");
  fs::create_symlink("a.txt", folder / "link.dcf");
  const auto find = [&](std::string_view mask) {
    std::string all;
    for (const std::string& name : files.Find(folder.Win(""), mask)) all += Utf8(name) + " ";
    return all;
  };
  EXPECT_EQ(find("*.dcf"), "A.dcf b.DCF link.dcf Ёж.Dcf ");
  EXPECT_EQ(find("?.*"), "A.dcf a.txt b.DCF ");
  EXPECT_TRUE(files.Find(folder.Win("no such folder"), "*").empty());
}

TEST_F(PosixFilesTest, KnowsWhichNamesLeadToOneFile) {
  folder.Write("Out/A.DBF", "");
  fs::create_symlink("Out", folder / "Link");
  const std::string identity = files.Identity(folder.Win("Out/A.DBF"));
  for (const char* name : {"OUT\\a.dbf", "link/A.dbf", "Out\\..\\.\\Out/A.DBF"}) {
    EXPECT_EQ(files.Identity(folder.Win(name)), identity) << name;
  }
  EXPECT_NE(files.Identity(folder.Win("Out/B.DBF")), identity);
  EXPECT_EQ(files.Identity(folder.Win("Out/B.DBF")), files.Identity(folder.Win("LINK\\B.DBF")));
  EXPECT_EQ(Utf8(files.ShortName(folder.Win("OUT\\a.dbf"))), fs::canonical(folder / "Out/A.DBF"));
  EXPECT_EQ(files.ShortName(folder.Win("Out/B.DBF")), "");
}

TEST_F(PosixFilesTest, NamesThatTheSystemOrTheCodePageCannotHoldLeadNowhere) {
  folder.Write("a", "x");
  EXPECT_FALSE(files.Exists(folder.Win("a") + std::string("\0tail", 5)));
  EXPECT_EQ(posix::NameFromSystem("Ёж/漢"), std::nullopt);
  EXPECT_EQ(posix::NameFromSystem("\xFF"), std::nullopt);
  EXPECT_EQ(posix::NameFromSystem("Ёж №1"), Win("Ёж №1"));
  fs::create_directory(folder / "漢");
  EXPECT_EQ(EndOf(Start([&] {
              fs::current_path(folder / "漢");
              return files.FullName("/A/../B") == "\\B" && files.FullName("B") == "B" ? 0 : 1;
            })),
            0);
}

// --- The fake must keep the promises of the real files, else tests on it prove nothing.

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
  PosixFiles real;
  FakeFiles fake;
  fake.AddFolder("C:\\Out");
  EXPECT_EQ(AccountOf(fake, "c:/OUT"), AccountOf(real, folder.Win("")));
  EXPECT_EQ(ShareModesOf(fake, "c:/OUT/x"), ShareModesOf(real, folder.Win("x")));
}

}  // namespace
}  // namespace customsconv
