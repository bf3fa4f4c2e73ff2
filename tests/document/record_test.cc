#include "document/record.h"

#include <gtest/gtest.h>

#include "catalogue/basis.h"
#include "support/text.h"

namespace customsconv {
namespace {

TFieldInfo Field(std::string_view name, std::string_view xml_path = {}) {
  TFieldInfo field;
  field.name = Win(name);
  field.xml_path = xml_path;
  return field;
}

// A level of one field.
std::unique_ptr<TBasis> Level(const char* field) {
  auto level = std::make_unique<TBasis>();
  level->Append(Field(field));
  level->Reindex();
  return level;
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
  TBasis top;
  top.Append(Field("G01"));
  auto goods = Level("G33");
  goods->AppendBlock(Field("DOCS"), Level("G44"));
  goods->Reindex();
  top.AppendBlock(Field("TOVAR"), std::move(goods));
  EXPECT_EQ(&top.FindSubBasis("TOVAR"), &top) << "not indexed yet";
  top.Reindex();
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
}

// Fields F0 to F39 with the block GOODS, which has one field, in the middle.
class RecordTest : public testing::Test {
 protected:
  static constexpr int kBlock = 20;

  RecordTest() {
    for (int i = 0; i < 40; ++i) {
      if (i == kBlock) level.AppendBlock(Field("GOODS"), Level("G33"));
      level.Append(Field("F" + std::to_string(i)));
    }
    record.Fill();
  }

  TBasis level;
  RecordArena arena;
  TDocFieldList record{level, arena};
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
