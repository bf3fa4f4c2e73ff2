#include "config/ini_file.h"

#include <gtest/gtest.h>

#include <random>

#include "support/environment_builder.h"

namespace customsconv {
namespace {

constexpr const char* kFile = "C:\\PROG\\kord.ini";
using Texts = std::vector<std::string>;

// One ini file in a world of its own; `bytes` are UTF-8 where the code page is 1251.
struct World {
  explicit World(std::string_view bytes, CodePage page = CodePage::kWindows)
      : ini((host.files.Put(kFile, page == CodePage::kWindows ? Win(bytes) : std::string(bytes)),
             host),
            kFile, CreateMode::kMustExist, page) {}
  std::string Read(std::string_view section, std::string_view key) {
    return Utf8(ini.ReadString(Win(section), Win(key), "default"));
  }
  // The file with "\n" as line end, so that tables stay readable.
  std::string Lines() {
    std::string lines;
    for (const char c : host.files[kFile].bytes()) lines.append(c == '\r' ? 0u : 1u, c);
    return lines;
  }
  FakeHost host;
  TVeltIni ini;
};

TEST(TVeltIni, ReadsWhatALineMeans) {
  const std::string n(300, 'n'), v(100'000, 'v');
  World world(
      "first = outside\r[ Раздел ] trailing text\n  Ключ =  a = b  \r\n;off=1\r\nno sign\n"
      "empty=\r\nключ=2\r\n[A_B]\r\nC=1\r\n[A]\r\nB_C=2\r\n[раздел]\r\nключ=3\r\nonly here=4\r\n"
      "[" +
      n + "]\n" + n + "=" + v + "\n[open header\r\nin no name=5" + std::string("\0x", 2));
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"", "FIRST", "outside"},         {"раздел", "КЛЮЧ", "a = b"},
      {"РАЗДЕЛ", "off", "default"},     {"Раздел", "empty", ""},
      {"Раздел", "no sign", "default"}, {"A", "B_C", "1"},  // "A_B" with "C" came first
      {"раздел", "only here", "4"},     {"", "in no name", "5x"},
      {"", n.substr(0, 255), v},        {n, n, "default"}};
  for (const auto& [section, key, value] : cases) {
    EXPECT_TRUE(world.Read(section, key) == value) << section << " / " << key;
  }
}

TEST(TVeltIni, ReadsNumbersAndFlags) {
  const World world("[S]\na=$1F\nb=-7\nc=12a\nd=\ne=0\n");
  for (const auto& [key, number] : {std::pair("a", 31), {"b", -7}, {"c", 5}, {"d", 5}, {"e", 0}}) {
    EXPECT_EQ(world.ini.ReadInteger("S", key, 5), number) << key;
    EXPECT_EQ(world.ini.ReadBool("S", key, true), number != 0) << key;
  }
}

TEST(TVeltIni, ListsSectionsAndTheirLines) {
  const World world("[ A ] \n;note\nx=1\n\nplain\n[B\n[a]\ny=2\n");
  EXPECT_EQ(world.ini.ReadSections(), (Texts{" A ", "", "a"}));
  EXPECT_EQ(world.ini.ReadSection("a"), (Texts{"x"}));
  EXPECT_EQ(world.ini.ReadSectionValues("a"), (Texts{"x=1", "plain"}));
  EXPECT_TRUE(world.ini.SectionExists("A") && !world.ini.SectionExists("B"));
}

TEST(TVeltIni, WritesAKeyWhereItBelongs) {
  const std::string n(26, 'n');
  const struct {
    std::string what, before, section, key, after;
  } cases[] = {{"in place of its line", "[A]\nX = 1\n[B]\n", "a", "x", "[A]\nx=!\n[B]\n"},
               {"switched off", "[A]\n;y=2\nz=1\n", "A", "y", "[A]\ny=!\nz=1\n"},
               {"28 characters", "[A]\n;\t" + n + "y=\n", "A", n + "y", "[A]\n" + n + "y=!\n"},
               {"29 are a remark", "[A]\n;\t" + n + "8y=\n", "A", n + "8y",
                "[A]\n;\t" + n + "8y=\n" + n + "8y=!\n"},
               {"above the blank line", "[A]\nx=1\n\n[B]\n", "A", "z", "[A]\nx=1\nz=!\n\n[B]\n"},
               {"above one blank line only", "[A]\n\n\n[B]\n", "A", "z", "[A]\n\nz=!\n\n[B]\n"},
               {"first of two sections", "[A]\n[B]\n[a]\n", "A", "z", "[A]\nz=!\n[B]\n[a]\n"},
               {"new section", "[A]\nx=1", "B", "z", "[A]\nx=1\n\n[B]\nz=!\n"},
               {"new in an empty file", "", "B", "z", "[B]\nz=!\n"}};
  for (const auto& c : cases) {
    World world(c.before);
    world.ini.WriteString(c.section, c.key, "!");
    EXPECT_EQ(world.Lines(), c.after) << c.what;
    EXPECT_EQ(world.Read(c.section, c.key), "!") << c.what;
  }
}

TEST(TVeltIni, GoesOnChangingWhereLinesMoved) {
  World world("[A]\r\nx=1\r\n\r\n[B]\ry=2\r\r\n;off=0\nx=5\n\nx=6\n[D]\n;c\n\nd=1\n[d]\nd=2");
  for (int i = 0; i < 100; ++i) world.ini.WriteInteger("B", "y", i);
  world.ini.WriteString("A", "n", "1");
  world.ini.WriteInteger("B", "y", 3);
  world.ini.WriteBool("B", "off", true);
  world.ini.WriteString("C", "k", "");
  world.ini.DeleteKey("A", "x");
  world.ini.WriteString("A", "x", "again");
  world.ini.DeleteKey("b", "X");
  EXPECT_EQ(world.Read("B", "x"), "6") << "the second line comes to light";
  world.ini.EraseSection("D");
  EXPECT_EQ(world.Lines(), "[A]\nn=1\nx=again\n\n[B]\ny=3\n\noff=1\n\nx=6\n[d]\nd=2\n\n[C]\nk=\n");
}

TEST(IniLines, KeepTheirNumbersAndOrderThroughThousandsOfChanges) {
  IniLines lines;
  lines.Assign("zero\r\none\r\n");
  std::vector<std::pair<IniLines::Number, std::string>> expected = {{1, "zero"}, {2, "one"}};
  std::mt19937 random(1);
  for (int i = 0; i < 20'000; ++i) {
    const auto place = static_cast<std::ptrdiff_t>(random() % (expected.size() + 1));
    const auto line = expected.begin() + place;
    const std::string text(random() % 30, static_cast<char>('a' + i % 26));
    if (const auto change = random() % 7; change > 3 || line == expected.end()) {
      const auto next = line == expected.end() ? IniLines::kEnd : line->first;
      expected.insert(line, {lines.Insert(next, text), text});
    } else if (change > 0) {
      lines.Set(line->first, line->second = text);
    } else {
      lines.Remove(line->first);
      expected.erase(line);
    }
    if (i % 500 != 0) continue;
    std::string content, expected_content;
    for (const std::string_view piece : lines.Content()) content += piece;
    for (const auto& [number, line_text] : expected) {
      expected_content += line_text + "\r\n";
      ASSERT_EQ(lines.Text(number), line_text);
    }
    ASSERT_EQ(content, expected_content);
  }
}

TEST(TVeltIni, LeavesTheFileAloneWhenNothingChanges) {
  World world("[A]\nx=1\n");
  world.ini.WriteString("A", "x", "1");
  world.ini.DeleteKey("A", "y");
  world.ini.EraseSection("B");
  EXPECT_EQ(Utf8(ErrorOf([&] { world.ini.WriteString("A", "x", "a\tb"); })),
            "TVeltIni: Недопустимое значение A_x=a\tb");
  EXPECT_EQ(world.Read("A", "x") + world.Lines(), "1[A]\nx=1\n");
  EXPECT_EQ(world.host.files.changes(), 0);
}

TEST(TVeltIni, KeepsTheCodePageOfTheFile) {
  const std::string dos = "[\x90]\r\n\xAA\xAB\xEE\xE7=\x84\x80\r\n";  // [Р] ключ=ДА in 866
  for (const CodePage page : {CodePage::kDos, CodePage::kUnknown}) {
    World world(dos, page);
    EXPECT_EQ(world.Read("р", "КЛЮЧ"), "ДА");
    world.ini.WriteString(Win("Р"), "n", Win("Нет"));
    EXPECT_EQ(world.host.files[kFile], dos + "n=\x8D\xA5\xE2\r\n");
  }
  for (const CodePage page : {CodePage::kDos, CodePage::kWindows}) {
    World world("", page);
    world.host.files[kFile] = "\xEF\xBB\xBF[A]\r\nx=1\r\n";
    world.ini.Reload();
    world.ini.WriteString("A", "y", "2");
    EXPECT_EQ(world.host.files[kFile], "[A]\r\nx=1\r\ny=2\r\n") << "no mark";
  }
  World world("\xEF\xBB\xBF[A]\r\nключ=да\r\n", CodePage::kUnknown);
  EXPECT_EQ(world.Read("A", "ключ"), "да");
  EXPECT_EQ(ErrorOf([&] { world.ini.WriteString("A", "x", "1"); }),
            Win("Ini-файл в UTF-8 кодировке сохранять не умею : ") + kFile);
  EXPECT_EQ(world.host.files.changes(), 0);
}

TEST(TVeltIni, WhatCouldNotBeWrittenIsWrittenLaterWhereNobodyElseWrote) {
  const std::string old = "[A]\r\nx=1\r\n", changed = "[A]\r\nx=2\r\n", others = "[A]\r\nx=8\r\n";
  enum Trouble { kOver, kStays, kOthersWrote, kOthersWrite };
  const std::tuple<Trouble, std::string, std::string> cases[] = {
      {kOver, changed, ""},
      {kStays, old, ""},
      {kOthersWrote, others, ": файл изменен другой программой, изменения потеряны"},
      {kOthersWrite, old, ": файл занят"}};
  for (const bool destroyed : {true, false}) {
    for (const auto& [trouble, after, reason] : cases) {
      SCOPED_TRACE(std::to_string(trouble) + (destroyed ? " destroyed" : " read again"));
      FakeHost host;
      host.files[kFile] = old;
      auto ini =
          std::make_unique<TVeltIni>(host, kFile, CreateMode::kMustExist, CodePage::kWindows);
      host.files.FailPath(kFile, FileOp::kCommit, FileError::Kind::kWrite);
      for (int i = 0; i < 2; ++i) {  // the same change must not pass for written
        EXPECT_NE(ErrorOf([&] { ini->WriteString("A", "x", "2"); }).find(kFile), std::string::npos);
      }
      EXPECT_EQ(ini->ReadString("A", "x", ""), "2") << "the lines keep the change";
      if (trouble != kStays) host.files.StopFailing();
      if (trouble == kOthersWrote) host.files[kFile] = others;
      const auto lock = trouble == kOthersWrite ? host.files.Lock(kFile, [] {}) : nullptr;
      if (destroyed) {
        ini.reset();
      } else {
        ini->UpdateFile();
        EXPECT_EQ(ini->ReadString("A", "x", ""), after.substr(7, 1));
      }
      EXPECT_EQ(host.files[kFile], after);
      ASSERT_EQ(host.dialogs.exceptions.size(), trouble == kOver ? 0U : 1U);
      if (reason.empty()) continue;
      EXPECT_EQ(host.dialogs.exceptions[0], Win("Не могу записать файл ") + kFile + Win(reason));
    }
  }
}

TEST(TVeltIni, MissingFilesFollowTheCreateMode) {
  World world("");
  world.host.files.Remove(kFile);
  TVeltIni(world.host, kFile, CreateMode::kInMemory, CodePage::kWindows);
  EXPECT_FALSE(world.host.files.Has(kFile));
  TVeltIni(world.host, kFile, CreateMode::kCreate, CodePage::kWindows);
  EXPECT_EQ(world.host.files[kFile], "");
}

TEST(TVeltIni, AFileThatCouldNotBeReadIsNotWrittenOver) {
  World world("[A]\nx=1\n");
  world.host.files.FailPath(kFile, FileOp::kRead, FileError::Kind::kRead);
  world.ini.Reload();
  EXPECT_EQ(world.host.dialogs.exceptions.size(), 1u);
  world.host.files.StopFailing();
  const std::string error = ErrorOf([&] { world.ini.WriteString("A", "y", "2"); });
  EXPECT_NE(error.find(kFile), std::string::npos);
  EXPECT_EQ(world.Lines(), "[A]\nx=1\n");
  world.ini.Reload();
  world.ini.WriteString("A", "y", "3");
  EXPECT_EQ(world.Lines(), "[A]\nx=1\ny=3\n");
}

TEST(TVeltIni, RefreshComparesWithTheAgeAtConstruction) {
  World world("[A]\r\nx=1\r\n");
  const FileStamp age = world.ini.file_age();
  for (const auto& [stamp, value] : {std::pair(age, "1"), std::pair(age + 1, "2")}) {
    world.host.files[kFile] = "[A]\r\nx=2\r\n";
    world.host.files.SetStamp(kFile, stamp);
    world.ini.Refresh();
    EXPECT_EQ(world.Read("A", "x"), value);
  }
  EXPECT_EQ(world.ini.file_age(), age);
}

TEST(TConfiguration, ReadsFlagsAndListsInWordsAndAppendsValues) {
  TestEnvironment world("[S]\nyes=да\nno=2\nempty=\nlist=,one; two\n");
  TConfiguration& config = world.config();
  EXPECT_TRUE(config.GetBool("S", "yes", false) && config.GetBool("S", "empty", true));
  EXPECT_FALSE(config.GetBool("S", "no", true) || config.GetBool("S", "empty", false));
  EXPECT_EQ(config.GetWord("S", "list", 2), " two");
  config.AppendValue("S", "list", "three");
  config.AppendValue("S", "new", "one");
  EXPECT_EQ(config.ReadSectionValues("S")[3] + config.GetString("S", "new", ""),
            "list=,one; two,three,one");
}

TEST(TConfiguration, KeepsLongValuesInPieces) {
  const std::string a(240, 'a'), b(240, 'b'), c(20, 'c');
  TestEnvironment world("[S]\nk=old\nk(4)=x\nk(5)=y\nk(6)=\nk(7)=z\n");
  TConfiguration& config = world.config();
  EXPECT_EQ(ErrorOf([&] { config.SetLongString("S", "k", a + "b\tb"); }),
            Win("TVeltIni: Недопустимое значение S_k(2)=b\tb"));
  EXPECT_EQ(config.GetLongString("S", "k", ""), "old");
  config.SetLongString("S", "k", a + b + c);
  EXPECT_EQ(world.host.files[kFile],
            "[S]\r\nk(6)=\r\nk(7)=z\r\nk(1)=" + a + "\r\nk(2)=" + b + "\r\nk(3)=" + c + "\r\n");
  EXPECT_EQ(world.host.files.Count(FileOp::kCommit), 1) << "nobody sees half of the pieces";
  EXPECT_EQ(config.GetLongString("S", "k", ""), a + b + c);
  config.SetLongString("S", "k", a);
  EXPECT_EQ(config.ReadSection("S"), (std::vector<std::string>{"k(6)", "k(7)", "k(1)"}));
  config.SetLongString("S", "k", "short");
  EXPECT_EQ(config.ReadSection("S"), (std::vector<std::string>{"k(6)", "k(7)", "k"}));
  EXPECT_EQ(config.GetLongString("S", "k", ""), "short");
}

TEST(SharedConfigurations, HandsOutOneObjectUntilTheFileChanges) {
  TestEnvironment world("[S]\nk=1\n");
  SharedConfigurations shared(world.host);
  TConfiguration& first = shared.Get(kFile, CodePage::kWindows);
  EXPECT_EQ(&shared.Get("c:\\prog\\KORD.INI", CodePage::kWindows), &first);
  world.host.files[kFile] = "[S]\r\nk=2\r\n";
  EXPECT_EQ(shared.Get(kFile, CodePage::kWindows).GetString("S", "k", ""), "2");
  world.host.files.Remove(kFile);
  EXPECT_EQ(ErrorOf([&] { shared.Get(kFile, CodePage::kWindows); }),
            Win("Не могу открыть ini-файл \"C:\\PROG\\kord.ini\""));
}

}  // namespace
}  // namespace customsconv
