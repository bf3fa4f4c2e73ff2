#include "platform/posix/posix_files.h"

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

#include "platform/output_file.h"
#include "platform/posix/file_descriptor.h"
#include "platform/posix/system_names.h"
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
  {
    const auto pending = files.Stage(folder.Win("link"), std::string(100'000, 'n'));
    EXPECT_EQ(folder.Read("old"), "before") << "staged only";
  }
  EXPECT_EQ(folder.Listing(), "link old") << "a discarded stage leaves nothing";
  files.Replace(folder.Win("LINK"), "after");
  EXPECT_EQ(folder.Read("old"), "after");
  EXPECT_EQ(folder.Listing(), "link old");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(fs::status(folder / "old").permissions(), fs::perms(0640));
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

TEST_F(PosixFilesTest, AnOutputOfManyPiecesComesInOneStep) {
  folder.Write("out", "before");
  const std::string piece(100'000, 'p');
  files.StartOutput(folder.Win("out"))->Write(piece);
  EXPECT_EQ(folder.Listing(), "out") << "an abandoned output leaves nothing";
  const auto output = files.StartOutput(folder.Win("OUT"));
  for (const std::string& bytes : {piece, piece, piece + piece + piece, std::string("end")}) {
    output->Write(bytes);
  }
  EXPECT_EQ(folder.Read("out"), "before");
  output->Commit();
  EXPECT_EQ(folder.Read("out"), piece + piece + piece + piece + piece + "end");
  // A library that opens the temporary file by its name.
  const auto named = files.StartOutput(folder.Win("out"));
  std::ofstream(named->SystemName()) << "by name";
  named->Commit();
  EXPECT_EQ(folder.Read("out"), "by name");
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
    EXPECT_EQ(Utf8(ErrorOf([&] { call(folder.Win(name)); })), expected);
  }
  EXPECT_NE(ErrorOf([&] { (void)files.Open(folder.Win("busy"), kModeCreate); }), kNoError);
  EXPECT_EQ(folder.Read("busy"), "kept") << "refused before anything is cut off";
  EXPECT_FALSE(files.Delete(folder.Win("Папка")));
}

TEST_F(PosixFilesTest, RespectsPermissions) {
  fs::permissions(folder.path(), fs::perms(0755));
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

}  // namespace
}  // namespace customsconv
