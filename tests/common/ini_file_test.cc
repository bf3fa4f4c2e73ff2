#include "common/ini_file.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr const char* kFile = "C:\\PROG\\kord.ini";

// The file after one change to `before`, line ends as "\n" so that tables stay readable.
template <typename Change>
std::string After(std::string_view before, Change&& change) {
  FakeHost host;
  host.files[kFile] = before;
  TVeltIni ini(host, kFile, CreateMode::kMustExist, CodePage::kWindows);
  change(ini);
  std::string after;
  for (const char c : host.files[kFile].bytes()) {
    if (c != '\r') after += c;
  }
  return after;
}

TEST(TVeltIni, ReadsWhatALineMeans) {
  FakeHost host;
  host.files[kFile] = Win("first = before any section\r"
                          "[ Раздел ] trailing text\n"
                          "  Ключ =  a = b  \r\n"
                          ";off=1\r\n"
                          "no equals sign\n"
                          "empty=\r\n"
                          "ключ=second\r\n"
                          "[A_B]\r\nC=1\r\n[A]\r\nB_C=2\r\n"
                          "[раздел]\r\nключ=third\r\nonly here=4\r\n"
                          "[open header\r\nin no name=5") +
                      std::string("\0x", 2);
  const TVeltIni ini(host, kFile, CreateMode::kMustExist, CodePage::kWindows);
  const struct {
    const char* section;
    const char* key;
    const char* value;
  } cases[] = {
      {"", "FIRST", "before any section"},
      {"раздел", "КЛЮЧ", "a = b"},
      {"РАЗДЕЛ", "off", "default"},
      {"Раздел", "empty", ""},
      {"Раздел", "no equals sign", "default"},
      {"A", "B_C", "1"},  // "A_B" with "C" came first
      {"раздел", "only here", "4"},
      {"", "in no name", "5x"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Utf8(ini.ReadString(Win(c.section), Win(c.key), "default")), c.value)
        << c.section << " / " << c.key;
  }
}

TEST(TVeltIni, HoldsHeadersAndKeysTo255BytesAndValuesToNothing) {
  const std::string long_name(300, 'n');
  const std::string long_value(100'000, 'v');
  FakeHost host;
  host.files[kFile] = "[" + long_name + "]\nk=1\n[S]\n" + long_name + "=" + long_value + "\n";
  const TVeltIni ini(host, kFile, CreateMode::kMustExist, CodePage::kWindows);
  EXPECT_EQ(ini.ReadString("", "k", ""), "1");
  EXPECT_EQ(ini.ReadString("S", long_name.substr(0, 255), ""), long_value);
  EXPECT_EQ(ini.ReadSections(), (std::vector<std::string>{long_name, "S"}));
}

TEST(TVeltIni, ReadsNumbersAndFlags) {
  FakeHost host;
  host.files[kFile] = "[S]\na=12\nb=$1F\nc=0x1f\nd=-7\ne=12a\nf=\ng=0\n";
  const TVeltIni ini(host, kFile, CreateMode::kMustExist, CodePage::kWindows);
  const struct {
    const char* key;
    std::int32_t number;
    bool flag;
  } cases[] = {{"a", 12, true}, {"b", 31, true}, {"c", 31, true}, {"d", -7, true},
               {"e", 5, false}, {"f", 5, false}, {"g", 0, false}, {"none", 5, false}};
  for (const auto& c : cases) {
    EXPECT_EQ(ini.ReadInteger("S", c.key, 5), c.number) << c.key;
    EXPECT_EQ(ini.ReadBool("S", c.key, false), c.flag) << c.key;
  }
}

TEST(TVeltIni, ListsSectionsAndTheirLines) {
  FakeHost host;
  host.files[kFile] = "[ A ] \n;note\nx=1\n\nplain\n[B\n[a]\ny=2\n";
  const TVeltIni ini(host, kFile, CreateMode::kMustExist, CodePage::kWindows);
  using Texts = std::vector<std::string>;
  EXPECT_EQ(ini.ReadSections(), (Texts{" A ", "", "a"}));
  EXPECT_EQ(ini.ReadSection("a"), (Texts{"x"}));
  EXPECT_EQ(ini.ReadSectionValues("a"), (Texts{"x=1", "plain"}));
  EXPECT_EQ(ini.ReadSectionValues("none"), Texts{});
  EXPECT_TRUE(ini.SectionExists("A") && ini.SectionExists("") && !ini.SectionExists("B"));
}

TEST(TVeltIni, WritesAKeyWhereItBelongs) {
  const struct {
    const char* what;
    const char* before;
    const char* section;
    const char* key;
    const char* after;
  } cases[] = {
      {"in place of its line", "[A]\nX = 1 ;old\n[B]\n", "a", "x", "[A]\nx=new\n[B]\n"},
      {"of two lines the first", "[A]\nx=1\nx=2\n", "A", "x", "[A]\nx=new\nx=2\n"},
      {"in place of the switched off line", "[A]\n;y=2\nz=1\n", "A", "y", "[A]\ny=new\nz=1\n"},
      {"a remark is no switched off line", "[A]\n; 28 characters are a key at most=1\n", "A",
       " 28 characters are a key at most",
       "[A]\n; 28 characters are a key at most=1\n"
       " 28 characters are a key at most=new\n"},
      {"above the blank line", "[A]\nx=1\n\n[B]\ny=2\n", "A", "z", "[A]\nx=1\nz=new\n\n[B]\ny=2\n"},
      {"above one blank line only", "[A]\n\n\n[B]\n", "A", "z", "[A]\n\nz=new\n\n[B]\n"},
      {"without a blank line", "[A]\n[B]\n", "A", "z", "[A]\nz=new\n[B]\n"},
      {"at the end of the last section", "[A]\nx=1\n\n", "A", "z", "[A]\nx=1\nz=new\n\n"},
      {"in the first of two sections", "[A]\n[B]\n[a]\n", "A", "z", "[A]\nz=new\n[B]\n[a]\n"},
      {"a new section behind a blank line", "[A]\nx=1", "B", "z", "[A]\nx=1\n\n[B]\nz=new\n"},
      {"a blank line that is there", "[A]\nx=1\n\n", "B", "z", "[A]\nx=1\n\n[B]\nz=new\n"},
      {"in an empty file", "", "B", "z", "[B]\nz=new\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const auto write = [&](TVeltIni& ini) {
      ini.WriteString(c.section, c.key, "new");
      EXPECT_EQ(ini.ReadString(c.section, c.key, ""), "new");
    };
    EXPECT_EQ(After(c.before, write), c.after);
  }
}

TEST(TVeltIni, GoesOnWritingWhereInsertedLinesMovedTheRest) {
  const auto writes = [](TVeltIni& ini) {
    ini.WriteString("A", "n", "1");
    ini.WriteInteger("B", "y", 3);
    ini.WriteBool("B", "off", true);
    ini.WriteString("C", "k", "");
    ini.WriteString("B", "m", "4");
    ini.DeleteKey("A", "x");
    ini.WriteString("A", "x", "again");
  };
  EXPECT_EQ(After("[A]\nx=1\n\n[B]\ny=2\n;off=0\nx=5\n", writes),
            "[A]\nn=1\nx=again\n\n[B]\ny=3\noff=1\nx=5\nm=4\n\n[C]\nk=\n");
}

TEST(TVeltIni, DeletesAKeyAndUncoversItsSecondLine) {
  const auto change = [](TVeltIni& ini) {
    ini.DeleteKey("a", "X");
    EXPECT_EQ(ini.ReadString("A", "x", ""), "2");
    ini.DeleteKey("a", "none");
  };
  EXPECT_EQ(After("[A]\nx=1\n;c\nx=2\n", change), "[A]\n;c\nx=2\n");
}

TEST(TVeltIni, ErasesTheFirstSectionOfThatNameWithItsComments) {
  const auto change = [](TVeltIni& ini) {
    ini.EraseSection("a");
    EXPECT_EQ(ini.ReadString("A", "x", ""), "2");
    ini.EraseSection("none");
  };
  EXPECT_EQ(After("[B]\n[A]\n;c\n\nx=1\n[C]\n[a]\nx=2\n", change), "[B]\n[C]\n[a]\nx=2\n");
}

TEST(TVeltIni, LeavesTheFileAloneWhenNothingChanges) {
  FakeHost host;
  host.files[kFile] = "[A]\nx=1\n";
  TVeltIni ini(host, kFile, CreateMode::kMustExist, CodePage::kWindows);
  ini.WriteString("A", "x", "1");
  ini.DeleteKey("A", "y");
  ini.EraseSection("B");
  EXPECT_EQ(ErrorOf([&] { ini.WriteString("A", "x", "a\tb"); }),
            Win("TVeltIni: Недопустимое значение A_x=a\tb"));
  EXPECT_EQ(host.files.changes(), 0);
  EXPECT_EQ(ini.ReadString("A", "x", ""), "1");
}

TEST(TVeltIni, KeepsTheCodePageOfTheFile) {
  const std::string dos = "[\x90]\r\n\xAA\xAB\xEE\xE7=\x84\x80\r\n";  // [Р] ключ=ДА in 866
  for (const CodePage page : {CodePage::kDos, CodePage::kUnknown}) {
    FakeHost host;
    host.files[kFile] = dos;
    TVeltIni ini(host, kFile, CreateMode::kMustExist, page);
    EXPECT_EQ(Utf8(ini.ReadString(Win("р"), Win("КЛЮЧ"), "")), "ДА");
    ini.WriteString(Win("Р"), "n", Win("Нет"));
    EXPECT_EQ(host.files[kFile].bytes(), dos + "n=\x8D\xA5\xE2\r\n");
  }
}

TEST(TVeltIni, ReadsUtf8AndRefusesToWriteIt) {
  FakeHost host;
  const std::string bytes = "\xEF\xBB\xBF[A]\r\nключ=да\r\n";
  host.files[kFile] = bytes;
  TVeltIni ini(host, kFile, CreateMode::kMustExist, CodePage::kUnknown);
  EXPECT_EQ(Utf8(ini.ReadString("A", Win("ключ"), "")), "да");
  const std::string refusal = Win("Ini-файл в UTF-8 кодировке сохранять не умею : ") + kFile;
  EXPECT_EQ(ErrorOf([&] { ini.WriteString("A", "x", "1"); }), refusal);
  EXPECT_EQ(ini.ReadString("A", "x", ""), "1");
  EXPECT_EQ(host.files[kFile], bytes);
}

TEST(TVeltIni, MissingFilesFollowTheCreateMode) {
  FakeHost host;
  host.files.AddFolder("C:\\PROG");
  EXPECT_EQ(ErrorOf([&] { TVeltIni(host, kFile, CreateMode::kMustExist, CodePage::kWindows); }),
            Win("Не могу открыть ini-файл \"C:\\PROG\\kord.ini\""));
  TVeltIni(host, kFile, CreateMode::kInMemory, CodePage::kWindows);
  EXPECT_FALSE(host.files.Has(kFile));
  const TVeltIni created(host, kFile, CreateMode::kCreate, CodePage::kWindows);
  EXPECT_EQ(host.files[kFile], "");
  EXPECT_EQ(created.file_age(), host.files.Stamp(kFile));
}

TEST(TVeltIni, AFailedWriteKeepsTheFileAndTheChange) {
  FakeHost host;
  host.files[kFile] = "[A]\r\nx=1\r\n";
  {
    TVeltIni ini(host, kFile, CreateMode::kMustExist, CodePage::kWindows);
    host.files.FailPath(kFile, FileOp::kCommit, FileError::Kind::kWrite);
    EXPECT_NE(ErrorOf([&] { ini.WriteString("A", "x", "2"); }).find(kFile), std::string::npos);
    EXPECT_EQ(host.files[kFile], "[A]\r\nx=1\r\n");
    EXPECT_EQ(ini.ReadString("A", "x", ""), "2");
  }
  EXPECT_EQ(host.dialogs.exceptions.size(), 1u) << "the last attempt, on destruction";
}

TEST(TVeltIni, AFileThatCannotBeReadIsShownAndNeverWrittenOver) {
  FakeHost host;
  host.files[kFile] = "[A]\r\nx=1\r\n";
  host.files.FailPath(kFile, FileOp::kRead, FileError::Kind::kRead);
  TVeltIni ini(host, kFile, CreateMode::kMustExist, CodePage::kWindows);
  EXPECT_EQ(host.dialogs.exceptions.size(), 1u);
  EXPECT_EQ(ini.ReadString("A", "x", "default"), "default");
  host.files.StopFailing();
  EXPECT_NE(ErrorOf([&] { ini.WriteString("A", "y", "2"); }).find(kFile), std::string::npos);
  EXPECT_EQ(host.files[kFile], "[A]\r\nx=1\r\n");
}

TEST(TVeltIni, RefreshComparesWithTheAgeAtConstruction) {
  FakeHost host;
  host.files[kFile] = "[A]\r\nx=1\r\n";
  TVeltIni ini(host, kFile, CreateMode::kMustExist, CodePage::kWindows);
  const FileStamp age = ini.file_age();
  host.files[kFile] = "[A]\r\nx=2\r\n";
  host.files.SetStamp(kFile, age);
  ini.Refresh();
  EXPECT_EQ(ini.ReadString("A", "x", ""), "1");
  host.files.SetStamp(kFile, age + 1);
  ini.Refresh();
  EXPECT_EQ(ini.ReadString("A", "x", ""), "2");
  EXPECT_EQ(ini.file_age(), age);
  host.files.Remove(kFile);
  ini.Refresh();
  EXPECT_EQ(ini.ReadString("A", "x", ""), "2");
}

}  // namespace
}  // namespace customsconv
