#include "common/file_names.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {
namespace {

TEST(FileNames, PartsOfAPath) {
  EXPECT_EQ(FolderPart("C:\\OUT\\A.B.DBF"), "C:\\OUT\\");
  EXPECT_EQ(FileNameOf("C:A.DBF"), "A.DBF");
  EXPECT_EQ(ExtractFileBaseName("out.d/A.B.DBF"), "A.B");
  EXPECT_EQ(ExtractFileFolder("C:\\OUT\\A"), "C:\\OUT");
  EXPECT_EQ(ExtractFileFolder("C:\\A"), "C:\\");
  EXPECT_EQ(ExtractFileFolder("/a"), "/");
  EXPECT_EQ(ExtractFileFolder("a"), "");
}

TEST(FileNames, ExtensionsAndClosingSeparators) {
  EXPECT_EQ(ForceExtension("C:\\a.b\\DBRHEAD", "DBF"), "C:\\a.b\\DBRHEAD.DBF");
  EXPECT_EQ(ChangeExtension("a.b\\C.D.E", "DBF"), "a.b\\C.D.DBF");
  EXPECT_EQ(ChangeExtension("a.b\\C", ".DBF"), "a.b\\C.DBF");
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

}  // namespace
}  // namespace customsconv
