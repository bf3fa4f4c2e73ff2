#include <gtest/gtest.h>

#include "storage/dbf_file.h"
#include "support/fake_host.h"
#include "support/table_image.h"
#include "support/text.h"

namespace customsconv {
namespace {

// A table of one blank row with room for a single field, and what lies in it.
struct OneField {
  explicit OneField(TableImage& image) {
    host.files["C:\\OUT\\T.DBF"] = image.Row({}).Bytes();
    table.Open("C:\\OUT\\T", kModeReadWrite | kShareDenyNone, OnError::kThrow);
    table.GoTo(1);
  }
  // The bytes of the record behind its mark, after posting and flushing.
  std::string Stored() {
    table.Post();
    cache.Flush();
    const std::string& bytes = host.files["C:\\OUT\\T.DBF"];
    const auto header = static_cast<std::size_t>(table.FieldAt(0).offset);
    std::size_t length = 0;
    for (const FieldDescriptor& field : table.fields()) length += field.length;
    return bytes.substr(bytes.size() - length - header, length);
  }
  FakeHost host;
  TDbfCache cache{host};
  TFileDbfFile table{cache};
};

TEST(DbfValues, AreFormattedByTheTypeOfTheField) {
  const struct {
    char type;
    int width, decimals;
    const char* value;
    const char* stored;
    const char* read_back;
  } cases[] = {
      {'C', 8, 0, " ab \r\n", " ab     ", "ab"},
      {'C', 3, 0, "abcde", "abc", "abc"},
      {'L', 1, 0, "1", "T", "T"},
      {'L', 1, 0, " 0 ", "F", "F"},
      {'L', 1, 0, "t", "T", "T"},
      {'L', 1, 0, "да", " ", ""},
      {'M', 6, 0, "12 ", "    12", "12"},
      {'D', 8, 0, "170326", "20260317", "17.03.26"},
      {'D', 8, 0, "17032026", "20260317", "17.03.26"},
      {'D', 8, 0, "17035", "19950317", "17.03.95"},
      {'D', 8, 0, "17034", "20040317", "17.03.04"},
      {'D', 8, 0, "17-03-2026 12:30", "20260317", "17.03.26"},
      {'D', 8, 0, "7/3/26", "20260307", "07.03.26"},
      {'D', 8, 0, "31.02.2026", "        ", ""},
      {'D', 8, 0, " 170326", "        ", ""},
      {'D', 8, 0, "1703202", "        ", ""},
      {'N', 8, 2, "3,5", "0       ", "0"},
      {'N', 8, 2, "3.456", "    3.46", "3.46"},
      {'N', 8, 2, "2.675", "    2.68", "2.68"},
      {'N', 8, 2, "-0.005", "   -0.01", "-0.01"},
      {'N', 8, 2, " 7 ", "    7.00", "7.00"},
      {'N', 8, 2, "1e3", " 1000.00", "1000.00"},
      {'N', 8, 2, "007.5", "    7.50", "7.50"},
      {'N', 8, 2, "0", "    0.00", "0.00"},
      {'N', 8, 2, "-0.00", "    0.00", "0.00"},
      {'N', 8, 2, "12.", "   12.00", "12.00"},
      {'N', 8, 2, ".5", "    0.50", "0.50"},
      {'N', 8, 2, "+5", "    5.00", "5.00"},
      {'N', 8, 2, "1e-999999999", "    0.00", "0.00"},
      {'N', 8, 2, "1e999", "0       ", "0"},
      {'N', 8, 2, "nan", "0       ", "0"},
      {'N', 8, 2, "", "        ", ""},
      {'N', 5, 0, "12.5", "   13", "13"},
      {'N', 5, 0, "1234567", "12345", "12345"},
      {'N', 5, 2, "1234.56", "1234.", "1234."},
      {'N', 8, 3, "12", "  12.000", "12.000"},
      {'N', 8, 3, "1.23456", "   1.234", "1.234"},
      {'N', 8, 3, "123456.789", "3456.789", "3456.789"},
      {'N', 8, 3, "1234567890.1235", "7890.124", "7890.124"},
      {'N', 8, 3, "-5", "  -5.000", "-5.000"},
      {'F', 5, 1, "1.25", "1.25 ", "1.25"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(1, c.type) + std::to_string(c.width) + "." +
                 std::to_string(c.decimals) + " " + c.value);
    OneField world(TableImage().Field("A", c.type, c.width, c.decimals).Field("PAD", 'C', 4));
    world.host.clock.Set({2026, 5, 1});
    world.table.SetFieldByName("A", Win(c.value));
    EXPECT_EQ(world.table.GetFieldByName("A").view(), c.read_back);
    EXPECT_EQ(world.Stored(), c.stored + std::string(4, ' '));
  }
}

TEST(DbfValues, KeepWhatIsWrittenRaw) {
  OneField world(TableImage().Field("A", 'N', 6, 2).Field("D", 'D', 8));
  world.table.SetFieldByName("||A", "1,5 ");
  world.table.SetFieldByName("||D", "17.03.26 and more");
  world.table.SetFieldByName("||NONE", "1");
  EXPECT_EQ(world.table.GetFieldByName("D").view(), "17.03.26");
  EXPECT_EQ(world.Stored(), "1,5   17.03.26");
}

TEST(DbfValues, AreHeldInCodePage866) {
  OneField world(TableImage().Field("A", 'C', 5));
  world.table.SetFieldByName("A", Win("Ёж №1"));
  EXPECT_EQ(Utf8(world.table.GetFieldByName("A")), "Ёж №1");
  EXPECT_EQ(world.Stored(), "\xF0\xA6 \xFC\x31");
  std::vector<std::string> lines;
  world.table.GetRecordText(lines);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(Utf8(lines[0]), "A=Ёж №1");
}

TEST(DbfValues, AreCutAt255BytesOutsideTheLongOperations) {
  OneField world(TableImage().Field("A", 'C', 300));
  world.table.SetLongFieldByName("A", std::string(300, 'x'));
  EXPECT_EQ(world.table.GetFieldByName("A").size(), 255u);
  EXPECT_EQ(world.table.GetLongFieldByName("A").size(), 300u);
  world.table.SetFieldByName("A", std::string(300, 'y'));
  EXPECT_EQ(world.Stored(), std::string(255, 'y') + std::string(45, ' '));
}

TEST(DbfLongValues, ContinueInNumberedFields) {
  const auto filled = [](char type_of_third) {
    return TableImage()
        .Field("G31", 'C', 255)
        .Field("G312", 'C', 4)
        .Field("G313", type_of_third, 4)
        .Field("G315", 'C', 4);
  };
  const std::string full(255, 'a');
  const struct {
    const char* what;
    char third;
    const char* name;
    std::string value;
    std::string stored;
    std::string read_back;
  } cases[] = {
      {"shorter than 255", 'C', "G31", "abc", "abc" + std::string(252, ' ') + "222 333 555 ",
       "abc" + std::string(252, ' ') + "222 333"},
      {"ends in the second", 'C', "G31", full + "bb", full + "bb  333 555 ", full + "bb  333"},
      {"fills the first", 'C', "G31", full, full + "222 333 555 ", full + "222 333"},
      {"loses what has no field", 'C', "G31", full + "bbbbccccdddd", full + "bbbbcccc555 ",
       full + "bbbbcccc"},
      {"another type ends the writing", 'N', "G31", full + "bbbbcccc", full + "bbbb333 555 ",
       full + "bbbb333"},
      {"trimmed on the right", 'C', "G31", full + "  ", full + "222 333 555 ", full + "222 333"},
      {"raw", 'C', "||G31", full + "  ", full + "    333 555 ", full + "    333"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TableImage image = filled(c.third);
    OneField world(image);
    for (const char* name : {"||G312", "||G313", "||G315"}) {
      world.table.SetFieldByName(name, std::string(3, name[5]));
    }
    world.table.SetLongFieldByName(c.name, c.value);
    EXPECT_EQ(world.table.GetLongFieldByName("G31"), c.read_back);
    EXPECT_EQ(world.Stored(), c.stored);
  }
}

TEST(DbfLongValues, OfOtherFieldsAreOrdinaryOnes) {
  OneField world(TableImage().Field("A", 'C', 250).Field("A2", 'C', 10).Field("N", 'N', 5));
  world.table.SetLongFieldByName("A", std::string(260, 'x'));
  world.table.SetLongFieldByName("N", std::string(255, '1'));
  world.table.SetLongFieldByName("NONE", "1");
  EXPECT_EQ(world.table.GetLongFieldByName("A"), std::string(250, 'x'));
  EXPECT_EQ(world.table.GetLongFieldByName("A2"), "");
  EXPECT_EQ(world.table.GetLongFieldByName("N"), "11111");
}

TEST(DbfSearch, FindsEqualAndContainedValues) {
  TableImage image;
  image.Field("FLDNAME", 'C', 12);
  for (const char* value : {"g07esad", "", " ESAD ", "xЭсАдx"}) image.Row({value});
  image.DeletedRow({"esad2"});
  OneField world(image);  // and a blank row 6
  const struct {
    const char* field;
    const char* value;
    std::vector<int> found;
  } cases[] = {
      {"FLDNAME", " esad", {3}}, {"fldname*", "esad", {1, 3, 5}}, {"FLDNAME*", "ЭСАД", {4}},
      {"FLDNAME", "", {2, 6}},   {"FLDNAME*", " ", {}},           {"NONE", "", {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.field + std::string("=") + c.value);
    std::vector<int> found;
    for (bool more = world.table.FindFirst(c.field, Win(c.value)); more;
         more = world.table.FindNext()) {
      found.push_back(static_cast<int>(world.table.current_record()));
    }
    EXPECT_EQ(found, c.found);
  }
}

TEST(DbfSearch, LeavesThePositionBehindTheLastRecordLookedAt) {
  TableImage image;
  OneField world(image.Field("A", 'C', 1).Row({"x"}).Row({"y"}).Row({"x"}));
  std::int64_t record = 2;
  EXPECT_TRUE(world.table.Search("A", "X", record));
  EXPECT_EQ(record, 4);
  EXPECT_EQ(world.table.current_record(), 3);
  EXPECT_FALSE(world.table.Search("A", "Y", record));
  EXPECT_EQ(record, 5);
}

}  // namespace
}  // namespace customsconv
