#include <gtest/gtest.h>

#include "support/opened_table.h"
#include "support/text.h"

namespace customsconv {
namespace {

// A table with a blank last row, which is current.
struct BlankRow : OpenedTable {
  explicit BlankRow(TableImage& image) : OpenedTable(image.Row({}).Bytes()) {
    table.GoTo(table.RecordCount());
    host.clock.Set({2026, 5, 1});
  }
  // The bytes of its fields on disk.
  std::string Stored() {
    table.Post();
    std::size_t length = 0;
    for (const FieldDescriptor& field : table.fields()) length += field.length;
    return Flushed().substr(Flushed().size() - 1 - length, length);
  }
};

TEST(DbfValues, AreFormattedByTheTypeOfTheField) {
  const struct {
    char type;
    int width, decimals;
    const char *value, *stored, *read_back;
  } cases[] = {{'C', 8, 0, " ab \r\n", " ab     ", "ab"},
               {'C', 3, 0, "abcde", "abc", "abc"},
               {'C', 5, 0, "Ёж №1", "\xF0\xA6 \xFC\x31", "Ёж №1"},
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
               {'D', 8, 0, "31.02.2026", "        ", ""},
               {'D', 8, 0, "\r\n 170326\r\n", "20260317", "17.03.26"},
               {'D', 8, 0, "\r\n\t17.03.2026\r\n12:30", "20260317", "17.03.26"},
               {'D', 8, 0, "1703202", "        ", ""},
               {'N', 8, 2, "3,5", "0       ", "0"},
               {'N', 8, 2, "3.456", "    3.46", "3.46"},
               {'N', 8, 2, "-0.005", "   -0.01", "-0.01"},
               {'N', 8, 2, "-0.00", "    0.00", "0.00"},
               {'N', 8, 2, "\r\n\t7\r\n", "    7.00", "7.00"},
               {'N', 8, 2, "1e3", " 1000.00", "1000.00"},
               {'N', 8, 2, "007.5", "    7.50", "7.50"},
               {'N', 8, 2, "", "        ", ""},
               {'N', 5, 0, "12.5", "   13", "13"},
               {'N', 5, 0, "1234567", "12345", "12345"},
               {'N', 5, 2, "1234.56", "1234.", "1234."},
               {'N', 8, 3, "1.23456", "   1.234", "1.234"},
               {'N', 8, 3, "123456.789", "3456.789", "3456.789"},
               {'N', 8, 3, "1234567890.1235", "7890.124", "7890.124"},
               {'N', 8, 3, "-5", "  -5.000", "-5.000"},
               {'F', 5, 1, "1.25", "1.25 ", "1.25"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.type + std::to_string(c.width) + "." + std::to_string(c.decimals) + c.value);
    BlankRow world(TableImage().Field("A", c.type, c.width, c.decimals).Field("PAD", 'C', 4));
    world.table.SetFieldByName("A", Win(c.value));
    EXPECT_EQ(Utf8(world.table.GetFieldByName("A")), c.read_back);
    EXPECT_EQ(world.Stored(), c.stored + std::string(4, ' '));
  }
}

TEST(DbfValues, KeepWhatIsWrittenRaw) {
  BlankRow world(TableImage().Field("A", 'N', 6, 2).Field("D", 'D', 8));
  world.table.SetFieldByName("||A", "1,5 ");
  world.table.SetFieldByName("||D", "17.03.26 and more");
  world.table.SetFieldByName("||NONE", "1");
  std::vector<std::string> lines;
  world.table.GetRecordText(lines);
  EXPECT_EQ(lines, (std::vector<std::string>{"A=1,5", "D=17.03.26"}));
  EXPECT_EQ(world.Stored(), "1,5   17.03.26");
}

TEST(DbfLongValues, ContinueInNumberedFields) {
  const std::string full(255, 'a'), blank(252, ' ');
  const struct {
    const char* what;
    char third;
    const char* name;
    std::string value, stored;
  } cases[] = {
      {"shorter than 255", 'C', "G31", "abc", "abc" + blank + "222 333 555 "},
      {"ends in the second", 'C', "G31", full + "bb", full + "bb  333 555 "},
      {"loses what has no field", 'C', "G31", full + "bbbbccccdddd", full + "bbbbcccc555 "},
      {"another type ends it", 'N', "G31", full + "bbbbcccc", full + "bbbb333 555 "},
      {"trimmed on the right", 'C', "G31", full + "  ", full + "222 333 555 "},
      {"raw", 'C', "||G31", full + "  ", full + "    333 555 "}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TableImage image = TableImage().Field("G31", 'C', 255).Field("G312", 'C', 4);
    BlankRow world(image.Field("G313", c.third, 4).Field("G315", 'C', 4));
    for (const char* name : {"||G312", "||G313", "||G315"}) {
      world.table.SetFieldByName(name, std::string(3, name[5]));
    }
    world.table.SetLongFieldByName(c.name, c.value);
    EXPECT_EQ(world.Stored(), c.stored);
    // Up to the first missing number, without the blanks at the end.
    const std::string shown = c.stored.substr(0, 255 + 4 + 4);
    EXPECT_EQ(world.table.GetLongFieldByName("G31"),
              shown.substr(0, shown.find_last_not_of(' ') + 1));
  }
}

TEST(DbfLongValues, OfOtherFieldsAreOrdinaryOnes) {
  TableImage image = TableImage().Field("A", 'C', 250).Field("A2", 'C', 10).Field("N", 'N', 5);
  BlankRow world(image.Field("LONG", 'C', 300));
  world.table.SetLongFieldByName("A", std::string(260, 'x'));
  world.table.SetLongFieldByName("N", std::string(255, '1'));
  world.table.SetLongFieldByName("LONG", std::string(300, 'y'));
  EXPECT_EQ(world.table.GetLongFieldByName("A"), std::string(250, 'x'));
  EXPECT_EQ(world.table.GetLongFieldByName("A2"), "");
  EXPECT_EQ(world.table.GetLongFieldByName("N"), "11111");
  EXPECT_EQ(world.table.GetLongFieldByName("LONG").size(), 300u);
  EXPECT_EQ(world.table.GetFieldByName("LONG").size(), 255u);
  world.table.SetFieldByName("LONG", std::string(300, 'z'));
  EXPECT_EQ(world.Stored().substr(265), std::string(255, 'z') + std::string(45, ' '));
}

TEST(DbfSearch, FindsEqualAndContainedValues) {
  TableImage image = TableImage().Field("FLDNAME", 'C', 12);
  for (const char* value : {"g07esad", "", " ESAD ", "xЭсАдx"}) image.Row({value});
  BlankRow world(image.DeletedRow({"esad2"}));  // and a blank row 6
  const std::tuple<const char*, const char*, std::vector<int>> cases[] = {
      {"FLDNAME", " esad", {3}}, {"fldname*", "esad", {1, 3, 5}}, {"FLDNAME*", "ЭСАД", {4}},
      {"FLDNAME", "", {2, 6}},   {"FLDNAME*", " ", {}},           {"NONE", "", {}}};
  for (const auto& [field, value, records] : cases) {
    std::vector<int> found;
    for (bool more = world.table.FindFirst(field, Win(value)); more;
         more = world.table.FindNext()) {
      found.push_back(static_cast<int>(world.table.current_record()));
    }
    EXPECT_EQ(found, records) << field << "=" << value;
  }
  std::int64_t record = 4;
  EXPECT_TRUE(world.table.Search("FLDNAME", "ESAD2", record));
  EXPECT_EQ(record, 6) << "behind the last record that was looked at";
  EXPECT_EQ(world.table.current_record(), 5);
}

}  // namespace
}  // namespace customsconv
