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
  const std::pair<std::string, std::string> cases[] = {
      {"Kordwin.dcf|no.dcf", "Не найден системный файл C:\\PROG\\Data\\no.dcf"},
      {"Kordwin.dcf|bad.dcf", "Неверный формат файла C:\\PROG\\Data\\bad.dcf"},
      {"D:\\X\\no.dcf", "Не найден системный файл D:\\X\\no.dcf"}};
  for (const auto& [names, message] : cases) {
    CatalogueWorld world(OneType("A"));
    world.DcfFile("C:\\PROG\\Data\\bad.dcf", ";[A.HEADER]\n");
    EXPECT_EQ(ErrorOf([&, &list = names] { TDocTypeList(list, true, world); }), kSilentAbort);
    EXPECT_EQ(world.host.dialogs.log, Lines{"message: " + message});
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
  EXPECT_EQ(info.FullName + "/" + info.ShortName, "A b/B");
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
  const std::string header =
      "[T.HEADER]\n[U.HEADER]\n[V.HEADER]\n[W.HEADER]\nDbfName=x\n[W.FILES]\nA = B\n";
  world.Dcf(header + "[T.FIELDS]\nA=1\n[T.Fields] x\nB=1\n[T.Fields]\nC=1\n[T.Fields]\nD=1\n");
  const TDocTypeList types("Kordwin.dcf", false, world);
  EXPECT_EQ(types.GetDocInfo("T").GetBasis(world).Item(0).name, "C");
  for (const auto& [code, cause] : Cases({"U -> [U.Fields]\r\rНе найдена секция: [U.Fields]",
                                          "W -> [W.Files]\r\rНет секции [W.Files]"})) {
    EXPECT_EQ(Utf8(ErrorOf([&, &type = code] { (void)types.GetDocInfo(type).GetBasis(world); })),
              "Файл: " + name + "  Раздел: " + cause);
  }
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

// "N18.2" or "C20x3 {10,20}"; a space stands for the type of plain text.
std::string Sizes(const TFieldInfo& field) {
  std::string text = std::string(1, static_cast<char>(field.type)) + std::to_string(field.width);
  if (field.decimals != 0) text += "." + std::to_string(field.decimals);
  if (field.lines != 1) text += "x" + std::to_string(field.lines);
  for (const int width : field.line_widths) text += "," + std::to_string(width);
  return text;
}

// All entries as "NAME sizes", blocks as "NAME{...}".
std::string Tree(const TBasis& basis) {
  std::string text;
  for (int i = 0; i < basis.Count(); ++i) {
    const TFieldInfo& field = basis.Item(i);
    if (!text.empty()) text += ' ';
    text += Utf8(field.name);
    if (field.block != nullptr) text += "{" + Tree(*field.block) + "}";
  }
  return text;
}

TEST(FieldsReader, UnderstandsFormats) {
  for (const auto& [line, sizes] :
       Cases({"F=20 ->  20", "F C20 -> F1", "F=c20X3x5 -> C20x3", "F=N -> N15", "F=N15.2 -> N18.2",
              "F=D8 -> D10", "F=D8 | NAMESPACE=\"a\" -> D8", "F=10,20,30 ->  30x3,10,20,30",
              "F=C10,20X7 ->  20x2,1,20", "F=10,,20, ->  20x2,10,20",
              "F=N5.1 4 | SEQ=\"1\" -> N7.1", "F=B|группа -> B1"})) {
    EXPECT_EQ(Sizes(TypeWorld(line).Basis().Item(0)), sizes) << line;
  }
}

TEST(FieldsReader, UpperCasesNamesUnlessBoundToXml) {
  constexpr const char* kFields = "gёod=5\n&&BLOCK\na=1\n&&BLOCK\nbl {\nb=1\n}\n";
  TypeWorld plain(kFields, "MainBlock=tov\n");
  EXPECT_EQ(Tree(plain.Basis()), "GёOD TOV{A} BL{B}");
  TypeWorld xml(kFields, "XmlType=1\n");
  EXPECT_EQ(Tree(xml.Basis()), "gёod BLOCK{a} bl{b}");
}

TEST(FieldsReader, NestsBlocksAndEndsThemAllAtASectionLine) {
  for (const auto& [fields, tree] :
       Cases({"A=1\nB {\nC {\nD=1\n}\nE=1\n}\nF=1\n}\nG=1\n -> A B{C{D} E} F",
              "A {\nB {\nC=1\n[\nD=1\n -> A{B{C}}", "A {\nB {\nC=1 -> A{B{C}}",
              "A {\nB=1\n&&BLOCK x\nC=1\n -> A{B} C", "&&BLOCK\nB=1\n}\nC=1\n -> BLOCK{B} C",
              "A { | x }\nB=1\n -> A B", "A {\n}\n -> A{}"})) {
    EXPECT_EQ(Tree(TypeWorld(fields).Basis()), tree) << fields;
  }
}

TEST(FieldsReader, TakesCaptionsFromTheLineOrTheCommentBefore) {
  TypeWorld type(
      ";=> первая <=\nA=1\nB=1\n; потеряна\nC=1 | своя\nD=1|тоже\nD.E=x;1;r|не подпись\n"
      ";блок\nF {\n;в конце блока\n}\nG=1 | NAMESPACE=\"g\"\n"
      "H { | надпись MAX=\"1\" NAMESPACE=\"a:h\"\n");
  const TBasis& basis = type.Basis();
  std::string captions;
  for (int i = 0; i < basis.Count(); ++i) captions += Utf8(basis.Item(i).caption) + ";";
  EXPECT_EQ(captions, "первая <;;своя;тоже;;блок;в конце блока;надпись MAX=\"1\";");
  EXPECT_EQ(basis.FieldByName("H").xml_path, "a:h");
}

TEST(FieldsReader, TakesAttributesOutOfTheCaption) {
  TypeWorld type(
      "A=C5 | x PATTERN=\"[|]\"y PRNT=\"1\" SEQ=\"2\"CHOICE=\"257\" MAX=\"many\" "
      "NAMESPACE=\"a:B\" z\nB=C5 | NAMESPACE=a:B\nC=C5 | NAMESPACE=\"a:B\n");
  const TFieldInfo& a = type.Basis().Item(0);
  EXPECT_EQ(a.caption + "/" + a.pattern + "/" + a.xml_path, "x y     z/[|]/a:B");
  EXPECT_EQ((std::vector<int>{a.prnt, a.seq, a.choice, a.max}), (std::vector{1, 2, 1, 0}));
  for (const int i : {1, 2}) EXPECT_EQ(type.Basis().Item(i).xml_path, "") << i;
  EXPECT_EQ(type.Basis().Item(1).caption, "NAMESPACE=a:B");
}

TEST(FieldsReader, MakesCompositesOfFieldsWithParts) {
  TypeWorld type(
      "EARLY.1=x;1\nG31=C250\nNUM=N5\n"
      "G31.1=№#место;2;ссылка12;x | часть\nG31.2= ;300;R\nNUM.1=a;0\n");
  const TBasis& basis = type.Basis();
  const TFieldInfo& composite = basis.FieldByName("G31");
  EXPECT_EQ(Sizes(composite), "M250");
  std::string described;
  for (const TSubField& part : composite.sub_fields) {
    described += part.full_name + ";" + part.prefix + ";" + std::to_string(part.number) + ";" +
                 part.ref_name + ";" + std::to_string(part.ref_number) + ";" +
                 (part.flag ? "x;" : ";") + part.caption + "|";
  }
  // A level is kept in 8 bits.
  EXPECT_EQ(Utf8(described), "G31.1;№\rМЕСТО;2;ССЫЛКА12;12;x;часть|G31.2; ;44;R;0;;|");
  std::string entries;
  for (int i = 0; i < basis.Count(); ++i) {
    entries += static_cast<char>(basis.Item(i).type) + std::to_string(basis.Item(i).part) + " ";
  }
  EXPECT_EQ(entries, "V-1 M-1 N-1 V0 V1 V0 ");
}

TEST(FieldsReader, NamesFileAndSectionOfWhatItCannotRead) {
  const auto error = [](const char* fields) {
    return Utf8(ErrorOf([&] { TypeWorld(fields).Basis(); }));
  };
  const std::string place = "Файл: C:\\PROG\\Data\\Kordwin.dcf  Раздел: [T.Fields]\r\r";
  EXPECT_EQ(error("F=20ABC\n"), place + "Отсутствует пробел между длиной поля и описанием");
  EXPECT_EQ(error("A=C5\nA.b=x;y\n"), place + "Неверный формат префикса A.B");
  TypeWorld type("EMPTY=\nA.B=x;1\n");
  EXPECT_EQ(Sizes(type.Basis().Item(0)), " 0");
  EXPECT_EQ(type.host.dialogs.log, Lines{"message: Не указана длина поля EMPTY"});
}

TEST(FieldsReader, NestsAsDeepAsTheFileSays) {
  constexpr int kDepth = 100000;
  std::string fields;
  for (int i = 0; i < kDepth; ++i) fields += "B {\n";
  TypeWorld type(fields + "F=1\n");
  const TBasis* level = &type.Basis();
  int depth = 0;
  for (; level->Item(0).block != nullptr; ++depth) level = level->Item(0).block.get();
  EXPECT_EQ(depth, kDepth);
  EXPECT_EQ(level->Item(0).name, "F");
}

}  // namespace
}  // namespace customsconv
