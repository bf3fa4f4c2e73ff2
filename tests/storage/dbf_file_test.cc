#include "storage/dbf_file.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"
#include "support/table_image.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr FileMode kShared = kModeRead | kShareDenyNone;
constexpr FileMode kSharedWrite = kModeReadWrite | kShareDenyNone;

// One table in a world of its own.
struct Opened {
  explicit Opened(const std::string& bytes) {
    host.files["C:\\OUT\\GOODS.DBF"] = bytes;
    EXPECT_EQ(table.Open("C:\\OUT\\GOODS", kSharedWrite, OnError::kReturn), DbfStatus::kOk);
  }
  // What a flush would leave on disk.
  std::string Flushed() {
    cache.Flush();
    return host.files["C:\\OUT\\GOODS.DBF"];
  }
  std::string Dump() { return TableDump(Flushed()); }

  FakeHost host;
  TDbfCache cache{host};
  TFileDbfFile table{cache};
};

TDescrs Fields(std::initializer_list<FieldDescriptor> fields) { return fields; }

TEST(TFileDbfFile, CreatesTheExactBytesOfAnEmptyTable) {
  FakeHost host;
  host.files.AddFolder("C:\\OUT");
  host.clock.Set({2026, 3, 17});
  TDbfCache cache(host);
  TFileDbfFile table(cache);
  TDescrs fields = Fields({{"a", 0, 10, 0, 'C'}, {" B ", 0, 8, 2, 'N'}});
  ASSERT_EQ(table.CreateTable(fields, "C:\\OUT\\NEW"), DbfStatus::kOk);

  std::string expected("\x03\x1A\x03\x11\0\0\0\0\x62\0\x13\0", 12);
  expected += std::string(17, '\0') + '\x26' + std::string(2, '\0');
  expected +=
      'a' + std::string(10, '\0') + 'C' + std::string(4, '\0') + '\x0A' + std::string(15, '\0');
  expected +=
      'B' + std::string(10, '\0') + 'N' + std::string(4, '\0') + "\x08\x02" + std::string(14, '\0');
  expected += std::string("\x0D\0\x1A", 3);
  EXPECT_EQ(host.files["C:\\OUT\\NEW.DBF"].bytes(), expected);

  ASSERT_EQ(fields.size(), 2u);
  EXPECT_EQ(fields[0].name, "A          ");
  EXPECT_EQ(fields[1].offset, 11);
  table.BlankRecord();
  EXPECT_TRUE(table.Append());
  cache.Flush();
  expected.pop_back();
  EXPECT_EQ(host.files["C:\\OUT\\NEW.DBF"].bytes(),
            WithByte(expected, 4, 1) + std::string(19, ' ') + '\x1A');
}

TEST(TFileDbfFile, MarksMemosAndLongTextsInWhatItCreates) {
  FakeHost host;
  host.files.AddFolder("C:\\OUT");
  host.clock.Set({1999, 12, 31});
  TDbfCache cache(host);
  TFileDbfFile table(cache);
  TDescrs fields = Fields({{"NOTE", 0, 10, 0, 'm'}, {"TEXT", 0, 300, 0, 'C'}});
  ASSERT_EQ(table.CreateTable(fields, "C:\\OUT\\NEW"), DbfStatus::kOk);
  const std::string& bytes = host.files["C:\\OUT\\NEW.DBF"];
  EXPECT_EQ(bytes.substr(0, 4), "\xF5\x63\x0C\x1F");
  EXPECT_EQ(bytes.substr(64 + 16, 2), "\x2C\x01");
  EXPECT_EQ(fields[1].length, 300);
  EXPECT_EQ(fields[1].decimals, 0);
}

TEST(TFileDbfFile, RefusesFieldListsThatNoTableHoldsAndLeavesTheFile) {
  Opened world(TableImage().Field("G32", 'N', 5).Row({"1"}).Bytes());
  const std::string before = world.host.files["C:\\OUT\\GOODS.DBF"];
  const struct {
    const char* what;
    TDescrs fields;
    DbfStatus status;
  } cases[] = {
      {"no fields", {}, DbfStatus::kRefused},
      {"a number wider than a byte counts", Fields({{"N", 0, 256, 0, 'N'}}), DbfStatus::kNotATable},
      {"a text with decimals", Fields({{"C", 0, 9, 1, 'C'}}), DbfStatus::kNotATable},
      {"records too long", Fields({{"A", 0, 65000, 0, 'C'}, {"B", 0, 600, 0, 'C'}}),
       DbfStatus::kNotATable},
      {"too many fields", TDescrs(2047, {"A", 0, 1, 0, 'C'}), DbfStatus::kNotATable},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TFileDbfFile table(world.cache);
    TDescrs fields = c.fields;
    EXPECT_EQ(table.CreateTable(fields, "C:\\OUT\\GOODS"), c.status);
    EXPECT_FALSE(table.is_open());
    EXPECT_EQ(world.host.files["C:\\OUT\\GOODS.DBF"].bytes(), before);
  }
}

TEST(TFileDbfFile, RefusesWhatIsNotATable) {
  const std::string table =
      TableImage().Field("G32", 'N', 5).Field("NAME", 'C', 7).Row({"1"}).Bytes();
  const std::string wide = TableImage().Field("A", 'C', 65000).Field("B", 'C', 800).Bytes();
  const struct {
    const char* what;
    std::string bytes;
    const char* message;
  } cases[] = {
      {"nothing", "", "DBF not DBF: "},
      {"no room for a header", std::string(64, '\0'), "DBF not DBF: "},
      {"zeros", std::string(65, '\0'), "DBF not DBF2: "},
      {"last row cut short", table.substr(0, table.size() - 2), "DBF not DBF2: "},
      {"four bytes behind the rows", table + "...", "DBF not DBF2: "},
      {"header beyond the file", WithU16(table, 8, 0xFFFF), "DBF not DBF2: "},
      {"a count that overflows", WithU32(table, 4, 0xFFFFFFFF), "DBF not DBF2: "},
      {"record length 0", WithU16(table, 10, 0).substr(0, 98), "DBF not DBF3: "},
      {"a field wider than its record", WithByte(table, 32 + 16, 6), "DBF not DBF3: "},
      {"lengths that overflow 16 bits", wide, "DBF not DBF3: "},
      {"2046 descriptors of nothing", WithU16(WithU16(std::string(65535, '\0'), 8, 65535), 10, 9),
       "DBF not DBF3: "},
      {"no room for the extended tail", WithByte(table, 0, 0x30), "DBF not DBF3: "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    FakeHost host;
    host.files["C:\\OUT\\DBRHEAD.DBF"] = c.bytes;
    TDbfCache cache(host);
    TFileDbfFile file(cache);
    const auto open = [&] { file.Open("c:\\out\\dbrhead", kShared, OnError::kThrow); };
    EXPECT_EQ(ErrorOf(open), c.message + std::string("C:\\OUT\\DBRHEAD.DBF"));
    EXPECT_EQ(file.Open("c:\\out\\dbrhead", kShared, OnError::kReturn), DbfStatus::kNotATable);
    EXPECT_FALSE(file.is_open());
  }
}

TEST(TFileDbfFile, AcceptsUpToThreeBytesBehindTheRows) {
  const std::string table = TableImage().Field("G32", 'N', 5).Row({"1"}).Bytes();
  for (const std::string& bytes : {
           table.substr(0, table.size() - 1),
           table,
           table + "..",
       }) {
    Opened world(bytes);
    EXPECT_EQ(world.table.GoTo(1), DbfStatus::kOk);
    world.table.SetFieldByName("G32", "2");
    world.table.Append();
    EXPECT_EQ(world.Flushed(), TableImage().Field("G32", 'N', 5).Row({"1"}).Row({"2"}).Bytes());
  }
}

TEST(TFileDbfFile, SaysWhyAFileCannotBeOpened) {
  FakeHost host;
  TDbfCache cache(host);
  TFileDbfFile file(cache);
  EXPECT_EQ(Utf8(ErrorOf([&] { file.Open(Win("C:/Out/Тара.dbf"), kShared, OnError::kThrow); })),
            "dBaseInt: Не найден файл C:\\OUT\\ТАРА.DBF");
  EXPECT_EQ(file.Open("C:\\OUT\\A", kShared, OnError::kReturn), DbfStatus::kNoFile);
  host.files["C:\\OUT\\A.DBF"] = TableImage().Field("G32", 'N', 5).Bytes();
  host.files.FailPath("C:\\OUT\\A.DBF", FileOp::kOpen, FileError::Kind::kOpen);
  EXPECT_EQ(file.Open("C:\\OUT\\A", kShared, OnError::kReturn), DbfStatus::kNoFile);
  EXPECT_THROW(file.Open("C:\\OUT\\A", kShared, OnError::kThrow), FileError);
}

TEST(TFileDbfFile, ReadsTheExtendedLayout) {
  Opened world(TableImage()
                   .Extended()
                   .Field("NAME", 'C', 5)
                   .Field("NOTE", 'M', 4)
                   .Row({"Лён", "\x02\x01"})
                   .Bytes());
  ASSERT_EQ(world.table.GoTo(1), DbfStatus::kOk);
  EXPECT_EQ(Utf8(world.table.GetFieldByName("name")), "Лён");
  EXPECT_EQ(world.table.GetFieldByName("NOTE"), "538968322");  // 02 01 20 20
  EXPECT_EQ(world.table.GetLongFieldByName("NOTE"), "538968322");
}

TEST(TFileDbfFile, ReadsNamesUpToTheirFirstNul) {
  std::string bytes =
      TableImage().Field("Goods", 'C', 5).Field("имя", 'C', 5).Field("goods", 'N', 3).Bytes();
  bytes.replace(32 + 6, 3, "xyz");
  Opened world(bytes);
  EXPECT_EQ(world.table.FieldAt(0).name, "GOODS      ");
  EXPECT_EQ(world.table.FieldIndex("  GoodS "), 2) << "the last of equal names wins";
  EXPECT_EQ(world.table.FieldIndex(Win("Имя")), 1);
  EXPECT_EQ(world.table.FieldIndex("GOODSGOODSGO"), -1);
  EXPECT_EQ(world.table.FieldIndex("GOOD"), -1);
  EXPECT_EQ(world.table.FieldWidth("goods"), 3);
  EXPECT_EQ(world.table.FieldType("goods"), 'N');
  EXPECT_EQ(world.table.FieldType("none"), ' ');
}

TEST(TFileDbfFile, MovesBetweenRecords) {
  Opened world(TableImage().Field("A", 'C', 3).Row({"one"}).DeletedRow({"two"}).Bytes());
  TFileDbfFile& table = world.table;
  EXPECT_EQ(table.current_record(), -1);
  EXPECT_EQ(table.Post(), DbfStatus::kRefused);
  const struct {
    std::int64_t record;
    DbfStatus status;
    bool at_beginning, past_end;
    const char* value;
  } steps[] = {
      {-1, DbfStatus::kRefused, true, false, ""},   {2, DbfStatus::kOk, false, false, "two"},
      {3, DbfStatus::kRefused, false, true, "two"}, {0, DbfStatus::kRefused, true, false, "two"},
      {1, DbfStatus::kOk, false, false, "one"},
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(step.record);
    EXPECT_EQ(table.GoTo(step.record), step.status);
    EXPECT_EQ(table.at_beginning(), step.at_beginning);
    EXPECT_EQ(table.past_end(), step.past_end);
    EXPECT_EQ(table.GetField(0).view(), step.value);
    EXPECT_EQ(table.IsDeleted(), step.value == std::string_view("two"));
  }
  table.SetField(0, "new", false);
  EXPECT_EQ(table.GoTo(1), DbfStatus::kOk);
  EXPECT_EQ(table.GetField(0).view(), "new") << "the current record is not read again";
  table.Close();
  EXPECT_EQ(table.GoTo(1), DbfStatus::kRefused);
  EXPECT_FALSE(table.Append());
  EXPECT_EQ(table.GetFieldByName("A"), "");
}

TEST(TFileDbfFile, KeepsTheCreationDateAndTheDeletionMarks) {
  Opened world(TableImage().Field("A", 'C', 3).Row({"one"}).DeletedRow({"two"}).Bytes());
  world.host.clock.Set({2030, 1, 1});
  world.table.GoTo(2);
  world.table.SetField(0, "dos", false);
  world.table.Post();
  world.table.BlankRecord();
  world.table.SetField(0, "tri", false);
  EXPECT_TRUE(world.table.Append());
  EXPECT_EQ(world.table.current_record(), 3);
  EXPECT_EQ(world.Flushed(),
            TableImage().Field("A", 'C', 3).Row({"one"}).DeletedRow({"dos"}).Row({"tri"}).Bytes());
}

TEST(TFileDbfFile, DeletesRecordsPhysically) {
  TableImage image;
  image.Field("A", 'C', 3);
  for (const char* value : {"one", "two", "tri", "for"}) image.Row({value});
  Opened world(image.Bytes() + "..");
  world.table.GoTo(1);
  EXPECT_EQ(world.table.DeleteRecord(5), DbfStatus::kRefused);
  EXPECT_EQ(world.table.DeleteRecord(0), DbfStatus::kRefused);
  EXPECT_EQ(world.table.current_record(), 1);
  EXPECT_EQ(world.table.DeleteRecord(2), DbfStatus::kOk);
  EXPECT_EQ(world.table.current_record(), 0);
  EXPECT_EQ(world.table.DeleteRecord(3), DbfStatus::kOk);
  EXPECT_EQ(world.Flushed(), TableImage().Field("A", 'C', 3).Row({"one"}).Row({"tri"}).Bytes());
}

TEST(TFileDbfFile, TwoObjectsOverOneTableShareItsRows) {
  Opened world(TableImage().Field("A", 'C', 3).Row({"one"}).Bytes());
  TFileDbfFile other(world.cache);
  other.Open("c:/out/goods.dbf", kShared, OnError::kThrow);
  other.GoTo(1);
  world.table.GoTo(1);
  world.table.SetField(0, "new", false);
  world.table.Post();
  other.GoTo(1);
  EXPECT_EQ(other.GetField(0).view(), "one");
  world.table.Append();
  EXPECT_EQ(other.RecordCount(), 2);
  other.Append();
  EXPECT_EQ(world.Dump(), "A C3\n1: A=\"new\"\n2: A=\"new\"\n3: A=\"one\"\n");
  world.table.GoTo(3);
  other.DeleteRecord(3);
  EXPECT_EQ(world.table.Post(), DbfStatus::kRefused) << "its record is gone";
}

TEST(TFileDbfFile, ReopensWhatChangedOnDisk) {
  Opened world(TableImage().Field("A", 'C', 3).Row({"one"}).Bytes());
  EXPECT_FALSE(world.table.Refresh());
  world.host.files["C:\\OUT\\GOODS.DBF"] = TableImage().Field("A", 'C', 3).Row({"two"}).Bytes();
  EXPECT_TRUE(world.table.Refresh());
  world.table.GoTo(1);
  EXPECT_EQ(world.table.GetField(0).view(), "two");
}

// Tables of 10,000,000 bytes and more.
class LargeTable : public ::testing::Test {
 protected:
  static constexpr int kRows = 40'000;
  LargeTable() {
    TableImage image;
    image.Field("NUM", 'N', 6).Field("TEXT", 'C', 250);
    for (int i = 1; i <= kRows; ++i) image.Row({std::to_string(i)});
    host.files["C:\\OUT\\BIG.DBF"] = image.Bytes();
    table.Open("C:\\OUT\\BIG", kSharedWrite, OnError::kThrow);
  }
  FakeHost host;
  TDbfCache cache{host};
  TFileDbfFile table{cache};
};

TEST_F(LargeTable, IsUsedThroughItsFile) {
  EXPECT_EQ(host.files.open_streams(), 1u);
  table.GoTo(kRows);
  EXPECT_EQ(table.GetFieldByName("NUM").view(), "40000");
  table.SetFieldByName("TEXT", "posted");
  table.Post();
  TFileDbfFile other(cache);
  other.Open("C:\\OUT\\BIG", kSharedWrite, OnError::kThrow);
  other.BlankRecord();
  other.SetFieldByName("NUM", "40001");
  EXPECT_TRUE(other.Append());
  table.SetFieldByName("NUM", "40002");
  EXPECT_TRUE(table.Append());
  EXPECT_EQ(table.DeleteRecord(2), DbfStatus::kOk);
  table.Close();
  other.Close();
  EXPECT_EQ(host.files.open_streams(), 0u);

  ASSERT_EQ(table.Open("C:\\OUT\\BIG", kShared, OnError::kReturn), DbfStatus::kOk);
  EXPECT_EQ(table.RecordCount(), kRows + 1);
  for (int record : {1, 2, 300, kRows - 1, kRows, kRows + 1}) {
    table.GoTo(record);
    EXPECT_EQ(table.GetFieldByName("NUM").view(), std::to_string(record + (record > 1 ? 1 : 0)));
  }
}

TEST_F(LargeTable, StaysATableWhenARowCannotBeWritten) {
  table.BlankRecord();
  host.files.FailChange(1, /*tear=*/true);
  EXPECT_THROW(table.Append(), FileError);
  host.files.FailChange(2);
  EXPECT_THROW(table.Append(), FileError);
  TFileDbfFile other(cache);
  ASSERT_EQ(other.Open("C:\\OUT\\BIG", kShared, OnError::kReturn), DbfStatus::kOk);
  EXPECT_EQ(other.RecordCount(), kRows);
}

}  // namespace
}  // namespace customsconv
