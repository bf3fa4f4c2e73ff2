#include "dbf/dbf_file.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "base/characters.h"
#include "support/opened_table.h"
#include "support/temp_folder.h"
#include "support/text.h"

namespace customsconv {
namespace {

using std::string_literals::operator""s;
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
  const std::string head = "\x03\x1A\x03\x11\0\0\0\0\x62\0\x13\0\0\0\0"s + z + "\x26\0\0"s + "a" +
                           z.substr(4) + "C" + z.substr(10) + "\x0A\0"s + z + "B" + z.substr(4) +
                           "N" + z.substr(10) + "\x08\x02" + z + "\x0D\0"s;
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
  const std::string before = TableImage("G32 N5").Row({"1"}).Bytes();
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
  const std::string table = TableImage("G32 N5, NAME C7").Row({"1"}).Bytes();
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
      {"lengths beyond 16 bits", TableImage("A C65000, B C800").Bytes(), "3"},
      {"2046 descriptors", WithNumber(WithNumber(zeros, 8, 2, 65535), 10, 2, 9), "3"},
      {"no room for the extended tail", WithByte(table, 0, 0x30), "3"}};
  OpenedTable world(table);
  for (const auto& [what, bytes, number] : cases) {
    SCOPED_TRACE(what);
    world.host.files["C:\\OUT\\DBRHEAD.DBF"] = bytes;
    const auto open = [&](OnError form) {
      return world.table.Open("c:/out/dbrhead", kShared, form);
    };
    EXPECT_EQ(ErrorOf([&] { open(OnError::kThrow); }),
              std::string("DBF not DBF") + number + ": C:\\OUT\\DBRHEAD.DBF");
    EXPECT_EQ(open(OnError::kReturn), DbfStatus::kNotATable);
    EXPECT_FALSE(world.table.is_open());
  }
}

TEST(TFileDbfFile, AcceptsUpToThreeBytesBehindTheRows) {
  const std::string table = TableImage("G32 N5").Row({"1"}).Bytes();
  for (const std::string& bytes : {table.substr(0, table.size() - 1), table + ".."}) {
    OpenedTable world(bytes);
    world.table.SetFieldByName("G32", "2");
    world.table.Append();
    EXPECT_EQ(TableDump(world.Flushed()), "G32 N5\n1: G32=\"    1\"\n2: G32=\"    2\"\n");
  }
}

TEST(TFileDbfFile, SaysWhyAFileCannotBeOpened) {
  OpenedTable world(TableImage("G32 N5").Bytes());
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
  OpenedTable world(TableImage("NAME C5, NOTE M4").Extended().Row({"Лён", "\x02\x01"}).Bytes());
  ASSERT_EQ(world.table.GoTo(1), DbfStatus::kOk);
  EXPECT_EQ(Utf8(world.table.GetFieldByName("name")), "Лён");
  EXPECT_EQ(world.table.GetFieldByName("NOTE"), "538968322");  // 02 01 20 20
  EXPECT_EQ(world.table.GetLongFieldByName("NOTE"), "538968322");
}

TEST(TFileDbfFile, FindsFieldsByName) {
  std::string bytes = TableImage("Goods C5, имя C5, goods N3").Bytes();
  OpenedTable world(bytes.replace(32 + 6, 3, "xyz"));  // behind the first name's end
  EXPECT_EQ(world.table.FieldAt(0).name, "GOODS      ");
  EXPECT_EQ(world.table.FieldIndex("  GoodS "), 2) << "the last of equal names wins";
  EXPECT_EQ(world.table.FieldIndex(Win("Имя")), 1);
  EXPECT_EQ(world.table.FieldIndex("GOODSGOODSGO"), -1);
  EXPECT_EQ(world.table.FieldWidth("goods"), 3);
  EXPECT_EQ(world.table.FieldType("none"), ' ');
}

TEST(TFileDbfFile, MovesBetweenRecords) {
  OpenedTable world(TableImage("A C3").Row({"one"}).DeletedRow({"two"}).Bytes());
  TFileDbfFile& table = world.table;
  EXPECT_EQ(table.current_record(), -1);
  EXPECT_EQ(table.Post(), DbfStatus::kRefused);
  const std::pair<std::int64_t, std::string> steps[] = {
      {-1, ""}, {2, "two"}, {3, "two"}, {0, "two"}, {1, "one"}};
  for (const auto& [record, value] : steps) {
    const bool there = record == 1 || record == 2;
    EXPECT_EQ(table.GoTo(record), there ? DbfStatus::kOk : DbfStatus::kRefused) << record;
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
  const TableImage image("A C3");
  OpenedTable world(
      TableImage(image).Row({"one"}).DeletedRow({"two"}).Row({"tri"}).Row({"for"}).Bytes());
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
  EXPECT_EQ(world.Flushed(), TableImage(image).DeletedRow({"dos"}).Row({"tri"}).Row({}).Bytes());
}

TEST(TFileDbfFile, TwoObjectsOverOneTableShareItsRows) {
  OpenedTable world(TableImage("A C3").Row({"one"}).Bytes());
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
std::string LargeTable() {
  TableImage image("NUM N6, TEXT C250");
  for (int i = 1; i <= kManyRows; ++i) image.Row({std::to_string(i)});
  return image.Bytes();
}

TEST(TFileDbfFile, ReadsLargeTablesFromTheirFilesUntilTheFirstChange) {
  const std::string before = LargeTable();
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

// A table with a blank row, which is current.
struct BlankRow : OpenedTable {
  explicit BlankRow(const std::string& fields) : OpenedTable(TableImage(fields).Row({}).Bytes()) {
    table.GoTo(1);
    host.clock.Set({2026, 5, 1});
  }
  // The bytes of its fields on disk.
  std::string Stored() {
    table.Post();
    const std::string rows = Flushed().substr(32 * (table.fields().size() + 1) + 2);
    return rows.substr(1, rows.size() - 2);
  }
};

// Read back they have no blanks around them, and dates have their day in front.
TEST(DbfValues, AreFormattedByTheTypeOfTheField) {
  const std::pair<std::string, std::vector<std::pair<std::string, std::string>>> types[] = {
      {"C8", Cases({" ab \r\n ->  ab"})},
      {"C3", Cases({"abcde -> abc"})},
      {"C5", Cases({"Ёж №1 -> \xF0\xA6 \xFC\x31"})},
      {"L1", Cases({"1 -> T", " 0  -> F", "t -> T", "да -> "})},
      {"M6", Cases({"12  ->     12"})},
      {"D8", Cases({"170326 -> 20260317", "17032026 -> 20260317", "17035 -> 19950317",
                    "17034 -> 20040317", "17-03-2026 12:30 -> 20260317", "31.02.2026 -> ",
                    "\r\n 170326\r\n -> 20260317", "\r\n\t17.03.2026\r\n12:30 -> 20260317",
                    "1703202 -> "})},
      {"N8.2", Cases({"3,5 -> 0", "3.456 ->     3.46", "-0.005 ->    -0.01", "-0.00 ->     0.00",
                      "\r\n\t7\r\n ->     7.00", "1e3 ->  1000.00", "007.5 ->     7.50", " -> "})},
      {"N5", Cases({"12.5 ->    13", "1234567 -> 12345"})},
      {"N5.2", Cases({"1234.56 -> 1234."})},
      {"N8.3", Cases({"1.23456 ->    1.234", "123456.789 -> 3456.789", "-5 ->   -5.000",
                      "1234567890.1235 -> 7890.124"})},
      {"F5.1", Cases({"1.25 -> 1.25"})}};
  for (const auto& [field, values] : types) {
    for (const auto& [value, stored] : values) {
      SCOPED_TRACE(field + " " + value);
      BlankRow world("A " + field + ", PAD C4");
      world.table.SetFieldByName("A", Win(value));
      std::string shown(Trim(stored));
      if (field == "D8" && !shown.empty()) shown = "17.03." + shown.substr(2, 2);
      EXPECT_EQ(DosFromWin(world.table.GetFieldByName("A")), shown);
      std::string padded = stored;
      padded.resize(world.Stored().size(), ' ');
      EXPECT_EQ(world.Stored(), padded);
    }
  }
}

TEST(DbfValues, KeepWhatIsWrittenRaw) {
  BlankRow world("A N6.2, D D8");
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
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"C4", "abc", "abc" + blank + "222 333 555 "},
      {"C4", full + "bb", full + "bb  333 555 "},
      {"C4", full + "bbbbccccdddd", full + "bbbbcccc555 "},  // what has no field is lost
      {"N4", full + "bbbbcccc", full + "bbbb333 555 "},      // another type ends it
      {"C4", full + "  ", full + "222 333 555 "},
      {"C4", "||" + full + "  ", full + "    333 555 "}};  // raw
  for (const auto& [third, value, stored] : cases) {
    const bool raw = value.front() == '|';
    BlankRow world(std::string("G31 C255, G312 C4, G313 ") + third + ", G315 C4");
    for (const char* name : {"||G312", "||G313", "||G315"}) {
      world.table.SetFieldByName(name, std::string(3, name[5]));
    }
    world.table.SetLongFieldByName(raw ? "||G31" : "G31", raw ? value.substr(2) : value);
    EXPECT_EQ(world.Stored(), stored);
    // Up to the first missing number, without the blanks at the end.
    EXPECT_EQ(world.table.GetLongFieldByName("G31"), TrimRight(stored.substr(0, 255 + 4 + 4)));
  }
}

TEST(DbfLongValues, OfOtherFieldsAreOrdinaryOnes) {
  BlankRow world("A C250, A2 C10, N N5, LONG C300");
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
  TableImage image("FLDNAME C12");
  for (const char* value : {"g07esad", "", " ESAD ", "xЭсАдx"}) image.Row({value});
  OpenedTable world(image.DeletedRow({"esad2"}).Row({}).Bytes());
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

// Standard output of a command; empty when it failed.
std::string OutputOf(const std::string& command) {
  std::FILE* const pipe = popen(command.c_str(), "r");
  std::string output;
  for (int c = 0; pipe != nullptr && (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
  return pipe != nullptr && pclose(pipe) == 0 ? output : "";
}

// The package dbfread, which others wrote, reads our tables as we do.
TEST(DbfInterop, ReadsAlikeInDbfread) {
  const std::string python = "PYTHONIOENCODING=utf-8 /usr/bin/python3 ";
  if (OutputOf(python + "-c 'import dbfread' 2>&1 && echo there") != "there\n") {
    GTEST_SKIP() << "python3-dbfread is not installed";
  }
  OpenedTable world(
      TableImage("G011 C10, NUM N5, PRICE N15.2, WEIGHT N10.3, DAY D8, FLAG L1, G31 C400").Bytes());
  const std::string description = "Сахар " + std::string(340, 'x') + " тростниковый";
  const std::vector<std::string> rows[] = {
      {"ИМ", "1", "1234567.89", "12.3456", "17.03.2026", "1", description},
      {"gone", "2", "3", "4", "", "1", "gone"},
      {"Ёлка№2", "-7", "0", "", "", "0", ""}};
  for (const std::vector<std::string>& row : rows) {
    world.table.BlankRecord();
    int field = 0;
    for (const std::string& value : row) world.table.SetLongField(field++, Win(value), false);
    world.table.Append();
  }
  world.table.DeleteRecord(2);
  const TempFolder folder;
  folder.Write("T.DBF", world.Flushed());
  folder.Write("read.py", R"(
import sys, dbfread
table = dbfread.DBF(sys.argv[1], char_decode_errors="strict")
print(table.encoding, *[list(record.values()) for record in table], sep="\n")
)");
  EXPECT_EQ(OutputOf(python + folder / "read.py" + " " + folder / "T.DBF"),
            "cp866\n['ИМ', 1, 1234567.89, 12.345, datetime.date(2026, 3, 17), True, '" +
                description + "']\n['Ёлка№2', -7, 0.0, None, None, False, '']\n");
}

}  // namespace
}  // namespace customsconv
