#include "document/record.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "support/text.h"

namespace customsconv {
namespace {

TFieldInfo Field(std::string name) {
  TFieldInfo field;
  field.name = std::move(name);
  return field;
}

// Fields F0 to F39 with the block GOODS, which has one field, in the middle.
class RecordTest : public testing::Test {
 protected:
  static constexpr int kBlock = 20;

  RecordTest() {
    for (int i = 0; i < 40; ++i) {
      if (i == kBlock) {
        auto goods = std::make_unique<TBasis>();
        goods->Append(Field("G33"));
        level.AppendBlock(Field("GOODS"), std::move(goods));
      }
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
