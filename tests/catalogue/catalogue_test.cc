#include <gtest/gtest.h>

#include "support/catalogue_builder.h"

namespace customsconv {
namespace {

using Lines = std::vector<std::string>;

std::string Codes(const TDocTypeList& types) {
  std::string codes;
  for (int i = 0; i < types.Count(); ++i) codes += (i > 0 ? " " : "") + types.Item(i).Code;
  return codes;
}

std::string OneType(std::string_view code) { return "[" + std::string(code) + ".HEADER]\nX=1\n"; }

TEST(Catalogue, ReadsAllFilesOfItsFolders) {
  CatalogueWorld world(OneType("b1") + OneType("KD"), "[Common]\nUpCaseDocs=xKDy\n");
  world.DosDcf("[OLD.HEADER]\nFullName=Старый\n");
  for (const char* left_out : {"WIN.DCF", "mydcf.dcf", "ArmTi.dcf"}) {
    world.DcfFile(std::string("C:\\PROG\\Data\\") + left_out, "no type");
  }
  world.DcfFile("C:\\PROG\\Data\\zusatz.dcf", OneType("C1"));
  world.DcfFile("C:\\RULES\\win.dcf", OneType("A1"));
  world.host.files["C:\\PROG\\DOCCHECK.INI"] = "[Common]\r\nCheckedDocs=a1, ,_old\r\n";
  const TDocTypeList types("C:\\PROG\\Data\\Kordwin.dcf", true, world);
  EXPECT_EQ(Codes(types), "A1 b1 C1 KD _OLD");
  EXPECT_EQ(Utf8(types.GetDocInfo("_old").FullName), "Старый");
  EXPECT_EQ(types.GetDocInfo("A1").FileName, "C:\\RULES\\win.dcf");
  for (int i = 0; i < types.Count(); ++i) {
    EXPECT_EQ(types.Item(i).Checked, i == 0 || i == 4) << i;
    EXPECT_EQ(types.Item(i).AllUpCase, types.Item(i).Code == "KD") << i;
  }
  EXPECT_EQ(Utf8(ErrorOf([&] { (void)types.GetDocInfo("NONE"); })), "Не описан документ NONE");
  EXPECT_TRUE(world.host.dialogs.log.empty());

  world.host.files["C:\\PROG\\DOCCHECK.INI"] = "[Common]\r\nCheckedDocs=A1,NONE\r\n";
  EXPECT_EQ(Utf8(ErrorOf([&] { TDocTypeList("Kordwin.dcf", true, world); })),
            "Не описан документ NONE");
}

TEST(Catalogue, AbortsSilentlyAfterItsOwnMessage) {
  const struct {
    const char *kordwin, *names, *message;
  } cases[] = {
      {"[A.HEADER]\n", "Kordwin.dcf|no.dcf", "Не найден системный файл C:\\PROG\\Data\\no.dcf"},
      {";[A.HEADER]\n", "Kordwin.dcf", "Неверный формат файла C:\\PROG\\Data\\Kordwin.dcf"},
      {"", "D:\\X\\no.dcf", "Не найден системный файл D:\\X\\no.dcf"}};
  for (const auto& c : cases) {
    CatalogueWorld world;
    world.Dcf(c.kordwin);
    EXPECT_EQ(ErrorOf([&] { TDocTypeList(c.names, true, world); }), kSilentAbort);
    EXPECT_EQ(world.host.dialogs.log, Lines{std::string("message: ") + c.message});
  }
}

TEST(Catalogue, KeepsTheFirstOfTwoTypesWithOneCode) {
  CatalogueWorld world("[A.HEADER]\nFullName=first\n[a.header]\nFullName=in small letters\n");
  world.DcfFile("C:\\PROG\\Data\\two.dcf", "[A.HEADER]\nFullName=second\n" + OneType("B"));
  world.DcfFile("C:\\PROG\\Data\\more.dcf", OneType("C"));
  const TDocTypeList types("Kordwin.dcf|two.dcf|more.dcf", false, world);
  EXPECT_EQ(Codes(types), "A C") << "the rest of a file with a known code is not read";
  EXPECT_EQ(types.Item(0).FullName, "first");
  EXPECT_EQ(world.host.dialogs.log,
            Lines{"message: Дважды описан документ A : \r\rC:\\PROG\\Data\\Kordwin.dcf\r"
                  "C:\\PROG\\Data\\two.dcf"});
}

TEST(Catalogue, RecognisesKeysByTheBeginningOfTheLine) {
  TypeWorld type(
      "",
      "FullNameX = = A b \n\n; shortname=comment\n ShortName=indented\nshortname=B\n"
      "DocFileLabel=abcdef\nBlankColor=#fF0010\nBlocksOnExtraPage=258\nGrouping=x\n"
      "HasBackSide=7x\nScriptRevise=true\nTablePrint=no\nAllUpCase=да\nDoubleSided=\n"
      "PrnLineWidth=1.5\n[no section line]\nPrefix=<cat:ESADout v=\"1\">\nprefix=later\n");
  const TDocInfo& info = type.Info();
  EXPECT_EQ(info.FullName, "A b");
  EXPECT_EQ(info.ShortName, "B");
  EXPECT_EQ(type.host.dialogs.log, Lines{"message: DocFileLabel длиннее 5! T:abcdef"});
  EXPECT_EQ(info.BlankColor, 0xFF0010u);
  EXPECT_EQ(info.BlocksOnExtraPage, 2) << "kept in 8 bits";
  EXPECT_EQ(info.MainBlock, "") << "only the DOS catalogue's types get one from the page count";
  EXPECT_EQ(info.HasBackSide, 7);
  EXPECT_TRUE(info.ScriptRevise && info.AllUpCase);
  EXPECT_FALSE(info.TablePrint || info.DoubleSided || info.HasDbfName);
  EXPECT_EQ(info.PrnLineWidth, 1.5);
  EXPECT_EQ(info.ExtraLines, (Lines{" ShortName=indented", "[no section line]",
                                    "Prefix=<cat:ESADout v=\"1\">", "prefix=later"}));
  EXPECT_EQ(info.GetHeaderValue("PREFIX"), "<cat:ESADout v=\"1\">");
  EXPECT_EQ(info.GetHeaderValue("Prefix "), "");
  EXPECT_EQ(info.XmlDocName(), "cat:ESADout");
}

TEST(Catalogue, ReadsValuesThatDependOnTheirForm) {
  EXPECT_EQ(TypeWorld("").Info().BlankColor, 0x808080u);
  EXPECT_EQ(TypeWorld("", "BlankColor=\n").Info().BlankColor, 0u);
  EXPECT_EQ(TypeWorld("", "HasBackSide=yes\n").Info().HasBackSide, 1);
  EXPECT_EQ(ErrorOf([] { TypeWorld("", "BlocksOnMainPage=2x\n"); }),
            "'2x' is not a valid integer value");
}

TEST(Catalogue, GivesDosTypesTheMainBlockOfTheirSuccessor) {
  CatalogueWorld world("[KTD.HEADER]\nMainBlock=TOVAR\n");
  world.DosDcf(
      "[ktdOLD.HEADER]\nBlocksOnExtraPage=3\n"
      "[DS1.HEADER]\nBlocksOnExtraPage=3\n"
      "[DS2.HEADER]\nBlocksOnExtraPage=0\n[DS2.Fields]\nA=1\n"
      "[LONGERTHANTEN.HEADER]\nCDateField=B\n[LONGERTHAN.Fields]\nB=Я5\n"
      "[LONGERTHAN.HEADER]\nCDateField=B\n");
  const TDocTypeList types("Kordwin.dcf", true, world);
  EXPECT_EQ(types.GetDocInfo("_ktdOLD").MainBlock + types.GetDocInfo("_DS1").MainBlock,
            "TOVARBLOCK");
  EXPECT_EQ(types.GetDocInfo("_DS2").GetBasis(world).Item(0).name, "A");
  TDocInfo& longest = types.GetDocInfo("_LONGERTHANTEN");
  EXPECT_EQ(longest.GetBasis(world).Item(0).type, FieldType(DosFromWin(Win("Я"))[0]))
      << "fields are not converted";
  EXPECT_EQ(longest.DateFieldNo, 1);
}

TEST(Catalogue, FindsFieldNumbersUpToTheFirstEmptyHeaderLine) {
  TypeWorld type("R1=N9\nR2=N9\nD=D\n",
                 "cdatefieldX = d 1\n;x\nUsdRateField=R1\nCRateField=R2/none\n\nEurRateField=R1\n");
  (void)type.Basis();
  const TDocInfo& info = type.Info();
  EXPECT_EQ((std::vector<int>{info.DateFieldNo, info.CRateFieldNo1, info.CRateFieldNo2}),
            (std::vector{3, 2, 0}));
  EXPECT_EQ(info.EurRateFieldNo, 0) << "behind an empty line";
}

TEST(Catalogue, ReadsTheFirstExactSectionAlsoAfterTheFileChanged) {
  CatalogueWorld world;
  const std::string name = "C:\\PROG\\Data\\Kordwin.dcf";
  const std::string header = "[T.HEADER]\n[U.HEADER]\n[V.HEADER]\n";
  world.Dcf(header + "[T.FIELDS]\nA=1\n[T.Fields] x\nB=1\n[T.Fields]\nC=1\n[T.Fields]\nD=1\n");
  const TDocTypeList types("Kordwin.dcf", false, world);
  EXPECT_EQ(types.GetDocInfo("T").GetBasis(world).Item(0).name, "C");
  EXPECT_EQ(Utf8(ErrorOf([&] { (void)types.GetDocInfo("U").GetBasis(world); })),
            "Файл: " + name + "  Раздел: [U.Fields]\r\rНе найдена секция: [U.Fields]");
  world.DcfFile(name, "[U.Fields]\nE=1\n" + header + "[V.Fields]\nF=1\n[U.Fields]\nG=1\n");
  EXPECT_EQ(types.GetDocInfo("U").GetBasis(world).Item(0).name, "E");
  world.host.files.Remove(name);
  EXPECT_EQ(ErrorOf([&] { (void)types.GetDocInfo("V").GetBasis(world); }).find(Win("Файл: ")), 0u);
}

TEST(Catalogue, NumbersFieldsOfTheTopAndTheMainBlock) {
  TypeWorld type("G01=1\nTOVAR {\nG01=1\nG33=1\n}\nX {\nG44=1\n}\n", "MainBlock=TOVAR\n");
  const TDocProtect& numbering = type.Info().Numbering(type);
  const std::pair<const char*, int> ids[] = {
      {"g01", 1}, {"TOVAR", 2}, {"g33", 1001}, {"G44", 0}, {"", 0}};
  for (const auto& [name, id] : ids) EXPECT_EQ(numbering.FieldIdByName(name), id) << name;

  TypeWorld without_settings("A=1\n");
  without_settings.host.files.Remove("C:\\PROG\\DOCUMENT.INI");
  const auto number = [&] { (void)without_settings.Info().Numbering(without_settings); };
  EXPECT_NE(ErrorOf(number), kNoError);
  without_settings.config().SetString("T", "AG", "1");
  EXPECT_EQ(ErrorOf(number), kNoError);
}

}  // namespace
}  // namespace customsconv
