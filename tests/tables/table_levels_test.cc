#include "tables/table_levels.h"

#include <gtest/gtest.h>

#include "catalogue/doc_type_list.h"
#include "catalogue/files_reader.h"
#include "dbf/dbf_cache.h"
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

struct LevelsWorld : CatalogueWorld {
  // The lines of a Files section, as CatalogueWorld::TableSet takes them.
  explicit LevelsWorld(const char* files) { TableSet("TS", files); }

  const TBasis& Load() {
    LoadFromDbf(Type(), "C:\\OUT\\", cache_, *this);
    return Type().GetBasis(*this);
  }
  TDocInfo& Type() {
    if (types_ == nullptr) types_ = std::make_unique<TDocTypeList>("Kordwin.dcf", false, *this);
    return types_->GetDocInfo("TS");
  }

 private:
  TDbfCache cache_{host};
  std::unique_ptr<TDocTypeList> types_;
};

std::string Describe(const TBasis& basis) {
  const auto& table = dynamic_cast<const TDbfBasis&>(basis);
  std::string text = table.table_file + "[" + table.key_fields + "|" + table.link_fields + "]:";
  for (int i = 0; i < basis.Count(); ++i) {
    const TFieldInfo& field = basis.Item(i);
    text += " " + field.name;
    text += field.block != nullptr
                ? "{" + Describe(*field.block) + "}"
                : std::string("=") + static_cast<char>(field.type) + std::to_string(field.width) +
                      "." + std::to_string(field.decimals) + "x" + std::to_string(field.lines);
  }
  return text;
}

TEST(TableLevels, TakesTheLevelsOfATableSetFromTableHeaders) {
  LevelsWorld world(R"(; the head

head = dbrhead [nomer]        : NOMER C7, SUM N12.2
    goods = dbrtov [nomer|g32]  : NOMER C7, TXT C251
      docs = dbrdocs            : D D8
  tail = dbrtail                : L L1
next = dbrnext
  lost = dbrtail
[OTHER]
)");
  const TBasis& basis = world.Load();
  EXPECT_EQ(Describe(basis),
            "DBRHEAD[NOMER|]: NOMER=C7.0x1 SUM=N12.2x1"
            " GOODS{DBRTOV[NOMER|G32]: NOMER=C7.0x1 TXT=C101.0x3 DOCS{DBRDOCS[|]: D=D8.0x1}}"
            " TAIL{DBRTAIL[|]: L=L1.0x1}");
  EXPECT_EQ(basis.FindSubBasis("GOODS\\DOCS").Path(), "GOODS\\DOCS");
}

TEST(TableLevels, LeavesOutBlocksWhoseTableCannotBeOpened) {
  LevelsWorld world(R"(HEAD = DBRHEAD : NOMER C7
  A = LOST
    B = DBRTOV
    C = GONE
  GOODS = DBRTOV : G32 N5
)");
  EXPECT_EQ(Describe(world.Load()), "DBRHEAD[|]: NOMER=C7.0x1 GOODS{DBRTOV[|]: G32=N5.0x1}");
  EXPECT_EQ(Utf8(world.host.dialogs.messages.at(0)),
            "Не могу открыть:\r\nC:\\OUT\\LOST\r\nC:\\OUT\\GONE");
}

TEST(TableLevels, LoadsAgainAndKeepsTheNumberingRight) {
  LevelsWorld world("HEAD = DBRHEAD : NOMER C7\n  TOVAR = DBRTOV : A C7, G32 N5\n");
  const TDocProtect& numbering = world.Type().Numbering(world);
  EXPECT_EQ(numbering.FieldIdByName("G32"), 0) << "not read yet";
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(world.Load().Count(), 2);
    EXPECT_EQ(numbering.FieldIdByName("nomer"), 1);
    EXPECT_EQ(numbering.FieldIdByName("g32"), 1001);
  }
}

TEST(FilesReader, MissesTheFilesSection) {
  CatalogueWorld world("[TS.HEADER]\nDbfName=x\n[TS.FILES]\nA = B\n");
  TDocTypeList types("Kordwin.dcf", false, world);
  EXPECT_EQ(Utf8(ErrorOf([&] { (void)types.GetDocInfo("TS").GetBasis(world); })),
            "Файл: C:\\PROG\\Data\\Kordwin.dcf  Раздел: [TS.Files]\r\rНет секции [TS.Files]");
}

}  // namespace
}  // namespace customsconv
