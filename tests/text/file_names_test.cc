#include "text/file_names.h"

#include <gtest/gtest.h>

namespace customsconv {
namespace {

TEST(FileNames, PartsOfAPath) {
  const struct {
    std::string_view path, drive, folder_part, folder, name, base_name;
  } cases[] = {{"C:\\OUT\\A.B.DBF", "C:", "C:\\OUT\\", "C:\\OUT", "A.B.DBF", "A.B"},
               {"c:\\A", "c:", "c:\\", "c:\\", "A", "A"},
               {"C:A.DBF", "C:", "C:", "C:", "A.DBF", "A"},
               {"out.d/A", "", "out.d/", "out.d", "A", "A"},
               {"/a", "", "/", "/", "a", "a"},
               {"a", "", "", "", "a", "a"},
               {"/mnt/smb:s/12:30.xml", "", "/mnt/smb:s/", "/mnt/smb:s", "12:30.xml", "12:30"},
               {"\xC0:x", "", "", "", "\xC0:x", "\xC0:x"}};
  for (const auto& c : cases) {
    EXPECT_EQ(DriveOf(c.path), c.drive) << c.path;
    EXPECT_EQ(FolderPart(c.path), c.folder_part) << c.path;
    EXPECT_EQ(ExtractFileFolder(c.path), c.folder) << c.path;
    EXPECT_EQ(FileNameOf(c.path), c.name) << c.path;
    EXPECT_EQ(ExtractFileBaseName(c.path), c.base_name) << c.path;
  }
}

TEST(FileNames, ExtensionsAndClosingSeparators) {
  EXPECT_EQ(ForceExtension("C:\\a.b\\DBRHEAD", "DBF"), "C:\\a.b\\DBRHEAD.DBF");
  EXPECT_EQ(ChangeExtension("a.b\\C.D.E", "DBF"), "a.b\\C.D.DBF");
  EXPECT_EQ(ChangeExtension("a.b\\C", ".DBF"), "a.b\\C.DBF");
  EXPECT_EQ(WithTrailingBackslash("/a/"), "/a/");
  EXPECT_EQ(WithTrailingBackslash(""), "");
}

}  // namespace
}  // namespace customsconv
