#include "document/document.h"

#include <gtest/gtest.h>

#include <utility>

#include "support/catalogue_builder.h"

namespace customsconv {
namespace {

const std::string kLongName(101, 'N');
const std::string kCatalogue =
    TypeText("DS1", "MainBlock=TOVAR", R"(G011=C10, FLAG=L1, NOTE=40X3, KIND_CHOICE=C5
A1=C5 | CHOICE="1", A2=C5 | CHOICE="2"
TOVAR { G33=C10, G31=C250, G31.NAME=NAME;0;N;, G31.MAKER=MADE BY:;0;M;
DOCS { NUM=C5, C1=C5 | CHOICE="7" } }
CARS { V1=C5 | CHOICE="1" }, LAST_CHOICE=C5, BUS { V1=C5 | CHOICE="1" }
)" + kLongName + "=C5") +
    TypeText("PLAIN", "FullName=No main block", "X=C5") + "[TAB.HEADER]\nDbfName=DBRHEAD\n";

class DocumentTest : public testing::Test {
 protected:
  // Goods 1 to 2 with "g1" and "g2" in G33; the position is at the top.
  DocumentTest() {
    document.OpenBlock("");
    AddGoods({"g1", "g2"});
  }

  void AddGoods(const std::vector<const char*>& values) {
    for (const char* value : values) {
      document.OpenBlock(R"(\\TOVAR)");
      document.SetField("G33", value);
    }
    document.SetCurrentPath(R"(\\)");
  }
  std::string OpenError(std::string_view path, int number = 0) {
    return Utf8(ErrorOf([&] { document.OpenBlock(path, number); }));
  }

  CatalogueWorld world{kCatalogue};
  TDocTypeList types{"Kordwin.dcf", false, world};
  TDocument document{"DS1", types, world};
  std::vector<std::string>& messages = world.host.dialogs.messages;
};

TEST_F(DocumentTest, CreatesByCodeAndByNames) {
  const auto error = [&](auto create, const char* code) {
    return Utf8(ErrorOf([&] { (void)create(code, types, world); }));
  };
  EXPECT_EQ(CreateDocument("ds1", types, world)->DocInfo().Code, "DS1");
  EXPECT_EQ(error(CreateDocument, "NONE"), "Не описан документ NONE");
  EXPECT_EQ(error(CreateDocument, "TAB"), "Для DbfDocument-ов своя функция есть!");
  EXPECT_EQ(CreateDocumentByNames("DS1_view; plain,DS1", types, world)->DocInfo().Code, "PLAIN");
  EXPECT_EQ(error(CreateDocumentByNames, "A;B"), "Не описан документ B");
}

TEST_F(DocumentTest, WithoutSlotsValuesGoNowhereOrAreReported) {
  TDocument bare("DS1", types, world);
  bare.SetField("UNKNOWN", "x");
  EXPECT_EQ(bare.GetField("G011") + bare.GetFieldById(1, 0), "");
  EXPECT_TRUE(messages.empty());
  bare.SetField("FLAG", "x");
  EXPECT_EQ(bare.GetFieldEx(R"(TOVAR\1\G33)"), "");
  EXPECT_EQ(messages,
            (std::vector<std::string>{"Doc.SetField : List index out of bounds (1)",
                                      Win("Doc.GetFieldEx : Неправильный номер поля 6 ")}));
}

TEST_F(DocumentTest, WalksPathsAndKeepsThePositionWhenTheyLeadNowhere) {
  document.OpenBlock(R"(\\TOVAR\2\DOCS)");
  const auto walk = [this](std::string_view from, std::string_view path) {
    document.SetCurrentPath(R"(\\)");
    document.SetCurrentPath(from);
    const std::string result = document.SetCurrentPath(path) ? "" : "stays at ";
    return result + document.CurPath().str() + " " + std::to_string(document.GoodsIndex());
  };
  EXPECT_EQ(walk("", R"(tovar\ 2)"), R"(tovar\ 2\ 0)");  // only the exact name counts as goods
  EXPECT_EQ(walk("TOVAR", "2"), R"(TOVAR\2\ 1)");
  EXPECT_EQ(walk(R"(TOVAR\2)", R"(DOCS\1)"), R"(TOVAR\2\DOCS\1\ 1)");
  EXPECT_EQ(walk(R"(TOVAR\2)", R"(\\TOVAR\1)"), R"(TOVAR\1\ 0)");
  EXPECT_EQ(walk(R"(TOVAR\2)", R"(\\)"), " 0");
  EXPECT_EQ(walk("", R"(TOVAR\\no further)"), R"(TOVAR\\no further\ 0)");
  for (const char* nowhere : {R"(DOCS\2)", R"(\\TOVAR\0)"}) {
    EXPECT_EQ(walk(R"(TOVAR\2)", nowhere), R"(stays at TOVAR\2\ 1)");
  }
  EXPECT_EQ(walk("", "G011") + walk("", "CARS"), "stays at  0stays at  0");
}

TEST_F(DocumentTest, AtARecordListOnlyPathsFromTheTopRead) {
  EXPECT_EQ(document.RecordCount(R"(TOVAR\1)"), 5);
  document.SetCurrentPath("TOVAR");
  EXPECT_EQ(document.RecordCount(""), 2);
  document.SetField("G33", "x");
  EXPECT_EQ(document.GetField("G33") + document.GetFieldById(1000, 0), "");
  EXPECT_EQ(document.GetFieldEx(R"(TOVAR\1\G33)"), "g1");
}

TEST_F(DocumentTest, OpensAndInsertsRecords) {
  document.OpenBlock("TOVAR", 1);
  EXPECT_EQ(document.CurPath(), R"(TOVAR\1\)");
  EXPECT_EQ(document.GetFieldEx(R"(TOVAR\2\G33)"), "g1");
  document.OpenBlock(R"(\\TOVAR\3\DOCS\)");
  EXPECT_EQ(document.CurPath(), R"(TOVAR\3\DOCS\1\)");
  // There is no fifth, so the next one is opened.
  document.OpenBlock(R"(\\TOVAR\5\DOCS)");
  EXPECT_EQ(document.CurPath(), R"(TOVAR\5\DOCS\1\)");
  EXPECT_EQ(document.RecordCount(R"(\\TOVAR\4\DOCS)"), 1);

  EXPECT_EQ(OpenError(R"(\\TOVAR)", 9), "List index out of bounds (8)");
  EXPECT_EQ(OpenError(R"(\\NONE)"), R"(Не могу создать блок  \NONE)");
  EXPECT_EQ(OpenError(R"(\\TOVAR\1\G33)"), R"(Не могу создать блок  TOVAR\1\TOVAR\1\G33)");
  EXPECT_EQ(OpenError(R"(\\TOVAR\DOCS)"), "List index out of bounds (4)");  // no record there
}

TEST_F(DocumentTest, MissingParentWithoutNumberFallsBackToAFreshDocument) {
  document.SetCurrentPath(R"(TOVAR\2)");
  document.PushPosition();
  document.SetCurrentPath(R"(\\)");
  document.OpenBlock(R"(CARS\TOVAR)");
  EXPECT_EQ(document.CurPath(), R"(CARS\TOVAR\1\)");
  EXPECT_EQ(document.MainRecordCount(), 1);
  EXPECT_EQ(document.GetFieldEx(R"(TOVAR\1\G33)"), "");
  document.PopPosition();  // into the old tree, which nobody else sees
  EXPECT_EQ(ErrorOf([&] { document.PopPosition(); }), Win("Стек путей пуст"));
  EXPECT_EQ(document.GetField("G33"), "g2");
}

TEST_F(DocumentTest, ReadsAndStoresByPath) {
  document.SetCurrentPath(R"(TOVAR\2)");
  document.SetFieldEx("G31", "a");
  document.SetFieldEx(R"(\\G011)", "b");
  document.SetFieldEx(R"(\\TOVAR\1\G33)", "c");
  document.SetFieldEx(R"(.\G33)", "d");
  document.SetFieldEx(R"(\\TOVAR\3\G33)", "lost");
  EXPECT_EQ(document.CurPath(), R"(TOVAR\2\)");
  const std::pair<const char*, const char*> cases[] = {
      {R"(\\TOVAR\1\G33)", "c"},   {R"(TOVAR\2\G33)", "d"}, {R"(.\G31)", "a"},  {"G011", "b"},
      {R"(\\G011)", "b"},          {"FLAG", "0"},           {"TOVAR", "TOVAR"}, {"G33", "none"},
      {R"(.\DOCS\1\NUM)", "none"}, {R"(TOVAR\G33)", "none"}};
  for (const auto& [path, value] : cases) {
    const FieldValue read = document.ReadFieldEx(path);
    EXPECT_EQ(read.field == nullptr ? read.text + "none" : read.text, value) << path;
  }
  document.SetFieldEx(R"(\\)" + kLongName, "long");
  EXPECT_EQ(document.GetFieldEx(kLongName), "long");
  EXPECT_TRUE(messages.empty());
}

TEST_F(DocumentTest, ReadsLongTextAsOneLineAndAppendsToWhatIsStored) {
  document.SetField("NOTE", "A\r\nB  ");
  EXPECT_EQ(document.GetFieldEx("NOTE", false), "A\r\nB  ");
  EXPECT_EQ(document.GetFieldEx("NOTE"), "A B");
  document.SetField("NOTE", "");
  document.AppendFieldByNum(2, "a\r");
  document.AppendFieldByNum(2, "b");
  document.AppendFieldByNum(1, "1");  // an empty flag reads "0"
  document.AppendFieldByNum(99, "lost");
  EXPECT_EQ(document.GetFieldEx("NOTE", false) + document.GetField("FLAG"), "a\rb01");
}

TEST_F(DocumentTest, IdentifiersReachTopAndGoods) {
  document.SetFieldById(1, 5, "top");
  document.SetFieldById(1000, 1, "second");
  document.SetFieldByName("g31.maker", 0, "ACME");
  for (const int nowhere : {-1, 0, 999, 6500}) document.SetFieldById(nowhere, 0, "lost");
  EXPECT_EQ(document.GetFieldById(1, 0) + document.GetFieldById(1000, 0), "topg1");
  EXPECT_EQ(document.GetFieldByName("G33", 1) + document.GetFieldById(1003, 0), "secondACME");
  for (const int nowhere : {-1, 0, 999, 6500, 65001}) {
    EXPECT_EQ(document.GetFieldById(nowhere, 0), "") << nowhere;
  }
  EXPECT_EQ(document.GetFieldById(1000, 2) + document.GetFieldById(1000, -1), "");
  EXPECT_TRUE(messages.empty());
}

TEST_F(DocumentTest, OnlyAskingForAValueOfTheMainBlockOpensARecord) {
  document.OpenBlock("");
  EXPECT_EQ(document.MainBasis().Item(0).name, "G33");
  EXPECT_EQ(document.MainRecordCount(), 0);
  EXPECT_EQ(document.GetFieldById(1000, 0), "");
  EXPECT_EQ(document.MainRecordCount(), 1);
  EXPECT_EQ(document.CurPath(), "");
  TDocument plain("PLAIN", types, world);
  EXPECT_EQ(&plain.MainBasis(), &plain.RootBasis());
  EXPECT_EQ(plain.GetFieldById(1000, 0), "");
}

TEST_F(DocumentTest, CompositeFieldHoldsItsParts) {
  document.SetCurrentPath(R"(TOVAR\1)");
  document.SetField("G31.NAME", "bolts");
  document.SetField("G31.MAKER", "ACME");
  EXPECT_EQ(document.GetField("G31.NAME") + document.GetField("G31.MAKER"), "boltsACME");
  document.PartRange = {0, 0, 11};
  EXPECT_EQ(document.GetField("G31.NAME") + document.GetField("G31.MAKER"), "bo");
}

TEST_F(DocumentTest, JoinsAFieldOfABlock) {
  const struct {
    std::vector<const char*> values;
    const char *lines, *blanks, *both;
  } cases[] = {{{"", "a", "", "b"}, "\r\na\r\n\r\nb", "a b", "\r\na \r\n\r\nb"},
               {{"a\r", "b"}, "a\rb", "a\rb", "a\rb"},
               {{"a ", "b"}, "a \r\nb", "a b", "a \r\nb"},
               {{}, "", "", ""}};
  for (const auto& c : cases) {
    document.OpenBlock("");
    AddGoods(c.values);
    EXPECT_EQ(document.JoinBlockField("TOVAR", "G33", JoinMode::kLines).text, c.lines);
    EXPECT_EQ(document.JoinBlockField(R"(\\TOVAR)", "", JoinMode::kBlanks).text, c.blanks);
    EXPECT_EQ(document.JoinBlockField("TOVAR", "G33", JoinMode::kBlanksAndLines).text, c.both);
    EXPECT_EQ(document.JoinBlockField("TOVAR", "NONE", JoinMode::kLines).text, "");
  }
}

TEST_F(DocumentTest, ChoiceGoesIntoTheMarkBeforeItOrBeforeItsBlock) {
  const auto marks = [this](std::string_view block, int position, int choice) {
    document.SetCurrentPath(R"(\\)");
    if (!block.empty()) document.OpenBlock(block);
    document.SetChoice(position, choice);
    return document.GetFieldEx("KIND_CHOICE") + "/" + document.GetFieldEx("LAST_CHOICE");
  };
  EXPECT_EQ(marks("", 5, 2), "2/");                 // past A1
  EXPECT_EQ(marks(R"(TOVAR\1\DOCS)", 1, 7), "2/");  // NUM is no mark
  EXPECT_EQ(marks("CARS", 0, 3), "2/");             // nor TOVAR, which stands before the block
  EXPECT_EQ(marks("BUS", 0, 4), "2/4");
}

}  // namespace
}  // namespace customsconv
