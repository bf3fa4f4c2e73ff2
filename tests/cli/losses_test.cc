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
  const std::string rules = "C:\\RULES\\armti.txt";
  const Loss losses[] = {
      {"another station's lock", "C:\\OUT\\veltlock.$$$", "", "--on-lock abandon",
       "converted: nothing; rows: none; no column: 1; failed: ESADout 1 abandoned: the folder is "
       "locked by another station (C:\\OUT/veltlock.$$$)\n"},
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
      {"no section", rules, "[SBRHEAD]\r\n=DTSout\r\n", "",
       "skipped: ESADout 1 (no section of the rules names this kind); rows: none; failed: no "
       "document was converted\n"},
      {"an exception in the section", rules, "[DBRHEAD]\r\n=ESADout\r\n[DBRTOV]",
       "", "failed: ESADout 1 is not complete: List index out of bounds (3)\n"},
      {"a missing table", "C:\\OUT\\DBRTOV.DBF", kGone, "",
       "rows: DBRHEAD.DBF +1; not applied: 1; failed: ESADout 1 lacks its rows of DBRTOV.DBF: dBaseInt: Не найден "
       "файл C:\\OUT\\DBRTOV.DBF\n"},
      {"a damaged table", "C:\\OUT\\DBRTOV.DBF", "picture", "", "DBRTOV.DBF: DBF not DBF: C:\\OUT"},
      {"a type without settings", "C:\\PROG\\DOCUMENT.INI", kGone, "",
       "DOCUMENT.INI\": в kord.ini нет ключа AG раздела [ESADout]\n"},
      {"LF line ends", "C:\\PROG\\Data\\Kordwin.dcf", CliWorld::kCatalogue, "", "; failed: "},
      {"UTF-16 rules", rules, std::string("[\0D\0", 4), "", "no document was converted\n"},
      {"UTF-8 rules", rules, CliWorld::kRules + std::string("; правила\n"), "--strict",
       "no column: 1; failed: not everything is in the tables as it was in the file (--strict)"},
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
    const std::string_view what = loss.what;
    EXPECT_EQ(what.starts_with("UTF") || what.starts_with("LF"),
              world.output.remarks.find("warning: " + loss.file.substr(0, 7)) != std::string::npos);
    const bool other_file = loss.command_line.find("C:\\IN") == 0;
    EXPECT_EQ(other_file, other_file && world.Printed("DBRTOV.DBF +1")) << "the other file";
  }
}

// What a table does not keep of a value is counted on the file's line.
TEST(Losses, AreCounted) {
  const struct {
    const char* column;
    const char* value;
    const char* counted;
  } cases[] = {{"C5", "abcde", ""},          {"C5", "abcdef", "cut: 1"},
               {"C5", "a   ", ""},           {"C5", "«»", "look-alike: 1"},
               {"C5", "€", "replaced: 1"},   {"C255", "x", ""},
               {"N5", "12345", ""},          {"N5", "123456", "number cut: 1"},
               {"N5", "00001.0", ""},        {"N5.2", "123", ""},
               {"N8.2", "1.005", "rounded: 1"}, {"N8.3", "1.2345", "rounded: 1"},
               {"N5.3", "12345", "number cut: 1"}, {"N5", "five", "no number: 1"},
               {"N5", "-0", ""},             {"D8", "11.06.2015", ""},
               {"D8", "soon", "no date: 1"}, {"L1", "maybe", "no date: 1"},
               {"L1", "1", ""}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.column) + " " + c.value);
    CliWorld world;
    world.host.files["C:\\OUT\\DBRHEAD.DBF"] =
        TableImage(std::string("F ") + c.column + ", PASP C60").Bytes();
    world.host.files["C:\\RULES\\armti.txt"] = "[DBRHEAD]\r\n=ESADout\r\nF=Proc\r\n";
    world.Xml("10702020_110615_0001234", "<Proc>" + std::string(c.value) + "</Proc>");
    EXPECT_EQ(world.Convert(), kDone);
    const std::string end = "rows: DBRHEAD.DBF +1" + std::string(*c.counted != 0 ? "; " : "");
    EXPECT_TRUE(world.Printed(end + c.counted + "\n"));
  }
  CliWorld world;
  world.host.files["C:\\RULES\\armti.txt"] =
      "[DBRHEAD]\r\n=ESADout\r\nG011=Proc\r\nNO=Proc\r\n[NOTAB]\r\nGoods{\r\n";
  world.host.files["C:\\IN\\1.xml"] =
      "<?xml version=\"1.0\"?><ESADout a=\"1\"><Proc>漢</Proc><Proc>B</Proc><Old>x</Old></ESADout>";
  EXPECT_EQ(world.Convert("C:\\IN\\1.xml"), kDone);
  EXPECT_TRUE(world.Printed(
      "no column: 1; replaced: 1; not known: 1; repeated: 1; not applied: 1\n"));
}

}  // namespace
}  // namespace customsconv::cli
