#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/dos_code_page.h"
#include "dbf/dbf_file.h"
#include "support/fake_host.h"
#include "support/temp_folder.h"
#include "support/text.h"

// Programs that others wrote read our tables as we do.
namespace customsconv {
namespace {

// Standard output of a command; empty when it failed.
std::string OutputOf(const std::string& command) {
  std::FILE* const pipe = popen(command.c_str(), "r");
  std::string output;
  for (int c = 0; pipe != nullptr && (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
  return pipe != nullptr && pclose(pipe) == 0 ? output : "";
}

// "record.FIELD=value", in UTF-8.
std::string Expected(const std::string& description) {
  return "1.G011=ИМ\n1.NUM=1\n1.PRICE=1234567.89\n1.WEIGHT=12.345\n1.DAY=20260317\n1.FLAG=T\n"
         "1.G31=" +
         description +
         "\n2.G011=Ёлка№2\n2.NUM=-7\n2.PRICE=0.00\n2.WEIGHT=\n2.DAY=\n2.FLAG=F\n2.G31=\n";
}

class DbfInterop : public ::testing::Test {
 protected:
  DbfInterop() { host.files.AddFolder("C:\\OUT"); }

  void WriteTable(std::uint16_t width, const std::string& description) {
    TDbfCache cache(host);
    TFileDbfFile table(cache);
    TDescrs fields = {{"G011", 0, 10, 0, 'C'},   {"NUM", 0, 5, 0, 'N'}, {"PRICE", 0, 15, 2, 'N'},
                      {"WEIGHT", 0, 10, 3, 'N'}, {"DAY", 0, 8, 0, 'D'}, {"FLAG", 0, 1, 0, 'L'},
                      {"G31", 0, width, 0, 'C'}};
    table.CreateTable(fields, "C:\\OUT\\T");
    const auto append = [&](std::initializer_list<std::string> values) {
      table.BlankRecord();
      int field = 0;
      for (const std::string& value : values) table.SetLongField(field++, Win(value), false);
      table.Append();
    };
    append({"ИМ", "1", "1234567.89", "12.3456", "17.03.2026", "1", description});
    append({"gone", "2", "3", "4", "", "1", "gone"});
    append({"Ёлка№2", "-7", "0", "", "", "0", ""});
    table.DeleteRecord(2);
    cache.Flush();
    std::ofstream(path, std::ios::binary) << host.files["C:\\OUT\\T.DBF"].bytes();
  }

  FakeHost host;
  TempFolder folder;
  const std::filesystem::path path = folder.path() / "T.DBF";
};

TEST_F(DbfInterop, ReadsAlikeInDbfread) {
  if (OutputOf("/usr/bin/python3 -c 'import dbfread; print(1)' 2>&1") != "1\n") {
    GTEST_SKIP() << "python3-dbfread is not installed";
  }
  const std::string description = "Сахар " + std::string(340, 'x') + " тростниковый";
  WriteTable(400, description);
  const std::string script = R"(
import sys, dbfread
table = dbfread.DBF(sys.argv[1], char_decode_errors="strict")
assert table.encoding == "cp866", table.encoding
assert [r["DAY"] and r["DAY"].isoformat() for r in table] == ["2026-03-17", None]
assert [(r["FLAG"], r["NUM"], r["WEIGHT"]) for r in table] == [(True, 1, 12.345), (False, -7, None)]
for number, record in enumerate(dbfread.DBF(sys.argv[1], raw=True), 1):
    for name, value in record.items():
        text = "%d.%s=%s\n" % (number, name, value.decode("cp866").strip())
        sys.stdout.buffer.write(text.encode("utf-8"))
)";
  std::ofstream(path.string() + ".py") << script;
  const std::string command = "/usr/bin/python3 " + path.string() + ".py " + path.string();
  EXPECT_EQ(OutputOf(command), Expected(description));
}

TEST_F(DbfInterop, ReadsAlikeInShapelib) {
  if (OutputOf("command -v dbfdump").empty()) GTEST_SKIP() << "dbfdump (shapelib) is missing";
  // That program knows no texts longer than 255.
  WriteTable(250, "Сахар тростниковый");
  const std::string text = Utf8(WinFromDos(OutputOf("dbfdump -m -r " + path.string())));
  std::string cells;
  int record = 0;
  std::stringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t colon = line.find(": ");
    if (colon == std::string::npos || line.starts_with("Record")) continue;
    const std::string name = line.substr(0, colon);
    if (name == "G011") ++record;
    std::string value = line.substr(colon + 2);
    value.erase(value.find_last_not_of(' ') + 1);
    cells += std::to_string(record) + "." + name + "=" + value + "\n";
  }
  EXPECT_EQ(cells, Expected("Сахар тростниковый")) << text;
}

}  // namespace
}  // namespace customsconv
