#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <set>

#include "cli_world.h"
#include "support/catalogue_builder.h"

namespace customsconv::cli {
namespace {

class ConvertTest : public CliWorld, public testing::Test {};

TEST_F(ConvertTest, PrintsOneLineAFileWithWhyDocumentsAreSkipped) {
  std::string xml, types = "[TS.HEADER]\nDbfName=SBRHEAD.DBF\n[TS.Files]\nHEAD = SBRHEAD.DBF\n";
  for (const std::string kind : {"ESADout", "DTSout", "KTDout", "KTSout", "Inventory", "Letter"}) {
    const std::string root = "<" + kind + " a=\"1\">";
    if (kind != "ESADout") types += TypeText(kind, "XmlType=x\nPrefix=" + root, "A=C1 |");
    const std::string document = "<DocBody>" + root + "</" + kind + "></DocBody>\n";
    xml += kind == "DTSout" || kind == "ESADout" ? document + document : document;
  }
  host.files["C:\\PROG\\Data\\more.dcf"] = WinLines(types);
  host.files["C:\\OUT\\SBRHEAD.DBF"] = TableImage("G073 C7").Bytes();
  host.files["C:\\RULES\\armti.txt"] =
      host.files["C:\\RULES\\armti.txt"].bytes() + "[SBRHEAD]\r\n=DTSout\r\n[NOSET]\r\n=KTSout\r\n";
  host.files["C:\\IN\\two.xml"] = xml;
  EXPECT_EQ(Convert("C:\\IN\\two.xml"), kDone);
  EXPECT_EQ(output.results,
            "C:\\IN\\two.xml: 00000000/150324/0000002; converted: ESADout 1 DTSout 1; "
            "skipped: ESADout 2 (a file's first declaration is converted only); "
            "skipped: DTSout 2 (the section's table takes the first document of a kind only); "
            "skipped: KTDout 1 (a file's first declaration is converted only); "
            "skipped: KTSout 1 (the catalogue has no table set with the section's table); "
            "skipped: Inventory 1 (no section of the rules names this kind); "
            "skipped: Letter 1 (documents of this kind are not converted); "
            "rows: DBRHEAD.DBF +1 SBRHEAD.DBF +1\n"
            "C:\\IN\\10702020_110615_0001234.xml: 10702020/110615/0001234; converted: ESADout 1; "
            "rows: DBRHEAD.DBF +1 DBRTOV.DBF +1; cut: 1; no column: 1\n");
  EXPECT_EQ(output.remarks, "");
}

TEST_F(ConvertTest, JsonHoldsFilesResultAndMessages) {
  Xml("10702020_110615_0001234", "<Old>x</Old>");
  EXPECT_EQ(Convert("--json"), kDone);
  EXPECT_EQ(output.results,
            R"({"files":[{"file":"C:\\IN\\10702020_110615_0001234.xml",)"
            R"("number":"10702020/110615/0001234","number_drawn":false,"converted":[{"kind":)"
            R"("ESADout","occurrence":1,"section_line":1,"table":"DBRHEAD.DBF"}],"skipped":[],)"
            R"("rows_added":{"DBRHEAD.DBF":1},"losses":{"cut":0,"number_cut":0,"rounded":0,)"
            R"("no_number":0,"no_date":0,"no_column":0,"replaced":0,"look_alike":0,"not_known":1,)"
            R"("repeated":0,"not_applied":0},"problems":[],"returned":true}],"result":true,"messages":[{"kind":"message",)"
            R"("text":"В документе 10702020_110615_0001234.xml были найдены неверные )"
            R"(идентифиаторы (устаревший формат?).\n\rВозможно при конвертации XML файла часть )"
            R"(информации была потеряна"}]})"
            "\n");
  EXPECT_EQ(output.remarks, "");
  // Without --json messages are single lines on the other stream.
  EXPECT_EQ(Convert(), kDone);
  EXPECT_EQ(output.remarks.rfind("message: В документе 10702020_110615_0001234.xml были", 0), 0U);
  EXPECT_EQ(output.remarks.find('\n'), output.remarks.size() - 1) << output.remarks;
}

TEST_F(ConvertTest, StatusesAreThoseOfTheFunction) {
  EXPECT_EQ(Convert("C:\\IN\\missing.xml"), kNegative) << "the other file is converted";
  EXPECT_TRUE(Printed("missing.xml: -; converted: nothing; rows: none; failed: "));
  EXPECT_TRUE(Printed("DBRTOV.DBF +1"));

  EXPECT_EQ(RunProgram(R"(convert --program C:\PROG --rules C:\RULES\armti.txt
                          --output C:\NOWHERE x.xml)"),
            kUsage);
  EXPECT_EQ(output.remarks, "error: no such folder: C:\\NOWHERE\n");
}

// A save that can't write all its tables writes none, and nothing of it comes back later.
TEST_F(ConvertTest, AFileIsInAllItsTablesOrInNone) {
  Xml("10702020_110615_0000002", "<Proc>ИМ</Proc>");
  const std::string head = Table("DBRHEAD.DBF"), goods = Table("DBRTOV.DBF");
  host.files.FailPath("C:\\OUT\\DBRTOV.DBF", FileOp::kReserve, FileError::Kind::kWrite);
  EXPECT_EQ(Convert("C:\\IN\\10702020_110615_0000002.xml"), kNegative);
  EXPECT_TRUE(Printed("10702020/110615/0000002; converted: ESADout 1; rows: DBRHEAD.DBF +1\n"))
      << "has no goods";
  EXPECT_TRUE(Printed("10702020/110615/0001234; converted: nothing; rows: none; failed: Не могу "
                      "записать файл C:\\OUT\\DBRTOV.DBF: made to fail\n"));
  EXPECT_EQ(TableDump(host.files["C:\\OUT\\DBRHEAD.DBF"].bytes()).find("\n2:"), std::string::npos);
  EXPECT_EQ(Table("DBRTOV.DBF"), goods);
  EXPECT_FALSE(host.files.Has(kLock));
  EXPECT_FALSE(host.files.HasSpareRoom("C:\\OUT\\DBRHEAD.DBF"));
  host.files.StopFailing();
  for (const FileMode share : {kShareDenyWrite, kShareDenyNone}) {  // by another program
    const auto opened = host.files.Open("C:\\OUT\\DBRTOV.DBF", kModeRead | share);
    EXPECT_EQ(Convert(), share == kShareDenyNone ? kDone : kNegative);
    EXPECT_EQ(Table("DBRTOV.DBF") != goods, share == kShareDenyNone);
  }
  host.files.ResetCounts();
  EXPECT_EQ(Convert("--json"), kDone);
  const int changes = host.files.changes();
  for (int change = 1; change <= changes; ++change) {
    const std::string before = Table("DBRHEAD.DBF") + Table("DBRTOV.DBF");
    host.files.FailChange(change);
    const ExitStatus status = Convert("--json");
    const bool in = Table("DBRHEAD.DBF") + Table("DBRTOV.DBF") != before;
    EXPECT_EQ(in, status == kDone) << change;
    EXPECT_EQ(Printed(R"("rows_added":{"DBRHEAD.DBF":1,"DBRTOV.DBF":1})"), in) << change;
    EXPECT_TRUE(in || !host.files.HasSpareRoom("C:\\OUT\\DBRHEAD.DBF")) << change;
  }
}

// Lines are promises: they come behind the rows, in one piece with them.
TEST_F(ConvertTest, FilesShareATransactionAndTheirLinesComeBehindIt) {
  std::string files;
  for (int i = 100; i < 170; ++i) {
    const std::string name = "10702020_110615_0000" + std::to_string(i);
    Xml(name, "<Proc>ИМ</Proc>");
    files += " C:\\IN\\" + name + ".xml";
  }
  for (int change = 1;; ++change) {
    host.files["C:\\OUT\\DBRHEAD.DBF"] = TableImage("G073 C7, G011 C4").Bytes();
    host.files.DieAtChange(change);
    bool died = false;
    try {
      Convert(files);
    } catch (const SuddenDeath&) {
      died = true;
    }
    const bool dead = host.files.dead();
    host.files.Revive();
    const auto lines = std::count(output.results.begin(), output.results.end(), '\n');
    RunProgram(R"(tables show C:\OUT\DBRHEAD.DBF)");
    const auto rows = std::count(output.results.begin(), output.results.end(), '\n') - 1;
    EXPECT_TRUE(rows == 0 || rows == 64 || rows == 71) << change << ": " << rows;
    // Who dies while a lock is let go does not notice.
    if (died || !dead) {
      EXPECT_GE(rows, lines) << change;
    }
    if (!dead) break;
  }
}

// Others look once a second whether they get in.
TEST_F(ConvertTest, LeavesTheFolderFreeForMoreThanASecondEveryTenSeconds) {
  std::string files;
  for (int i = 0; i < 300; ++i) files += std::string(" ") + kFile;
  host.clock.ticks_each_look = 10;
  std::uint64_t last = 1000;
  host.clock.on_sleep = [&](std::uint32_t) {
    EXPECT_FALSE(host.files.Has(kLock));
    EXPECT_LE(host.clock.Ticks() - std::exchange(last, host.clock.Ticks()), 11'500U);
  };
  EXPECT_EQ(Convert(files), kDone);
  const auto total = std::accumulate(host.clock.slept.begin(), host.clock.slept.end(), 0U);
  EXPECT_NEAR(total, static_cast<double>(last) / 10, 1500);
}

// Rows that wait for a transaction keep other stations out no longer than these would notice.
TEST_F(ConvertTest, WhatTakesTimeBeginsBehindTheRowsOfTheFilesBefore) {
  const struct {
    const char* what;
    bool pipe, long_text;
    std::uint64_t each_look, most;
  } cases[] = {{"another station's lock", false, false, 0, 600},
               {"a pipe", true, false, 0, 0},
               {"a long text", false, true, 0, 0},
               {"a slow machine", false, false, 100, 1400}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    CliWorld world;
    FakeHost& station = world.host;
    auto other_station = station.files.Lock("C:\\PROG\\kord.ini", [] {});
    station.files["C:\\IN\\new.xml"] =
        "<DocBody><ESADout a=\"1\"></ESADout></DocBody>" + std::string(c.long_text ? 2'000'000 : 0, ' ');
    if (c.pipe) station.files.SetStamp("C:\\IN\\new.xml", kPipeStamp);
    station.clock.on_sleep = [&](std::uint32_t) {
      if (station.clock.Ticks() > 5000) other_station.reset();
    };
    std::uint64_t printed = 0;
    world.output.on_result = [&] {
      if (std::exchange(printed, station.clock.Ticks()) != 0) return;
      EXPECT_FALSE(station.files.Has(kLock));
      EXPECT_NE(world.Table("DBRHEAD.DBF").find("1:"), std::string::npos);
      EXPECT_LE(printed - 1000, c.most);
      station.clock.ticks_each_look = 0;
      world.output.on_result = nullptr;
    };
    station.clock.ticks_each_look = c.each_look;
    EXPECT_EQ(world.RunProgram(R"(convert --program C:\PROG --rules C:\RULES\armti.txt
                                  --output C:\OUT )" + std::string(kFile) + " C:\\IN\\new.xml"),
              kDone);
  }
}

// A long file is written document by document.
TEST_F(ConvertTest, ALineTellsWhatOfAFileIsIn) {
  host.files["C:\\PROG\\Data\\Kordwin.dcf"] = WinLines(
      std::string(kCatalogue) + "[Inventory.HEADER]\nShortName=x\nXmlType=x\nPrefix=<Inventory>\n[Inventory.Fields]\nA=C2\n");
  host.files["C:\\RULES\\armti.txt"] = "[DBRHEAD]\r\n=ESADout,Inventory\r\n";
  host.files["C:\\IN\\two.xml"] =
      "<DocBody><ESADout a=\"1\"></ESADout></DocBody><DocBody><Inventory></Inventory></DocBody>";
  const std::string empty = host.files["C:\\OUT\\DBRHEAD.DBF"];
  std::set<std::pair<std::string, ExitStatus>> seen;
  for (const std::uint64_t each_look : {0, 600}) {
    for (int change = 0, changes = 1; change <= changes; ++change) {
      host.files["C:\\OUT\\DBRHEAD.DBF"] = empty;
      host.files.ResetCounts();
      host.clock.ticks_each_look = each_look;
      host.files.FailChange(change);
      const ExitStatus status = RunProgram(
          R"(convert --program C:\PROG --rules C:\RULES\armti.txt --output C:\OUT C:\IN\two.xml)");
      if (change == 0) changes = host.files.changes();
      host.files.FailChange(0);
      const std::string dump = Table("DBRHEAD.DBF");
      const auto rows = std::count(dump.begin(), dump.end(), '\n') - 1;
      const std::size_t from = output.results.find("converted:"), to = output.results.find("; r");
      const std::string said = output.results.substr(from, to - from);
      EXPECT_EQ(rows, std::count(said.begin(), said.end(), '1')) << change << output.results;
      EXPECT_EQ(output.results.find("; failed: ") == output.results.npos, status == kDone);
      seen.emplace(said, status);
    }
  }
  EXPECT_EQ(seen.size(), 3U) << "both, the first one or nothing";
}

TEST_F(ConvertTest, ExplainsEveryLineAndWritesTheSameTables) {
  EXPECT_EQ(Convert("--explain"), kDone);
  const std::string at = "C:\\RULES\\armti.txt:";
  EXPECT_EQ(output.results.substr(0, output.results.rfind("C:\\IN\\")),
            at + "3: \\ G011 = Proc: 'ИМ' -> DBRHEAD.DBF.G011 written\n" +  //
                at + "6: Goods\\1 G33 = Code: '0101' -> DBRTOV.DBF.G33 cut from 4 to 2\n" + at +
                "7: Goods\\1 NOFIELD = Code: '0101' -> DBRTOV.DBF.NOFIELD no such field\n" + at +
                "8: Goods\\1 G33 = *Nothing: '' -> DBRTOV.DBF.G33 no such source\n" + at +
                "9: Goods\\1 G073 = Code: '0101' -> DBRTOV.DBF.G073 key of the parent record\n");
  const std::string explained = Table("DBRHEAD.DBF") + Table("DBRTOV.DBF");

  CliWorld plain;
  EXPECT_EQ(plain.Convert(), kDone);
  EXPECT_EQ(plain.Table("DBRHEAD.DBF") + plain.Table("DBRTOV.DBF"), explained);

  EXPECT_EQ(Convert("--explain --json"), kDone);
  EXPECT_TRUE(
      Printed(R"("explain":[{"line":3,"source_path":"","expression":"Proc","value":"ИМ",)"
              R"("table":"DBRHEAD.DBF","field":"G011","outcome":"written"},)"
              R"({"line":6,"source_path":"Goods\\1","expression":"Code","value":"0101",)"
              R"("table":"DBRTOV.DBF","field":"G33","outcome":"cut","cut_from":4,"cut_to":2},)"));
}

TEST_F(ConvertTest, ExplainsWhatATableFieldKeeps) {
  const auto x = [](std::size_t count) { return std::string(count, 'x'); };
  const struct {
    char type;
    int width, decimals;
    std::string value;
    const char* outcome;
  } cases[] = {{'C', 10, 0, x(11), "cut from 11 to 10"},
               {'C', 10, 0, "", "empty"},
               {'C', 252, 0, x(252), "written"},
               {'C', 252, 0, x(253), "cut from 253 to 252"},
               {'C', 300, 0, x(255), "written"},
               {'C', 300, 0, x(300), "cut from 300 to 255"},
               {'C', 100, 0, x(300), "cut from 300 to 100"},
               {'N', 5, 0, "12345", "written"},
               {'N', 5, 0, "123456", "cut from 6 to 5"},
               {'N', 8, 2, "123456.7", "cut from 9 to 8"},
               {'N', 8, 3, "1234.56789", "written"},
               {'N', 8, 3, "12345", "cut from 9 to 8"},
               {'D', 8, 0, "soon", "empty"},
               {'L', 1, 0, "maybe", "empty"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(1, c.type) + std::to_string(c.width) + " " + c.value);
    // The second field spares the table from being too small for one.
    host.files["C:\\OUT\\DBRHEAD.DBF"] =
        TableImage().Field("F", c.type, c.width, c.decimals).Field("PASP", 'C', 60).Bytes();
    host.files["C:\\RULES\\armti.txt"] = "[DBRHEAD]\r\n=ESADout\r\nF=Proc\r\n";
    Xml("10702020_110615_0001234", "<Proc>" + c.value + "</Proc>");
    ASSERT_EQ(Convert("--explain"), kDone);
    const std::string line = output.results.substr(0, output.results.find('\n'));
    const std::string target = "-> DBRHEAD.DBF.F ";
    EXPECT_EQ(line.substr(line.find(target) + target.size()), c.outcome);
  }
}

TEST_F(ConvertTest, SaysThatItWaitsForAnotherStationsNumber) {
  auto other_station = host.files.Lock("C:\\PROG\\kord.ini", [] {});
  host.clock.on_sleep = [&](std::uint32_t) {
    if (host.clock.slept.size() > 200) other_station.reset();
  };
  host.files["C:\\IN\\new.xml"] = "";
  EXPECT_EQ(Convert("C:\\IN\\new.xml"), kNegative);
  EXPECT_EQ(output.remarks, "wait: Ждем, пока другая станция освободит C:\\PROG/kord.ini\n");
}

TEST_F(ConvertTest, TheLockQuestionIsAnsweredByOption) {
  const struct {
    const char* option;
    std::deque<std::string> typed;  // at a terminal
    std::uint32_t seconds;
    bool written;
  } cases[] = {{"--on-lock abandon", {}, 20, false}, {"--on-lock take-over", {}, 20, true},
               {"--on-lock wait", {}, 101, true},    {"", {}, 101, true},
               {"", {"1", "", "3"}, 60, false},      {"", {"2"}, 20, true}};
  const std::string empty = Table("DBRTOV.DBF");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.option + testing::PrintToString(c.typed));
    CliWorld world;
    world.host.files[kLock] = "";
    world.output.terminal = !c.typed.empty();
    world.output.answers = c.typed;
    EXPECT_EQ(world.Convert(c.option), c.written ? kDone : kNegative);
    EXPECT_EQ(world.Table("DBRTOV.DBF") != empty, c.written);
    EXPECT_EQ(world.host.files.Has(kLock), !c.written) << "the other's lock or nobody's";
    std::uint32_t waited = 0;
    for (const std::uint32_t slept : world.host.clock.slept) waited += slept;
    EXPECT_EQ(waited / 1000, c.seconds);
    EXPECT_NE(world.output.remarks.find("choice: База занята!"), std::string::npos);
  }
}

TEST_F(ConvertTest, AProgressLineStandsOnATerminalOnly) {
  output.terminal = true;
  EXPECT_EQ(Convert(kFile), kDone);
  EXPECT_NE(output.remarks.find("\r\x1B[K2/2 C:\\IN\\"), std::string::npos) << output.remarks;
  EXPECT_EQ(output.remarks.substr(output.remarks.size() - 4), "\r\x1B[K")
      << "nothing is left of it";
}

}  // namespace
}  // namespace customsconv::cli
