#include "catalogue/files_reader.h"

#include <gtest/gtest.h>

#include "catalogue/doc_type_list.h"
#include "support/catalogue_builder.h"
#include "support/table_image.h"

namespace customsconv {
namespace {

TEST(FilesReader, ParsesLines) {
  const std::pair<const char*, const char*> cases[] = {
      {"Head = DbrHead [g32,NumTov]", "0 HEAD DBRHEAD G32,NUMTOV "},
      {"   B = T.DBF", "1 B T.DBF  "},
      {"    B=T [K|L+M]", "2 B=T T K L+M"},
      {"B = T [K]|L", "0 B T K L"},
      {"B[K] = T", "0 B T K "},
      {"B", "0 B   "}};
  for (const auto& [text, parsed] : cases) {
    const FilesLine line = ParseFilesLine(text);
    EXPECT_EQ(std::to_string(line.level) + " " + line.block_name + " " + line.table_file + " " +
                  line.key_fields + " " + line.link_fields,
              parsed)
        << text;
  }
}

struct TableSet {
  explicit TableSet(const std::string& files)
      : types("Kordwin.dcf", false,
              (world.Dcf("[TS.HEADER]\nDbfName=x\nMainBlock=GOODS\n[TS.Files]\n" + files), world)) {
  }
  void Table(const std::string& name, const TableImage& table) {
    world.host.files["C:\\OUT\\" + name + ".DBF"] = table.Bytes();
  }
  const TBasis& Load() {
    TDocInfo& info = types.GetDocInfo("TS");
    info.LoadFromDbf("C:\\OUT\\", cache, world);
    return info.GetBasis(world);
  }
  CatalogueWorld world;
  TDbfCache cache{world.host};
  TDocTypeList types;
};

std::string Describe(const TBasis& basis) {
  const auto& table = dynamic_cast<const TDbfBasis&>(basis);
  std::string text = table.table_file + "[" + table.key_fields + "|" + table.link_fields + "]:";
  for (int i = 0; i < basis.Count(); ++i) {
    const TFieldInfo& field = basis.Item(i);
    text += " " + field.name;
    text += field.block != nullptr
                ? "{" + Describe(*field.block) + "}"
                : std::string("=") + field.type + std::to_string(field.width) + "." +
                      std::to_string(field.decimals) + "x" + std::to_string(field.lines);
  }
  return text;
}

TEST(FilesReader, TakesTheLevelsOfATableSetFromTableHeaders) {
  TableSet set(
      "; the head\n\nhead = dbrhead [nomer]\n"
      "    goods = dbrtov [nomer|g32]\n"
      "      docs = dbrdocs\n"
      "  tail = dbrtail\n"
      "next = dbrnext\n  lost = dbrtail\n[OTHER]\n");
  set.Table("DBRHEAD", TableImage().Field("NOMER", 'C', 7).Field("SUM", 'N', 12, 2));
  set.Table("DBRTOV", TableImage().Field("NOMER", 'C', 7).Field("TXT", 'C', 251));
  set.Table("DBRDOCS", TableImage().Field("D", 'D', 8));
  set.Table("DBRTAIL", TableImage().Field("L", 'L', 1));
  const TBasis& basis = set.Load();
  EXPECT_EQ(Describe(basis),
            "DBRHEAD[NOMER|]: NOMER=C7.0x1 SUM=N12.2x1"
            " GOODS{DBRTOV[NOMER|G32]: NOMER=C7.0x1 TXT=C101.0x3 DOCS{DBRDOCS[|]: D=D8.0x1}}"
            " TAIL{DBRTAIL[|]: L=L1.0x1}");
  EXPECT_EQ(basis.FindSubBasis("GOODS\\DOCS").Path(), "GOODS\\DOCS");
}

TEST(FilesReader, LeavesOutBlocksWhoseTableCannotBeOpened) {
  TableSet set("HEAD = DBRHEAD\n  A = LOST\n    B = DBRTOV\n    C = GONE\n  GOODS = DBRTOV\n");
  set.Table("DBRHEAD", TableImage().Field("NOMER", 'C', 7));
  set.Table("DBRTOV", TableImage().Field("G32", 'N', 5));
  EXPECT_EQ(Describe(set.Load()), "DBRHEAD[|]: NOMER=C7.0x1 GOODS{DBRTOV[|]: G32=N5.0x1}");
  EXPECT_EQ(
      set.world.host.dialogs.log,
      std::vector<std::string>{"message: Не могу открыть:\r\nC:\\OUT\\LOST\r\nC:\\OUT\\GONE"});
}

TEST(FilesReader, LoadsAgainAndKeepsTheNumberingRight) {
  TableSet set("HEAD = DBRHEAD\n  GOODS = DBRTOV\n");
  const TDocProtect& numbering = set.types.GetDocInfo("TS").Numbering(set.world);
  EXPECT_EQ(numbering.FieldIdByName("G32"), 0);
  set.Table("DBRHEAD", TableImage().Field("NOMER", 'C', 7));
  set.Table("DBRTOV", TableImage().Field("A", 'C', 7).Field("G32", 'N', 5));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(set.Load().Count(), 2);
    EXPECT_EQ(numbering.FieldIdByName("nomer"), 1);
    EXPECT_EQ(numbering.FieldIdByName("g32"), 1001);
  }
}

TEST(FilesReader, MissesTheFilesSection) {
  CatalogueWorld world;
  world.Dcf("[TS.HEADER]\nDbfName=x\n[TS.FILES]\nA = B\n");
  TDocTypeList types("Kordwin.dcf", false, world);
  EXPECT_EQ(Utf8(ErrorOf([&] { (void)types.GetDocInfo("TS").GetBasis(world); })),
            "Файл: C:\\PROG\\Data\\Kordwin.dcf  Раздел: [TS.Files]\r\rНет секции [TS.Files]");
}

}  // namespace
}  // namespace customsconv
