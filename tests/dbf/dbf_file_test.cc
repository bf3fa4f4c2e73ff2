#include "dbf/dbf_file.h"

#include <gtest/gtest.h>

#include "support/opened_table.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr FileMode kShared = kModeReadWrite | kShareDenyNone;

TEST(TFileDbfFile, CreatesTheExactBytesOfATable) {
  FakeHost host;
  host.files.AddFolder("C:\\OUT");
  host.clock.Set({2026, 3, 17});
  TDbfCache cache(host);
  TFileDbfFile table(cache);
  TDescrs fields = {{"a", 0, 10, 0, 'C'}, {" B ", 0, 8, 2, 'N'}};
  ASSERT_EQ(table.CreateTable(fields, "C:\\OUT\\NEW"), DbfStatus::kOk);
  const std::string z(14, '\0');
  const std::string head = std::string("\x03\x1A\x03\x11\0\0\0\0\x62\0\x13\0\0\0\0", 15) + z +
                           std::string("\x26\0\0", 3) + "a" + z.substr(4) + "C" + z.substr(10) +
                           std::string("\x0A\0", 2) + z + "B" + z.substr(4) + "N" + z.substr(10) +
                           "\x08\x02" + z + std::string("\x0D\0", 2);
  EXPECT_EQ(host.files["C:\\OUT\\NEW.DBF"].bytes(), head + '\x1A');
  EXPECT_EQ(fields[0].name, "A          ");
  EXPECT_EQ(fields[1].offset, 11);
  table.BlankRecord();
  EXPECT_TRUE(table.Append());
  cache.Flush();
  EXPECT_EQ(host.files["C:\\OUT\\NEW.DBF"].bytes(),
            WithByte(head, 4, 1) + std::string(19, ' ') + '\x1A');

  host.clock.Set({1999, 12, 31});
  fields = {{"NOTE", 0, 10, 0, 'm'}, {"TEXT", 0, 300, 0, 'C'}};
  ASSERT_EQ(table.CreateTable(fields, "C:\\OUT\\NEW"), DbfStatus::kOk);
  EXPECT_EQ(host.files["C:\\OUT\\NEW.DBF"].bytes().substr(0, 4), "\xF5\x63\x0C\x1F");
  EXPECT_EQ(host.files["C:\\OUT\\NEW.DBF"].bytes().substr(64 + 16, 2), "\x2C\x01");
  EXPECT_EQ(fields[1].length, 300);
}

TEST(TFileDbfFile, RefusesFieldListsThatNoTableHoldsAndLeavesTheFile) {
  const std::string before = TableImage().Field("G32", 'N', 5).Row({"1"}).Bytes();
  OpenedTable world(before);
  const TDescrs lists[] = {{},
                           {{"WIDE", 0, 256, 0, 'N'}},
                           {{"DECIMALS", 0, 9, 1, 'C'}},
                           {{"LONG", 0, 65000, 0, 'C'}, {"RECORD", 0, 600, 0, 'C'}},
                           TDescrs(2047, {"MANY", 0, 1, 0, 'C'})};
  for (TDescrs fields : lists) {
    EXPECT_NE(world.table.CreateTable(fields, world.path), DbfStatus::kOk);
    EXPECT_EQ(world.host.files[world.path], before);
  }
}

TEST(TFileDbfFile, RefusesWhatIsNotATable) {
  const std::string table =
      TableImage().Field("G32", 'N', 5).Field("NAME", 'C', 7).Row({"1"}).Bytes();
  const std::string zeros(65535, '\0');
  const std::tuple<const char*, std::string, const char*> cases[] = {
      {"no room for a header", zeros.substr(0, 64), ""},
      {"zeros", zeros.substr(0, 65), "2"},
      {"last row cut short", table.substr(0, table.size() - 2), "2"},
      {"four bytes behind the rows", table + "...", "2"},
      {"rows in the header",
       WithNumber(WithNumber(WithNumber(table, 4, 4, 80), 8, 2, 31), 10, 2, 1), "2"},
      {"header beyond the file", WithNumber(table, 8, 2, 0xFFFF), "2"},
      {"a count that overflows", WithNumber(table, 4, 4, 0xFFFFFFFF), "2"},
      {"record length 0", WithNumber(table, 10, 2, 0).substr(0, 98), "3"},
      {"a field wider than its record", WithByte(table, 32 + 16, 6), "3"},
      {"lengths beyond 16 bits", TableImage().Field("A", 'C', 65000).Field("B", 'C', 800).Bytes(),
       "3"},
      {"2046 descriptors", WithNumber(WithNumber(zeros, 8, 2, 65535), 10, 2, 9), "3"},
      {"no room for the extended tail", WithByte(table, 0, 0x30), "3"}};
  for (const auto& [what, bytes, number] : cases) {
    SCOPED_TRACE(what);
    FakeHost host;
    host.files["C:\\OUT\\DBRHEAD.DBF"] = bytes;
    TDbfCache cache(host);
    TFileDbfFile file(cache);
    const auto open = [&] { file.Open("c:\\out\\dbrhead", kShared, OnError::kThrow); };
    EXPECT_EQ(ErrorOf(open), std::string("DBF not DBF") + number + ": C:\\OUT\\DBRHEAD.DBF");
    EXPECT_EQ(file.Open("c:\\out\\dbrhead", kShared, OnError::kReturn), DbfStatus::kNotATable);
    EXPECT_FALSE(file.is_open());
  }
}

TEST(TFileDbfFile, AcceptsUpToThreeBytesBehindTheRows) {
  const std::string table = TableImage().Field("G32", 'N', 5).Row({"1"}).Bytes();
  for (const std::string& bytes : {table.substr(0, table.size() - 1), table + ".."}) {
    OpenedTable world(bytes);
    world.table.SetFieldByName("G32", "2");
    world.table.Append();
    EXPECT_EQ(TableDump(world.Flushed()), "G32 N5\n1: G32=\"    1\"\n2: G32=\"    2\"\n");
  }
}

TEST(TFileDbfFile, SaysWhyAFileCannotBeOpened) {
  OpenedTable world(TableImage().Field("G32", 'N', 5).Bytes());
  const auto open = [&](const char* name) {
    return Utf8(ErrorOf([&] { world.table.Open(Win(name), kShared, OnError::kThrow); }));
  };
  EXPECT_EQ(open("C:/Out/Тара.dbf"), "dBaseInt: Не найден файл C:\\OUT\\ТАРА.DBF");
  EXPECT_EQ(world.table.Open("C:\\A", kShared, OnError::kReturn), DbfStatus::kNoFile);
  world.cache.DropCachedFile(world.path);
  world.host.files.FailPath(world.path, FileOp::kOpen, FileError::Kind::kOpen);
  EXPECT_EQ(world.table.Open(world.path, kShared, OnError::kReturn), DbfStatus::kNoFile);
  EXPECT_THROW(world.table.Open(world.path, kShared, OnError::kThrow), FileError);
}

TEST(TFileDbfFile, ReadsTheExtendedLayout) {
  TableImage image = TableImage().Extended().Field("NAME", 'C', 5).Field("NOTE", 'M', 4);
  OpenedTable world(image.Row({"Лён", "\x02\x01"}).Bytes());
  ASSERT_EQ(world.table.GoTo(1), DbfStatus::kOk);
  EXPECT_EQ(Utf8(world.table.GetFieldByName("name")), "Лён");
  EXPECT_EQ(world.table.GetFieldByName("NOTE"), "538968322");  // 02 01 20 20
  EXPECT_EQ(world.table.GetLongFieldByName("NOTE"), "538968322");
}

TEST(TFileDbfFile, FindsFieldsByName) {
  std::string bytes =
      TableImage().Field("Goods", 'C', 5).Field("имя", 'C', 5).Field("goods", 'N', 3).Bytes();
  OpenedTable world(bytes.replace(32 + 6, 3, "xyz"));  // behind the first name's end
  EXPECT_EQ(world.table.FieldAt(0).name, "GOODS      ");
  EXPECT_EQ(world.table.FieldIndex("  GoodS "), 2) << "the last of equal names wins";
  EXPECT_EQ(world.table.FieldIndex(Win("Имя")), 1);
  EXPECT_EQ(world.table.FieldIndex("GOODSGOODSGO"), -1);
  EXPECT_EQ(world.table.FieldWidth("goods"), 3);
  EXPECT_EQ(world.table.FieldType("none"), ' ');
}

TEST(TFileDbfFile, MovesBetweenRecords) {
  OpenedTable world(TableImage().Field("A", 'C', 3).Row({"one"}).DeletedRow({"two"}).Bytes());
  TFileDbfFile& table = world.table;
  EXPECT_EQ(table.current_record(), -1);
  EXPECT_EQ(table.Post(), DbfStatus::kRefused);
  const std::tuple<std::int64_t, DbfStatus, std::string> steps[] = {{-1, DbfStatus::kRefused, ""},
                                                                    {2, DbfStatus::kOk, "two"},
                                                                    {3, DbfStatus::kRefused, "two"},
                                                                    {0, DbfStatus::kRefused, "two"},
                                                                    {1, DbfStatus::kOk, "one"}};
  for (const auto& [record, status, value] : steps) {
    EXPECT_EQ(table.GoTo(record), status) << record;
    EXPECT_EQ(table.at_beginning(), record < 1);
    EXPECT_EQ(table.past_end(), record > 2);
    EXPECT_EQ(table.GetField(0), value);
    EXPECT_EQ(table.IsDeleted(), value == "two");
  }
  table.SetField(0, "new", false);
  EXPECT_EQ(table.GoTo(1), DbfStatus::kOk);
  EXPECT_EQ(table.GetField(0), "new") << "the current record is not read again";
  table.Close();
  EXPECT_EQ(table.GoTo(1), DbfStatus::kRefused);
  EXPECT_FALSE(table.Append());
}

TEST(TFileDbfFile, ChangesRowsAndNothingElse) {
  TableImage image = TableImage().Field("A", 'C', 3).Row({"one"}).DeletedRow({"two"});
  OpenedTable world(TableImage(image).Row({"tri"}).Row({"for"}).Bytes());
  world.host.clock.Set({2030, 1, 1});
  world.table.GoTo(2);
  world.table.SetField(0, "dos", false);
  world.table.Post();
  EXPECT_EQ(world.table.DeleteRecord(5), DbfStatus::kRefused);
  EXPECT_EQ(world.table.DeleteRecord(1), DbfStatus::kOk);
  EXPECT_EQ(world.table.current_record(), 0);
  world.table.BlankRecord();
  EXPECT_TRUE(world.table.Append());
  EXPECT_EQ(world.table.current_record(), 4);
  EXPECT_EQ(world.table.DeleteRecord(3), DbfStatus::kOk);
  EXPECT_EQ(world.Flushed(),
            TableImage().Field("A", 'C', 3).DeletedRow({"dos"}).Row({"tri"}).Row({}).Bytes());
}

TEST(TFileDbfFile, TwoObjectsOverOneTableShareItsRows) {
  OpenedTable world(TableImage().Field("A", 'C', 3).Row({"one"}).Bytes());
  TFileDbfFile other(world.cache);
  other.Open("c:/out/t.dbf", kShared, OnError::kThrow);
  other.GoTo(1);
  world.table.GoTo(1);
  world.table.SetField(0, "new", false);
  world.table.Post();
  other.GoTo(1);
  EXPECT_EQ(other.GetField(0), "one");
  world.table.Append();
  other.Append();
  EXPECT_EQ(TableDump(world.Flushed()), "A C3\n1: A=\"new\"\n2: A=\"new\"\n3: A=\"one\"\n");
  world.table.GoTo(3);
  other.DeleteRecord(3);
  EXPECT_EQ(world.table.Post(), DbfStatus::kRefused) << "its record is gone";
}

constexpr int kManyRows = 40'000;
const std::string& LargeTable() {
  static const std::string kTable = [] {
    TableImage image = TableImage().Field("NUM", 'N', 6).Field("TEXT", 'C', 250);
    for (int i = 1; i <= kManyRows; ++i) image.Row({std::to_string(i)});
    return image.Bytes();
  }();
  return kTable;
}

TEST(TFileDbfFile, ReadsLargeTablesFromTheirFilesUntilTheFirstChange) {
  const std::string& before = LargeTable();
  OpenedTable world(before);
  TFileDbfFile other(world.cache);
  other.Open(world.path, kShared, OnError::kThrow);
  other.GoTo(kManyRows);
  EXPECT_EQ(world.host.files.open_streams(), 2u);
  EXPECT_EQ(world.host.files[world.path], before);
  other.SetFieldByName("NUM", "40001");
  EXPECT_TRUE(other.Append());
  EXPECT_EQ(world.host.files.open_streams(), 1u) << "all share the image";
  EXPECT_EQ(world.table.RecordCount(), kManyRows + 1);
  world.table.GoTo(kManyRows);
  world.table.SetFieldByName("TEXT", "posted");
  world.table.Post();
  world.table.SetFieldByName("NUM", "40002");
  EXPECT_TRUE(world.table.Append());
  EXPECT_EQ(world.table.DeleteRecord(2), DbfStatus::kOk);
  EXPECT_EQ(world.host.files[world.path], before);
  world.Flushed();
  world.cache.DropCachedFile(world.path);
  ASSERT_EQ(other.Open(world.path, kShared, OnError::kReturn), DbfStatus::kOk);
  EXPECT_EQ(other.RecordCount(), kManyRows + 1);
  for (int record : {1, 2, 300, kManyRows - 1, kManyRows, kManyRows + 1}) {
    other.GoTo(record);
    EXPECT_EQ(other.GetFieldByName("NUM"), std::to_string(record + (record > 1 ? 1 : 0)));
  }
}

TEST(TFileDbfFile, ChangesNoLargeTableThatItCannotLoad) {
  OpenedTable world(LargeTable());
  world.table.GoTo(1);
  world.host.files.FailPath(world.path, FileOp::kStreamRead, FileError::Kind::kRead);
  EXPECT_THROW(world.table.Post(), FileError);
  world.host.files.StopFailing();
  EXPECT_EQ(world.table.GoTo(2), DbfStatus::kOk);
  EXPECT_FALSE(world.table.Refresh()) << "nothing changed";
  world.host.files[world.path] = LargeTable();
  EXPECT_EQ(world.table.Post(), DbfStatus::kRefused) << "the file is another one";
  EXPECT_FALSE(world.table.Append());
  EXPECT_EQ(world.table.DeleteRecord(1), DbfStatus::kRefused);
  EXPECT_TRUE(world.table.Refresh());
  EXPECT_TRUE(world.table.Append());
}

}  // namespace
}  // namespace customsconv
