#include "document/basis.h"

#include <gtest/gtest.h>

#include "support/text.h"

namespace customsconv {
namespace {

TFieldInfo Field(std::string_view name, std::string_view xml_path = {}) {
  TFieldInfo field;
  field.name = Win(name);
  field.xml_path = xml_path;
  return field;
}

std::unique_ptr<TBasis> Level(std::initializer_list<const char*> names) {
  auto level = std::make_unique<TBasis>();
  for (const char* name : names) level->Append(Field(name));
  level->Reindex();
  return level;
}

TEST(TBasis, FindsNamesExactlyBeforeAndInAnyCaseAfterIndexing) {
  TBasis basis;
  for (const char* name : {"G01", "Ёж", "g01", "G02"}) basis.Append(Field(name));
  EXPECT_EQ(basis.IndexOfName("g01"), 2);
  EXPECT_EQ(basis.IndexOfName("g02"), -1);
  EXPECT_EQ(basis.IndexOfXmlPath(""), -1);
  basis.Reindex();
  EXPECT_EQ(basis.IndexOfName("g01"), 0) << "the first of equal names wins";
  EXPECT_EQ(basis.IndexOfName("g02"), 3);
  EXPECT_EQ(basis.IndexOfName(Win("ёЖ")), 1);
  EXPECT_EQ(basis.IndexOfName("G0"), -1);
  EXPECT_EQ(basis.IndexOfName(""), -1);
  basis.Clear();
  EXPECT_EQ(basis.IndexOfName("G01"), -1);
}

TEST(TBasis, FindsXmlPathsWithoutTheirPrefixes) {
  const std::string longest(255, 'L');
  TBasis basis;
  basis.Append(Field("A", "ESADout_CU:GoodsShipment#cat_ru:Consignor"));
  basis.Append(Field("B"));
  basis.Append(Field("C", "x:y:goodsshipment#Consignor"));
  basis.Append(Field("D", "p:" + longest + "cut"));
  basis.Append(Field("E"));
  basis.Reindex();
  EXPECT_EQ(basis.IndexOfXmlPath("goodsshipment#CONSIGNOR"), 0);
  EXPECT_EQ(basis.IndexOfXmlPath("ESADout_CU:GoodsShipment#cat_ru:Consignor"), -1);
  EXPECT_EQ(basis.IndexOfXmlPath(""), 1) << "the first field without a path";
  EXPECT_EQ(basis.IndexOfXmlPath(longest + "another end"), 3);
}

TEST(TBasis, WalksDownBlockNames) {
  TBasis top;
  top.Append(Field("G01"));
  auto goods = Level({"G33"});
  goods->AppendBlock(Field("DOCS"), Level({"G44"}));
  goods->Reindex();
  top.AppendBlock(Field("TOVAR"), std::move(goods));
  EXPECT_EQ(&top.FindSubBasis("TOVAR"), &top) << "not indexed yet";
  top.Reindex();
  const TBasis& tovar = *top.FieldByName("TOVAR").block;
  const TBasis& docs = *tovar.FieldByName("DOCS").block;
  const std::pair<const char*, const TBasis*> cases[] = {{"", &top},
                                                         {"root", &top},
                                                         {"Main", &top},
                                                         {"tovar\\3\\DOCS\\1", &docs},
                                                         {"\\\\TOVAR\\\\docs", &docs},
                                                         {"TOVAR\\NONE\\DOCS", &tovar},
                                                         {"G01\\TOVAR", &top},
                                                         {"TOVAR\\-1\\DOCS", &tovar},
                                                         {"TOVAR\\0\\DOCS", &tovar}};
  for (const auto& [path, found] : cases) EXPECT_EQ(&top.FindSubBasis(path), found) << path;
  EXPECT_EQ(docs.Path(), "TOVAR\\DOCS");
  EXPECT_EQ(top.Path(), "");
  EXPECT_EQ(docs.Owner(), &tovar.FieldByName("DOCS"));
  EXPECT_EQ(top.Owner(), nullptr);
}

TEST(TBasis, ChecksumCoversTheNamesOfAllLevels) {
  TBasis top;
  top.Append(Field("G01"));
  top.AppendBlock(Field("TOVAR"), Level({"G33"}));
  top.Reindex();
  EXPECT_EQ(top.FieldByName("TOVAR").block->checksum(), 0x3E6E9F63u);
  EXPECT_EQ(top.checksum(), 0x76F28668u);
}

}  // namespace
}  // namespace customsconv
