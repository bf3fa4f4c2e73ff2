#include "document/document.h"

#include <gtest/gtest.h>

#include "support/catalogue_builder.h"

namespace customsconv {
namespace {

const std::string kLongName(101, 'N');
const std::string kCatalogue =
    TypeText("DS1", "MainBlock=TOVAR", R"(G011=C10
FLAG=L1
NOTE=40X3
KIND_CHOICE=C5
A1=C5 | CHOICE="1"
A2=C5 | CHOICE="2"
TOVAR { G33=C10
G31=C250
G31.NAME=NAME;0;N;
G31.MAKER=MADE BY:;0;M;
DOCS { NUM=C5
C1=C5 | CHOICE="7" } }
CARS { V1=C5 | CHOICE="1" }
LAST_CHOICE=C5
BUS { V1=C5 | CHOICE="1" }
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
  document.OpenBlock("");
  EXPECT_EQ(document.GetFieldById(1000, 0), "");
  EXPECT_EQ(document.MainRecordCount(), 1) << "asking opens a record";
  EXPECT_EQ(document.CurPath(), "");
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
  const std::tuple<std::vector<const char*>, const char*, const char*, const char*> cases[] = {
      {{"", "a", "", "b"}, "\r\na\r\n\r\nb", "a b", "\r\na \r\n\r\nb"},
      {{"a\r", "b"}, "a\rb", "a\rb", "a\rb"},
      {{"a ", "b"}, "a \r\nb", "a b", "a \r\nb"},
      {{}, "", "", ""}};
  for (const auto& [values, lines, blanks, both] : cases) {
    document.OpenBlock("");
    AddGoods(values);
    EXPECT_EQ(document.JoinBlockField("TOVAR", "G33", JoinMode::kLines).text, lines);
    EXPECT_EQ(document.JoinBlockField(R"(\\TOVAR)", "", JoinMode::kBlanks).text, blanks);
    EXPECT_EQ(document.JoinBlockField("TOVAR", "G33", JoinMode::kBlanksAndLines).text, both);
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

TFieldInfo Field(std::string_view name, std::string_view xml_path = {}) {
  TFieldInfo field;
  field.name = Win(name);
  field.xml_path = xml_path;
  return field;
}

TEST(TBasis, FindsNamesExactlyBeforeAndInAnyCaseAfterIndexing) {
  TBasis basis;
  for (const char* name : {"G01", "Ёж", "g01", "G02"}) basis.Append(Field(name));
  EXPECT_EQ(basis.IndexOfName("g01"), 2);
  EXPECT_EQ(basis.IndexOfName("g02"), -1);
  basis.Reindex();
  EXPECT_EQ(basis.IndexOfName("g01"), 0) << "the first of equal names wins";
  EXPECT_EQ(basis.IndexOfName("g02"), 3);
  EXPECT_EQ(basis.IndexOfName(Win("ёЖ")), 1);
  EXPECT_EQ(basis.IndexOfName("G0"), -1);
}

TEST(TBasis, FindsXmlPathsWithoutTheirPrefixes) {
  const std::string longest(255, 'L');
  TBasis basis;
  for (const std::string& path :
       {std::string("ESADout_CU:GoodsShipment#cat_ru:Consignor"), std::string(),
        std::string("x:y:goodsshipment#Consignor"), longest + "longer", "p:" + longest}) {
    basis.Append(Field("A", path));
  }
  basis.Reindex();
  EXPECT_EQ(basis.IndexOfXmlPath("goodsshipment#CONSIGNOR"), 0);
  EXPECT_EQ(basis.IndexOfXmlPath("ESADout_CU:GoodsShipment#cat_ru:Consignor"), -1);
  EXPECT_EQ(basis.IndexOfXmlPath(""), 1) << "the first field without a path";
  EXPECT_EQ(basis.IndexOfXmlPath(longest + "longer"), 4)
      << "what is looked up is cut, a field's is not";
}

TEST(TBasis, WalksDownBlockNames) {
  TypeWorld type("G01=1\nTOVAR {\nG33=1\nDOCS {\nG44=1\n}\n}\n");
  const TBasis& top = type.Basis();
  const TBasis& tovar = *top.FieldByName("TOVAR").block;
  const TBasis& docs = *tovar.FieldByName("DOCS").block;
  EXPECT_EQ(top.checksum(), 0x09121E5Du) << "of the names of all levels";
  const std::pair<const TBasis*, std::vector<const char*>> cases[] = {
      {&top, {"", "root", "Main", "G01\\TOVAR"}},
      {&tovar, {"TOVAR\\NONE\\DOCS", "TOVAR\\0\\DOCS"}},
      {&docs, {"tovar\\3\\DOCS\\1", "\\\\TOVAR\\\\docs"}}};
  for (const auto& [level, paths] : cases) {
    for (const char* path : paths) EXPECT_EQ(&top.FindSubBasis(path), level) << path;
  }
  EXPECT_EQ(docs.Path() + top.Path(), "TOVAR\\DOCS");
  TBasis not_indexed;
  not_indexed.AppendBlock(Field("TOVAR"), std::make_unique<TBasis>());
  EXPECT_EQ(&not_indexed.FindSubBasis("TOVAR"), &not_indexed);
}

// 20 fields, the block GOODS, which has one field, and 20 more.
class RecordTest : public testing::Test {
 protected:
  static constexpr int kBlock = 20;

  RecordTest() { record.Fill(); }
  static std::string Fields() {
    std::string fields;
    for (int i = 0; i < kBlock; ++i) fields += "F=1\n";
    return fields;
  }

  TypeWorld type{Fields() + "GOODS {\nG33=1\n}\n" + Fields()};
  RecordArena arena;
  TDocFieldList record{type.Basis(), arena};
};

TEST_F(RecordTest, BlockEntryHoldsItsNameUntilAnotherTextIsStored) {
  EXPECT_EQ(record.Text(kBlock), "GOODS");
  EXPECT_EQ(record.Records(kBlock), nullptr);
  record.EnsureRecords(kBlock).Append(1);
  record.AppendText(kBlock, "+");
  EXPECT_EQ(record.Text(kBlock), "GOODS+");
  record.SetText(kBlock, "");
  EXPECT_EQ(record.Text(kBlock), "");
  EXPECT_EQ(record.Records(kBlock)->Count(), 1);
  EXPECT_EQ(record.Records(0), nullptr);
}

TEST_F(RecordTest, TextsGrowShrinkAndMayComeFromTheSlotItself) {
  std::string expected;
  for (int i = 0; i < 3000; ++i) {
    const std::string piece(static_cast<std::size_t>(i % 7), static_cast<char>('a' + i % 26));
    record.AppendText(3, piece);
    record.SetText(40, piece + "x");  // takes the room that the growing text gives back
    expected += piece;
  }
  EXPECT_EQ(record.Text(3), expected);
  record.AppendText(3, record.Text(3));
  EXPECT_EQ(record.Text(3), expected + expected);
  record.SetText(3, record.Text(3).substr(5, 40));
  EXPECT_EQ(record.Text(3), expected.substr(5, 40));
  EXPECT_EQ(record.Text(40), "jjjx");
}

TEST_F(RecordTest, ListKeepsOrderAndLabels) {
  RecordList& list = record.EnsureRecords(kBlock);
  TDocFieldList& first = list.Append("000");
  list.Append(1);
  list.Insert(1, 1).SetText(0, "in front");
  list.Insert(4, 4);
  const auto labels = [&list] {
    std::string all;
    for (int i = 1; i <= list.Count(); ++i) all += list.Label(i) + " ";
    return all;
  };
  EXPECT_EQ(labels(), "1 000 1 4 ");
  EXPECT_EQ(list.Record(1).Text(0), "in front");
  EXPECT_EQ(&list.Record(2), &first);
  EXPECT_EQ(ErrorOf([&] { list.Insert(6, 6); }), "List index out of bounds (5)");
  list.Remove(2);
  EXPECT_EQ(labels(), "1 1 4 ");
}

}  // namespace
}  // namespace customsconv
