#include "tables/dbf_document.h"

#include <gtest/gtest.h>

#include "catalogue/files_reader.h"
#include "dbf/dbf_cache.h"
#include "support/catalogue_builder.h"
#include "support/document_dump.h"
#include "tables/table_levels.h"

namespace customsconv {
namespace {

// A head, its goods, their documents and their parts, which have the goods number by another name.
class TDbfDocumentTest : public ::testing::Test {
 protected:
  TDbfDocumentTest() {
    world.TableSet("SET", R"(
HEAD = DBRHEAD [NOMER]               : NOMER C4, G011 C20, DAY D8
  TOVAR = DBRTOV [NOMER]             : NOMER C4, NUMTOV N3, G31 C300
    DOCS = DBRDOCS [NOMER,NUMTOV]    : NOMER C4, NUMTOV N3, NAME C9
    PARTS = DBRPARTS [GOODSNUM|NUMTOV] : GOODSNUM N3, WHAT C5
)");
  }
  std::string Rows(const std::string& name) { return world.Rows(name); }
  std::unique_ptr<TDbfDocument> Create(std::string_view code = "set") {
    types = std::make_unique<TDocTypeList>("Kordwin.dcf", false, world);
    return CreateDbfDocument(code, "C:\\OUT\\", *types, cache, world);
  }
  std::unique_ptr<TDbfDocument> Loaded(const std::string& row) {
    auto document = Create();
    document->Load("C:\\OUT\\" + row);
    return document;
  }

  TableImage head{"NOMER C4, G011 C20, DAY D8"};
  TableImage goods{"NOMER C4, NUMTOV N3, G31 C300"};
  TableImage docs{"NOMER C4, NUMTOV N3, NAME C9"};
  TableImage parts{"GOODSNUM N3, WHAT C5"};
  CatalogueWorld world{TypeText("PLAIN", "FullName=x", "G01=C10 | x")};
  TDbfCache cache{world.host};
  std::unique_ptr<TDocTypeList> types;
};

TEST_F(TDbfDocumentTest, LoadsAHeadRowWithTheRowsOfItsKey) {
  const std::string text = "Сахар " + std::string(280, 'x');
  world.Table("DBRHEAD", head.Row({"A", "first"}).Row({"B", "второй", "20260317"}));
  world.Table("DBRTOV",
              goods.Row({"B", "1", text}).Row({"A", "1", "other"}).Row({"B", "2"}).Row({"", "3"}));
  world.Table(
      "DBRDOCS",
      docs.Row({"B", "2", "d1"}).Row({"A", "1", "dA"}).Row({"B", "2", "d2"}).Row({"B", "1", "d3"}));
  world.Table("DBRPARTS", parts.Row({"2", "p2"}).Row({"3", "p3"}).Row({"1", "p1"}));
  const auto document = Loaded("2");
  EXPECT_EQ(Dump(document->RootRecord()),
            R"(NOMER="B" G011="второй" DAY="17.03.26" TOVAR{NOMER="B" NUMTOV="1" G31=")" + text +
                R"(" DOCS{NOMER="B" NUMTOV="1" NAME="d3"} PARTS{GOODSNUM="1" WHAT="p1"}})"
                R"({NOMER="B" NUMTOV="2" DOCS{NOMER="B" NUMTOV="2" NAME="d1"})"
                R"({NOMER="B" NUMTOV="2" NAME="d2"} PARTS{GOODSNUM="2" WHAT="p2"}})");
  EXPECT_EQ(document->RootRecNo(), 2);
  EXPECT_EQ(document->RowCount(), 2);
  EXPECT_EQ(document->DocKey(), "B");
  EXPECT_FALSE(document->Modified);
  EXPECT_EQ(world.host.dialogs.log,
            (std::vector<std::string>{"status: Загружаю документ для просмотра...", "status: "}));
}

TEST_F(TDbfDocumentTest, ReadsTheHeadRowNumberFromThePath) {
  world.Table("DBRHEAD", head.Row({"A"}).Row({"B"}));
  // A head row without goods gets an empty goods record.
  for (const auto& [path, loaded] :
       Cases({" -> 1 NOMER=\"A\" TOVAR{}", "2 -> 2 NOMER=\"B\" TOVAR{}",
              "2x -> 1 NOMER=\"A\" TOVAR{}", "3 -> 3 TOVAR{}", "0 -> 0 TOVAR{}"})) {
    const auto document = Loaded(path);
    EXPECT_EQ(std::to_string(document->RootRecNo()) + " " + Dump(document->RootRecord()), loaded);
  }
}

TEST_F(TDbfDocumentTest, SavesANewDocumentAndThenTheSameRowsAgain) {
  world.Table("DBRHEAD", head.Row({"A", "first"}));
  world.Table("DBRTOV", goods.Row({"A", "1"}));
  const auto document = Create();
  document->OpenBlock("");
  document->SetField("NOMER", "B");
  document->SetField("DAY", "17.03.2026");
  for (const std::string number : {"1", "2"}) {
    document->OpenBlock("\\\\TOVAR");
    document->SetField("NUMTOV", number);
    document->SetField("G31", "long text");
    document->OpenBlock("\\\\TOVAR\\" + number + "\\PARTS");
  }
  document->Save("C:\\OUT\\");
  EXPECT_FALSE(document->Modified);
  EXPECT_EQ(Rows("DBRHEAD") + Rows("DBRTOV") + Rows("DBRPARTS"), R"(1: NOMER="A" G011="first"
2: NOMER="B" DAY="20260317"
1: NOMER="A" NUMTOV="  1"
2: NOMER="B" NUMTOV="  1" G31="long text"
3: NOMER="B" NUMTOV="  2" G31="long text"
1: GOODSNUM="  1"
2: GOODSNUM="  2"
)");
  EXPECT_EQ(world.host.dialogs.progress_titles, (std::vector<std::string>{Win("Сохраняю файлы")}));

  document->SetFieldEx("\\\\TOVAR\\1\\G31", "short");
  document->SetFieldEx("\\\\TOVAR\\2\\G31", "");
  document->SetFieldEx("\\\\NOMER", "C");
  document->Save("C:\\OUT\\");
  EXPECT_EQ(Rows("DBRHEAD") + Rows("DBRTOV"), R"(1: NOMER="A" G011="first"
2: NOMER="C" DAY="20260317"
1: NOMER="A" NUMTOV="  1"
2: NOMER="C" NUMTOV="  1" G31="short"
3: NOMER="C" NUMTOV="  2"
)");
}

// What a text fills of the fields that continue it is its own, whatever their own values say; the
// others are written as ever.
TEST_F(TDbfDocumentTest, KeepsTheRestOfALongTextInEverySave) {
  const std::string first(255, 'a'), second(20, 'b');
  world.TableSet("LONG", "HEAD = DBRLONG : G313 C20, G31 C255, G312 C20, G314 C20");
  const auto document = Create("LONG");
  document->OpenBlock("");
  document->SetField("G31", first + second + "ccc");
  for (const char* name : {"G312", "G313", "G314"}) document->SetField(name, "own");
  for (const int save : {1, 2}) {
    SCOPED_TRACE(save);
    document->Save("C:\\OUT\\");
    EXPECT_EQ(Rows("DBRLONG"),
              "1: G313=\"ccc\" G31=\"" + first + "\" G312=\"" + second + "\" G314=\"own\"\n");
  }
  document->SetField("G31", first + "b ");
  document->Save("C:\\OUT\\");
  EXPECT_EQ(Rows("DBRLONG"), "1: G313=\"own\" G31=\"" + first + "\" G312=\"b\" G314=\"own\"\n");
}

TEST_F(TDbfDocumentTest, DeletesRowsAndKeepsTheRowNumbersRight) {
  world.Table("DBRHEAD", head.Row({"A"}));
  for (int i = 1; i <= 5; ++i) goods.Row({"A", std::to_string(i)});
  world.Table("DBRTOV", goods);
  const auto document = Loaded("1");
  document->OpenBlock("\\\\TOVAR");
  for (const char* path : {"\\\\TOVAR\\6", "\\\\TOVAR\\99"}) document->DeleteRecord(path);
  document->SetCurrentPath("\\\\TOVAR");
  for (const char* path : {"4", "2"}) document->DeleteRecord(path);
  EXPECT_EQ(document->CurPath(), "TOVAR\\");
  for (const std::string changed : {"five", "V"}) {
    document->SetFieldEx("\\\\TOVAR\\3\\G31", changed);  // the fifth, now third
    document->Save("");
    EXPECT_EQ(Rows("DBRTOV"),
              "1: NOMER=\"A\" NUMTOV=\"  1\"\n2: NOMER=\"A\" NUMTOV=\"  3\"\n"
              "3: NOMER=\"A\" NUMTOV=\"  5\" G31=\"" +
                  changed + "\"\n");
  }
}

TEST_F(TDbfDocumentTest, SaysWhichTableCannotBeOpened) {
  const auto document = Create();
  document->OpenBlock("");
  document->SetField("NOMER", "B");
  document->OpenBlock("\\\\TOVAR");
  world.host.files.Remove(CatalogueWorld::TablePath("DBRTOV"));
  cache.DropCachedFile(CatalogueWorld::TablePath("DBRTOV"));
  EXPECT_EQ(Utf8(ErrorOf([&] { document->Save("C:\\OUT\\"); })),
            "Не могу открыть файл C:\\OUT\\DBRTOV");
  EXPECT_FALSE(world.host.files.Has("C:\\OUT\\veltlock.$$$"));
  EXPECT_EQ(Rows("DBRHEAD"), "");
  cache.Flush();
  EXPECT_EQ(Rows("DBRHEAD"), "1: NOMER=\"B\"\n") << "the rows written so far are in the images";
  EXPECT_EQ(Utf8(ErrorOf([&] { document->Load("C:\\OUT\\2"); })),
            "Не могу открыть dbf для загрузки C:\\OUT\\DBRTOV");
  EXPECT_EQ(Utf8(ErrorOf([&] { document->Load("C:\\NONE\\1"); })),
            "Не могу открыть dbf для загрузки C:\\NONE\\DBRHEAD");
  EXPECT_EQ(world.host.dialogs.log.back(), "status: ");
  EXPECT_EQ(Utf8(ErrorOf([&] { (void)Create("PLAIN"); })),
            "Документ не описан как набор таблиц: PLAIN");
}

TEST_F(TDbfDocumentTest, LeavesTheTablesToTheStationThatHoldsTheLock) {
  const auto document = Create();
  document->OpenBlock("");
  world.host.files["C:\\OUT\\veltlock.$$$"] = "";
  world.host.dialogs.lock_answers = {LockAnswer::kAbandon};
  document->Save("C:\\OUT\\");
  EXPECT_TRUE(document->Modified && document->AppendedRows().empty());
  EXPECT_TRUE(world.host.files.Has("C:\\OUT\\veltlock.$$$"));
  EXPECT_EQ(Rows("DBRHEAD"), "");
}

// A level with as many key names as the list that is asked for answers with its own.
TEST_F(TDbfDocumentTest, MatchesChildrenByTheParentsOwnKeyNames) {
  world.TableSet("ODD", R"(
HEAD = DBRHEAD [NOMER]
  ODD = DBRODD [CODE]
  NOKEY = DBRDOCS
  BOTH = DBRTOV [NOMER+NUMTOV]
)");
  world.Table("DBRHEAD", head.Row({"A"}));
  world.Table("DBRODD", TableImage("CODE C4").Row({"B"}).Row({"A"}));
  world.Table("DBRDOCS", docs.Row({"A"}));
  world.Table("DBRTOV", goods.Row({"A", ""}).Row({"A", "1"}));
  const auto document = Create("ODD");
  document->Load("C:\\OUT\\1");
  EXPECT_EQ(Dump(document->RootRecord()), "NOMER=\"A\" ODD{CODE=\"A\"} BOTH{NOMER=\"A\"}");
}

TEST(FilesReader, ParsesLines) {
  for (const auto& [text, parsed] :
       Cases({"Head = DbrHead [g32,NumTov] -> 0 HEAD DBRHEAD G32,NUMTOV ",
              "   B = T.DBF -> 1 B T.DBF  ", "    B=T [K|L+M] -> 2 B=T T K L+M",
              "B = T [K]|L -> 0 B T K L", "B[K] = T -> 0 B T K ", "B -> 0 B   "})) {
    const FilesLine line = ParseFilesLine(text);
    EXPECT_EQ(std::to_string(line.level) + " " + line.block_name + " " + line.table_file + " " +
                  line.key_fields + " " + line.link_fields,
              parsed)
        << text;
  }
}

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

TEST_F(TDbfDocumentTest, TakesItsLevelsFromTableHeaders) {
  world.TableSet("TS", R"(; the head

head = dbrhead [nomer]        : NOMER C7, SUM N12.2
    goods = dbrtov [nomer|g32]  : NOMER C7, TXT C251
      docs = dbrdocs            : D D8
  a = lost
    b = dbrtov
    c = gone
  tail = dbrtail                : L L1
next = dbrnext
  lost = dbrtail
[OTHER]
)");
  const TBasis& basis = Create("TS")->RootBasis();
  EXPECT_EQ(Describe(basis),
            "DBRHEAD[NOMER|]: NOMER=C7.0x1 SUM=N12.2x1"
            " GOODS{DBRTOV[NOMER|G32]: NOMER=C7.0x1 TXT=C101.0x3 DOCS{DBRDOCS[|]: D=D8.0x1}}"
            " TAIL{DBRTAIL[|]: L=L1.0x1}");
  EXPECT_EQ(basis.FindSubBasis("GOODS\\DOCS").Path(), "GOODS\\DOCS");
  EXPECT_EQ(Utf8(world.host.dialogs.messages.at(0)),
            "Не могу открыть:\r\nC:\\OUT\\LOST\r\nC:\\OUT\\GONE");
}

TEST_F(TDbfDocumentTest, LoadsItsLevelsAgainAndKeepsTheNumberingRight) {
  types = std::make_unique<TDocTypeList>("Kordwin.dcf", false, world);
  TDocInfo& type = types->GetDocInfo("SET");
  const TDocProtect& numbering = type.Numbering(world);
  EXPECT_EQ(numbering.FieldIdByName("NUMTOV"), 0) << "not read yet";
  for (int i = 0; i < 2; ++i) {
    LoadFromDbf(type, "C:\\OUT\\", cache, world);
    EXPECT_EQ(type.GetBasis(world).Count(), 4);
    EXPECT_EQ(numbering.FieldIdByName("nomer"), 1);
    EXPECT_EQ(numbering.FieldIdByName("numtov"), 1001);
  }
}

}  // namespace
}  // namespace customsconv
