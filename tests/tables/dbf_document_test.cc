#include "tables/dbf_document.h"

#include <gtest/gtest.h>

#include "dbf/dbf_cache.h"
#include "support/catalogue_builder.h"
#include "support/document_dump.h"
#include "support/table_image.h"

namespace customsconv {
namespace {

// A head table, its goods, their documents and their parts, which know their goods by
// its number under another name.
class TDbfDocumentTest : public ::testing::Test {
 protected:
  TDbfDocumentTest() {
    world.Dcf(
        "[SET.HEADER]\nDbfName=x\nMainBlock=GOODS\n[SET.Files]\nHEAD = DBRHEAD [NOMER]\n"
        "  GOODS = DBRTOV [NOMER]\n    DOCS = DBRDOCS [NOMER,NUMTOV]\n"
        "    PARTS = DBRPARTS [GOODSNUM|NUMTOV]\n"
        "[PLAIN.HEADER]\nFullName=x\n[PLAIN.Fields]\nG01=C10 | x\n");
    types = std::make_unique<TDocTypeList>("Kordwin.dcf", false, world);
    Put("DBRHEAD", head);
    Put("DBRTOV", goods);
    Put("DBRDOCS", docs);
    Put("DBRPARTS", parts);
  }
  static std::string Path(const std::string& name) { return "C:\\OUT\\" + name + ".DBF"; }
  void Put(const std::string& name, const TableImage& table) {
    world.host.files[Path(name)] = table.Bytes();
  }
  // The rows on disk, as TableDump writes them.
  std::string Rows(const std::string& name) {
    const std::string dump = TableDump(world.host.files[Path(name)].bytes());
    return dump.substr(dump.find('\n') + 1);
  }
  std::unique_ptr<TDbfDocument> Create() {
    return CreateDbfDocument("set", "C:\\OUT\\", *types, cache, world);
  }
  std::unique_ptr<TDbfDocument> Loaded(const std::string& row) {
    auto document = Create();
    document->Load("C:\\OUT\\" + row);
    return document;
  }

  TableImage head = TableImage().Field("NOMER", 'C', 4).Field("G011", 'C', 20).Field("DAY", 'D', 8);
  TableImage goods =
      TableImage().Field("NOMER", 'C', 4).Field("NUMTOV", 'N', 3).Field("G31", 'C', 300);
  TableImage docs =
      TableImage().Field("NOMER", 'C', 4).Field("NUMTOV", 'N', 3).Field("NAME", 'C', 9);
  TableImage parts = TableImage().Field("GOODSNUM", 'N', 3).Field("WHAT", 'C', 5);
  CatalogueWorld world;
  TDbfCache cache{world.host};
  std::unique_ptr<TDocTypeList> types;
};

TEST_F(TDbfDocumentTest, LoadsAHeadRowWithTheRowsOfItsKey) {
  const std::string text = "Сахар " + std::string(280, 'x');
  Put("DBRHEAD", head.Row({"A", "first"}).Row({"B", "второй", "20260317"}));
  Put("DBRTOV",
      goods.Row({"B", "1", text}).Row({"A", "1", "other"}).Row({"B", "2"}).Row({"", "3"}));
  Put("DBRDOCS",
      docs.Row({"B", "2", "d1"}).Row({"A", "1", "dA"}).Row({"B", "2", "d2"}).Row({"B", "1", "d3"}));
  Put("DBRPARTS", parts.Row({"2", "p2"}).Row({"3", "p3"}).Row({"1", "p1"}));
  const auto document = Loaded("2");
  EXPECT_EQ(Dump(document->RootRecord()),
            "NOMER=\"B\" G011=\"второй\" DAY=\"17.03.26\" "
            "GOODS{NOMER=\"B\" NUMTOV=\"1\" G31=\"" +
                text +
                "\" DOCS{NOMER=\"B\" NUMTOV=\"1\" NAME=\"d3\"} PARTS{GOODSNUM=\"1\" WHAT=\"p1\"}}"
                "{NOMER=\"B\" NUMTOV=\"2\" DOCS{NOMER=\"B\" NUMTOV=\"2\" NAME=\"d1\"}"
                "{NOMER=\"B\" NUMTOV=\"2\" NAME=\"d2\"} PARTS{GOODSNUM=\"2\" WHAT=\"p2\"}}");
  EXPECT_EQ(document->RootRecNo(), 2);
  EXPECT_EQ(document->RowCount(), 2);
  EXPECT_EQ(document->DocKey(), "B");
  EXPECT_FALSE(document->Modified);
  EXPECT_EQ(world.host.dialogs.log,
            (std::vector<std::string>{"status: Загружаю документ для просмотра...", "status: "}));
}

TEST_F(TDbfDocumentTest, ReadsTheHeadRowNumberFromThePath) {
  Put("DBRHEAD", head.Row({"A"}).Row({"B"}));
  // A head row without goods gets an empty goods record.
  const std::pair<const char*, const char*> cases[] = {{"", "1 NOMER=\"A\" GOODS{}"},
                                                       {"2", "2 NOMER=\"B\" GOODS{}"},
                                                       {"2x", "1 NOMER=\"A\" GOODS{}"},
                                                       {"3", "3 GOODS{}"},
                                                       {"0", "0 GOODS{}"}};
  for (const auto& [path, loaded] : cases) {
    const auto document = Loaded(path);
    EXPECT_EQ(std::to_string(document->RootRecNo()) + " " + Dump(document->RootRecord()), loaded);
  }
}

TEST_F(TDbfDocumentTest, SavesANewDocumentAndThenTheSameRowsAgain) {
  Put("DBRHEAD", head.Row({"A", "first"}));
  Put("DBRTOV", goods.Row({"A", "1"}));
  const auto document = Create();
  document->OpenBlock("", 0, false);
  document->SetField("NOMER", "B");
  document->SetField("DAY", "17.03.2026");
  for (const std::string number : {"1", "2"}) {
    document->OpenBlock("\\\\GOODS", 0, false);
    document->SetField("NUMTOV", number);
    document->SetField("G31", "long text");
    document->OpenBlock("\\\\GOODS\\" + number + "\\PARTS", 0, false);
  }
  document->Save("C:\\OUT\\");
  EXPECT_FALSE(document->Modified);
  EXPECT_EQ(Rows("DBRHEAD"), "1: NOMER=\"A\" G011=\"first\"\n2: NOMER=\"B\" DAY=\"20260317\"\n");
  EXPECT_EQ(Rows("DBRTOV"),
            "1: NOMER=\"A\" NUMTOV=\"  1\"\n2: NOMER=\"B\" NUMTOV=\"  1\" G31=\"long text\"\n"
            "3: NOMER=\"B\" NUMTOV=\"  2\" G31=\"long text\"\n");
  EXPECT_EQ(Rows("DBRPARTS"), "1: GOODSNUM=\"  1\"\n2: GOODSNUM=\"  2\"\n");
  EXPECT_EQ(world.host.dialogs.progress_titles, (std::vector<std::string>{Win("Сохраняю файлы")}));

  document->SetFieldEx("\\\\GOODS\\1\\G31", "short");
  document->SetFieldEx("\\\\GOODS\\2\\G31", "");
  document->SetFieldEx("\\\\NOMER", "C");
  document->Save("C:\\OUT\\");
  EXPECT_EQ(Rows("DBRHEAD"), "1: NOMER=\"A\" G011=\"first\"\n2: NOMER=\"C\" DAY=\"20260317\"\n");
  EXPECT_EQ(Rows("DBRTOV"),
            "1: NOMER=\"A\" NUMTOV=\"  1\"\n2: NOMER=\"C\" NUMTOV=\"  1\" "
            "G31=\"short\"\n3: NOMER=\"C\" NUMTOV=\"  2\"\n");
}

TEST_F(TDbfDocumentTest, DeletesRowsAndKeepsTheRowNumbersRight) {
  Put("DBRHEAD", head.Row({"A"}));
  for (int i = 1; i <= 5; ++i) goods.Row({"A", std::to_string(i)});
  Put("DBRTOV", goods);
  const auto document = Loaded("1");
  document->OpenBlock("\\\\GOODS", 0, false);
  for (const char* path : {"\\\\GOODS\\6", "\\\\GOODS\\99"}) document->DeleteRecord(path, false);
  document->SetCurrentPath("\\\\GOODS");
  for (const char* path : {"4", "2"}) document->DeleteRecord(path, false);
  EXPECT_EQ(document->CurPath(), "GOODS\\");
  for (const std::string changed : {"five", "V"}) {
    document->SetFieldEx("\\\\GOODS\\3\\G31", changed);  // the fifth, now third
    document->Save("");
    EXPECT_EQ(Rows("DBRTOV"),
              "1: NOMER=\"A\" NUMTOV=\"  1\"\n2: NOMER=\"A\" NUMTOV=\"  3\"\n"
              "3: NOMER=\"A\" NUMTOV=\"  5\" G31=\"" +
                  changed + "\"\n");
  }
}

TEST_F(TDbfDocumentTest, SaysWhichTableCannotBeOpened) {
  const auto document = Create();
  document->OpenBlock("", 0, false);
  document->SetField("NOMER", "B");
  document->OpenBlock("\\\\GOODS", 0, false);
  world.host.files.Remove(Path("DBRTOV"));
  cache.DropCachedFile(Path("DBRTOV"));
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
  EXPECT_EQ(Utf8(ErrorOf([&] { (void)CreateDbfDocument("PLAIN", "C:\\", *types, cache, world); })),
            "Документ не описан как набор таблиц: PLAIN");
}

TEST_F(TDbfDocumentTest, LeavesTheTablesToTheStationThatHoldsTheLock) {
  const auto document = Create();
  document->OpenBlock("", 0, false);
  world.host.files["C:\\OUT\\veltlock.$$$"] = "";
  world.host.dialogs.lock_answers = {LockAnswer::kAbandon};
  document->Save("C:\\OUT\\");
  EXPECT_TRUE(document->Modified && document->AppendedRows().empty());
  EXPECT_TRUE(world.host.files.Has("C:\\OUT\\veltlock.$$$"));
  EXPECT_EQ(Rows("DBRHEAD"), "");
}

// A level with as many key names as the list that is asked for answers with its own.
TEST_F(TDbfDocumentTest, MatchesChildrenByTheParentsOwnKeyNames) {
  world.Dcf(
      "[ODD.HEADER]\nDbfName=x\n[ODD.Files]\nHEAD = DBRHEAD [NOMER]\n"
      "  ODD = DBRODD [CODE]\n  NOKEY = DBRDOCS\n  BOTH = DBRTOV [NOMER+NUMTOV]\n");
  types = std::make_unique<TDocTypeList>("Kordwin.dcf", false, world);
  Put("DBRHEAD", head.Row({"A"}));
  Put("DBRODD", TableImage().Field("CODE", 'C', 4).Row({"B"}).Row({"A"}));
  Put("DBRDOCS", docs.Row({"A"}));
  Put("DBRTOV", goods.Row({"A", ""}).Row({"A", "1"}));
  const auto document = CreateDbfDocument("ODD", "C:\\OUT\\", *types, cache, world);
  document->Load("C:\\OUT\\1");
  EXPECT_EQ(Dump(document->RootRecord()), "NOMER=\"A\" ODD{CODE=\"A\"} BOTH{NOMER=\"A\"}");
}

}  // namespace
}  // namespace customsconv
