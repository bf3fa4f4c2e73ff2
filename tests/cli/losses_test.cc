#include <gtest/gtest.h>

#include "cli_world.h"

namespace customsconv::cli {
namespace {

constexpr const char* kGone = "(no such file)";
constexpr const char* kXml = "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\r\n";

struct Loss {
  const char* what;
  std::string file;  // that is changed to `content`
  std::string content;
  std::string command_line;  // behind "convert …"
  const char* told;          // a part of what is printed
  ExitStatus status = kNegative;
};

// Whoever sees status 0 takes the file for done: no loss ends with it, and each is told by its
// cause.
TEST(Losses, EndWithAStatusAndAWord) {
  const std::string in = "C:\\IN\\1.xml";
  const std::string xml = kXml;
  const Loss losses[] = {
      {"another station's lock", "C:\\OUT\\veltlock.$$$", "", "--on-lock abandon",
       "converted: nothing; rows: none; failed: ESADout 1 abandoned: the folder is locked by "
       "another station (C:\\OUT/veltlock.$$$)\n"},
      {"an empty file", in, "", in,
       "failed: the file is empty; its number was drawn for nothing\n"},
      {"no XML", in, "%PDF-1.4", in, "failed: the file holds no XML; its number"},
      {"no declaration", in, "<ESADout a=\"1\"></ESADout>", in, "failed: no XML declaration ("},
      {"an unknown root", in, xml + "<ESADout2 a=\"1\"></ESADout2>", in,
       "failed: no document of a known kind: root ESADout2; its number"},
      {"a cut root", in, xml + "<ESADout\r\na=\"1\"></ESADout>", in,
       "root ESADout (a line end instead of a blank stands behind its name)"},
      {"a root that gives an empty document", in, xml + "<ESADout_CU\r\na=\"1\"></ESADout_CU>", in,
       "converted: ESADout 1; rows: DBRHEAD.DBF +1; failed: ESADout 1 is empty: its start was "},
      {"no section", "C:\\RULES\\armti.txt", "[SBRHEAD]\r\n=DTSout\r\n", "",
       "skipped: ESADout 1 (no section of the rules names this kind); rows: none; failed: no "
       "document was converted\n"},
      {"an exception in the section", "C:\\RULES\\armti.txt", "[DBRHEAD]\r\n=ESADout\r\n[DBRTOV]",
       "", "failed: ESADout 1 is not complete: List index out of bounds (3)\n"},
      {"a missing table", "C:\\OUT\\DBRTOV.DBF", kGone, "",
       "rows: DBRHEAD.DBF +1; failed: ESADout 1 lacks its rows of DBRTOV.DBF: dBaseInt: Не найден "
       "файл C:\\OUT\\DBRTOV.DBF\n"},
      {"a damaged table", "C:\\OUT\\DBRTOV.DBF", "picture", "", "DBRTOV.DBF: DBF not DBF: C:\\OUT"},
      {"a file that is not there", "", "", "C:\\IN\\no.xml",
       "converted: nothing; rows: none; failed: Не найден файл C:\\IN\\no.xml\n"},
      {"a path that is too long", "", "", std::string(256, 'x'),
       "path is longer than 255 bytes: x"},
      {"a path outside 1251", "", "", "C:\\漢.xml",
       "code page 1251 cannot hold this text: C:\\漢.xml"},
  };
  for (const Loss& loss : losses) {
    SCOPED_TRACE(loss.what);
    CliWorld world;
    if (loss.content == kGone) {
      world.host.files.Remove(loss.file);
    } else if (!loss.file.empty()) {
      world.host.files[loss.file] = loss.content;
    }
    EXPECT_EQ(world.Convert(loss.command_line), loss.status);
    EXPECT_TRUE(world.Printed(loss.told)) << world.output.remarks;
    const bool other_file = loss.command_line.find("C:\\IN") == 0;
    EXPECT_EQ(other_file, other_file && world.Printed("DBRTOV.DBF +1")) << "the other file";
  }
}

}  // namespace
}  // namespace customsconv::cli
