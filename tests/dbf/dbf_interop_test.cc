#include <gtest/gtest.h>

#include <cstdio>

#include "dbf/dbf_file.h"
#include "support/fake_host.h"
#include "support/temp_folder.h"
#include "support/text.h"

namespace customsconv {
namespace {

// Standard output of a command; empty when it failed.
std::string OutputOf(const std::string& command) {
  std::FILE* const pipe = popen(command.c_str(), "r");
  std::string output;
  for (int c = 0; pipe != nullptr && (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
  return pipe != nullptr && pclose(pipe) == 0 ? output : "";
}

// The package dbfread, which others wrote, reads our tables as we do.
TEST(DbfInterop, ReadsAlikeInDbfread) {
  if (OutputOf("/usr/bin/python3 -c 'import dbfread; print(1)' 2>&1") != "1\n") {
    GTEST_SKIP() << "python3-dbfread is not installed";
  }
  FakeHost host;
  host.files.AddFolder("C:\\OUT");
  TDbfCache cache(host);
  TFileDbfFile table(cache);
  TDescrs fields = {{"G011", 0, 10, 0, 'C'},   {"NUM", 0, 5, 0, 'N'}, {"PRICE", 0, 15, 2, 'N'},
                    {"WEIGHT", 0, 10, 3, 'N'}, {"DAY", 0, 8, 0, 'D'}, {"FLAG", 0, 1, 0, 'L'},
                    {"G31", 0, 400, 0, 'C'}};
  table.CreateTable(fields, "C:\\OUT\\T");
  const std::string description = "Сахар " + std::string(340, 'x') + " тростниковый";
  const std::vector<std::string> rows[] = {
      {"ИМ", "1", "1234567.89", "12.3456", "17.03.2026", "1", description},
      {"gone", "2", "3", "4", "", "1", "gone"},
      {"Ёлка№2", "-7", "0", "", "", "0", ""}};
  for (const std::vector<std::string>& row : rows) {
    table.BlankRecord();
    int field = 0;
    for (const std::string& value : row) table.SetLongField(field++, Win(value), false);
    table.Append();
  }
  table.DeleteRecord(2);
  cache.Flush();
  const TempFolder folder;
  folder.Write("T.DBF", host.files["C:\\OUT\\T.DBF"].bytes());
  folder.Write("read.py", R"(
import sys, dbfread
table = dbfread.DBF(sys.argv[1], char_decode_errors="strict")
assert table.encoding == "cp866", table.encoding
assert [r["DAY"] and r["DAY"].isoformat() for r in table] == ["2026-03-17", None]
assert [(r["FLAG"], r["NUM"], r["WEIGHT"]) for r in table] == [(True, 1, 12.345), (False, -7, None)]
for number, record in enumerate(dbfread.DBF(sys.argv[1], raw=True), 1):
    for name, value in record.items():
        text = "%d.%s=%s\n" % (number, name, value.decode("cp866").strip())
        sys.stdout.buffer.write(text.encode("utf-8"))
)");
  EXPECT_EQ(OutputOf("/usr/bin/python3 " + folder / "read.py" + " " + folder / "T.DBF"),
            "1.G011=ИМ\n1.NUM=1\n1.PRICE=1234567.89\n1.WEIGHT=12.345\n1.DAY=20260317\n1.FLAG=T\n"
            "1.G31=" +
                description +
                "\n2.G011=Ёлка№2\n2.NUM=-7\n2.PRICE=0.00\n2.WEIGHT=\n2.DAY=\n2.FLAG=F\n2.G31=\n");
}

}  // namespace
}  // namespace customsconv
