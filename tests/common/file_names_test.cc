#include "common/file_names.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {
namespace {

TEST(FileNames, PartsOfAPath) {
  const struct {
    std::string_view path, part, folder, name, base;
  } cases[] = {{"C:\\OUT\\A.B.DBF", "C:\\OUT\\", "C:\\OUT", "A.B.DBF", "A.B"},
               {"C:\\A.DBF", "C:\\", "C:\\", "A.DBF", "A"},
               {"C:A.DBF", "C:", "C:", "A.DBF", "A"},
               {"out.d/a", "out.d/", "out.d", "a", "a"},
               {"/a.x", "/", "/", "a.x", "a"},
               {"a", "", "", "a", "a"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.path);
    EXPECT_EQ(FolderPart(c.path), c.part);
    EXPECT_EQ(ExtractFileFolder(c.path), c.folder);
    EXPECT_EQ(FileNameOf(c.path), c.name);
    EXPECT_EQ(ExtractFileBaseName(c.path), c.base);
  }
}

TEST(FileNames, ExtensionsAndClosingSeparators) {
  EXPECT_EQ(ForceExtension("C:\\a.b\\DBRHEAD", "DBF"), "C:\\a.b\\DBRHEAD.DBF");
  EXPECT_EQ(ForceExtension("DBRHEAD.X", "DBF"), "DBRHEAD.X");
  EXPECT_EQ(ChangeExtension("a.b\\C.D.E", "DBF"), "a.b\\C.D.DBF");
  EXPECT_EQ(ChangeExtension("a.b\\C", ".DBF"), "a.b\\C.DBF");
  EXPECT_EQ(WithTrailingBackslash("C:\\A"), "C:\\A\\");
  EXPECT_EQ(WithTrailingBackslash("/a/"), "/a/");
  EXPECT_EQ(WithTrailingBackslash(""), "");
}

TEST(FileNames, TemporaryNamesAreNotTakenYet) {
  FakeHost host;
  host.clock.Set({2026, 3, 17}, 12);
  const auto name = [&host] {
    return UniqueTempFileName(host.files, host.clock, "C:\\TMP", "~v", "tmp");
  };
  EXPECT_EQ(name(), "C:\\TMP\\~v50000000.tmp");
  host.files["C:\\TMP\\~v50000000.tmp"] = "";
  host.files["C:\\TMP\\~v50000001.tmp"] = "";
  EXPECT_EQ(name(), "C:\\TMP\\~v50000002.tmp");
}

TEST(FileNames, WholeFiles) {
  FakeHost host;
  host.files.AddFolder("C:\\TMP");
  WriteFileText(host.files, std::string_view("a\0b", 3), "C:\\TMP\\x");
  EXPECT_EQ(ReadFileText(host.files, "C:\\TMP\\x", 0), std::string_view("a\0b", 3));
  EXPECT_EQ(ReadFileText(host.files, "C:\\TMP\\x", 1), "a");
  EXPECT_EQ(Utf8(ErrorOf([&] { (void)ReadFileText(host.files, "C:\\TMP\\y", 0); })),
            "Не найден файл C:\\TMP\\y");
  EXPECT_EQ(ShortPathName(host.files, "C:\\TMP\\x"), "C:\\TMP\\x");
  EXPECT_EQ(ShortPathName(host.files, "C:\\TMP\\y"), "");
}

}  // namespace
}  // namespace customsconv
