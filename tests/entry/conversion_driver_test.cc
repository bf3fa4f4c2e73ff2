#include "entry/conversion_driver.h"

#include <gtest/gtest.h>

#include <map>

#include "conversion_world.h"

namespace customsconv {
namespace {

// By SkipReason.
constexpr const char* kReasons[] = {"not the first declaration", "its kind is not converted",
                                    "no section", "not the first of its kind", "no table set"};

// Notes what became of each document.
class Notes : public ConversionObserver {
 public:
  void RegistrationNumber(std::string_view number) override { text += std::string(number) + "\n"; }
  void Skipped(const DocumentReport& document, SkipReason reason) override {
    text += Name(document) + " skipped: " + kReasons[static_cast<std::size_t>(reason)] + "\n";
  }
  void Converted(const DocumentReport& document) override {
    text += Name(document) + " into " + std::string(document.table);
    for (const auto& [table, rows] : document.rows_added) {
      text += " " + table + "+" + std::to_string(rows);
    }
    text += "\n";
  }
  void Record(std::string_view) override {}
  [[nodiscard]] bool WantsLines() const override { return false; }
  void Line(const LineReport&) override {}

  std::string text;

 private:
  static std::string Name(const DocumentReport& document) {
    return std::string(document.kind) + " " + std::to_string(document.occurrence);
  }
};

class ConversionDriverTest : public ConversionWorld, public testing::Test {};

TEST_F(ConversionDriverTest, TellsWhatItConvertsAndSkips) {
  Notes notes;
  observer = &notes;
  ASSERT_TRUE(
      Convert({Declaration("A"), Declaration("B"), Declaration("C", "KTDout"),
               Declaration("", "DTSout"), Declaration("", "DTSout"), Declaration("", "Letter")}));
  EXPECT_EQ(notes.text,
            "10702020/110615/0001234\n"
            "ESADout 1 into DBRHEAD.DBF DBRHEAD.DBF+1 DBRTOV.DBF+1\n"
            "ESADout 2 skipped: not the first declaration\n"
            "KTDout 1 skipped: not the first declaration\n"
            "DTSout 1 into SBRHEAD.DBF SBRHEAD.DBF+1\n"
            "DTSout 2 skipped: not the first of its kind\n"
            "Letter 1 skipped: its kind is not converted\n");
}

TEST_F(ConversionDriverTest, AnErrorInTheMappingIsShownAndTheRestSaved) {
  Rules("[DBRHEAD], =ESADout, [DBRTOV], Goods{, G33=Code, [NOTAB], x{, [DBRTOV]");
  ASSERT_TRUE(Convert({Declaration("A")}));
  EXPECT_EQ(host.dialogs.log[0], "message: Не описана таблица NOTAB в документе TD5");
  EXPECT_EQ(host.dialogs.log[1], "exception: List index out of bounds (8)");
  EXPECT_EQ(Rows("DBRTOV"), "1: G073=\"0001234\" G33=\"A\"\n");
}

TEST_F(ConversionDriverTest, TroubleWithFilesIsAQuietNoAndTheTablesStay) {
  const auto refused = [&](const char* what) {
    EXPECT_FALSE(Convert({Declaration("A")})) << what;
    EXPECT_NE(library.quiet_failure().find(what), std::string::npos) << library.quiet_failure();
    EXPECT_EQ(Rows("DBRTOV"), "") << what;
    host.files.StopFailing();
  };
  host.files.FailPath("C:\\RULES\\armti.txt", FileOp::kRead, FileError::Kind::kRead);
  refused("armti.txt");
  host.files.FailPath("C:\\OUT\\veltlock.$$$", FileOp::kCreateNew, FileError::Kind::kCreate);
  refused("veltlock.$$$");
  host.files.SetReadOnly("C:\\OUT\\");
  refused("~ccsave.lck");
}

// The rows stay in memory and reach the disk with the next save that finds room.
TEST_F(ConversionDriverTest, AFullDiskIsShownAndTheOldTablesStayWhole) {
  host.files.FailPath("C:\\OUT\\DBRHEAD.DBF", FileOp::kReserve, FileError::Kind::kWrite);
  host.files.FailPath("C:\\OUT\\DBRTOV.DBF", FileOp::kOtherChange, FileError::Kind::kWrite);
  EXPECT_TRUE(Convert({Declaration("A")}));
  ASSERT_EQ(host.dialogs.exceptions.size(), 2U);
  EXPECT_NE(host.dialogs.exceptions[0].find("DBRHEAD.DBF"), std::string::npos);
  EXPECT_NE(host.dialogs.exceptions[1].find("DBRTOV.DBF"), std::string::npos);
  EXPECT_EQ(Rows("DBRHEAD"), "");
  EXPECT_EQ(Rows("DBRTOV"), "");
  EXPECT_FALSE(host.files.Has("C:\\OUT\\veltlock.$$$"));
  host.files.StopFailing();
  ASSERT_TRUE(Convert({Declaration("B")}, "10702020_120615_0005678"));
  EXPECT_EQ(Rows("DBRTOV"), R"(1: G073="0001234" G33="A"
2: G073="0005678" G33="B"
)");
}

// Every file operation of a run in turn is the one at which the machine stops.
TEST_F(ConversionDriverTest, AKilledRunLeavesEveryTableWithItsEarlierRows) {
  ASSERT_TRUE(Convert({Declaration("A")}));
  std::map<std::string, std::string> before;
  for (const char* name : {"DBRHEAD", "DBRTOV", "DBRCMP"}) before[name] = Table(name);
  host.files["C:\\IN\\2.xml"] = "<DocBody>" + Declaration("Z") + "</DocBody>";
  bool died = true;
  for (int n = 1; died && n < 100; ++n) {
    SCOPED_TRACE(n);
    died = false;
    host.files.DieAtChange(n);
    try {
      (void)Library(host, services)
          .Xml2ArmTi("C:\\PROG\\", "C:\\RULES\\armti.txt", "C:\\IN\\2.xml", "C:\\OUT\\");
    } catch (const SuddenDeath&) {
      died = true;
    }
    host.files.Revive();
    host.files.Delete("C:\\OUT\\veltlock.$$$");
    for (const auto& [name, rows] : before) EXPECT_EQ(Table(name).rfind(rows, 0), 0U) << name;
  }
  EXPECT_FALSE(died);
}

TEST_F(ConversionDriverTest, RulesThatNameWhatIsNotThere) {
  Rules(R"([DBRHEAD], =ESADout, [DBRTOV], Goods{, NOFIELD=Code, G33=Nothing, G33=No\1\Such
G33=\\, =, [], {, =, [ ], {{{
)");
  EXPECT_TRUE(Convert({Declaration("A")}));
  EXPECT_EQ(Utf8(host.dialogs.messages.at(0)), "Не описана таблица  в документе TD5");
  EXPECT_EQ(Rows("DBRTOV"), "1: G073=\"0001234\"\n");
}

TEST_F(ConversionDriverTest, RulesOfAHundredThousandLines) {
  std::string rules = "[DBRHEAD], =ESADout, [DBRTOV], Goods{\n";
  for (int i = 0; i < 100000; ++i) rules += "F" + std::to_string(i) + " = Code\n";
  Rules(rules + "G33 = Code\n");
  EXPECT_TRUE(Convert({Declaration("AB")}));
  EXPECT_EQ(Rows("DBRTOV"), R"(1: G073="0001234" G33="A"
2: G073="0001234" G33="B"
)");
}

TEST_F(ConversionDriverTest, TableSetsThatLackTables) {
  host.files.Remove("C:\\OUT\\DBRTOV.DBF");
  EXPECT_TRUE(Convert({Declaration("A")}));
  EXPECT_EQ(host.dialogs.messages, (std::vector{Win("Не могу открыть:\r\nC:\\OUT\\DBRTOV.DBF"),
                                                Win("Не описана таблица DBRTOV в документе TD5")}));
  EXPECT_EQ(Rows("DBRHEAD").substr(0, 3), "1: ");
  host.files.Remove("C:\\OUT\\DBRHEAD.DBF");
  EXPECT_FALSE(Convert({Declaration("A")}));
  EXPECT_EQ(Utf8(library.quiet_failure()), "Не могу открыть файл C:\\OUT\\DBRHEAD.DBF");
  EXPECT_FALSE(host.files.Has("C:\\OUT\\veltlock.$$$"));
}

TEST_F(ConversionDriverTest, TablesThatLackFields) {
  Put("DBRHEAD", TableImage("OTHER C8, G011 C1"));
  Put("DBRTOV", TableImage("G33 N3, G32 C1"));
  EXPECT_TRUE(Convert({Declaration("A")}));
  EXPECT_EQ(Rows("DBRHEAD") + Rows("DBRTOV"), "1: G011=\"I\"\n1: G33=\"0\"\n");
}

// Rows are added in the layout that the table has; what its maker put elsewhere stays.
TEST_F(ConversionDriverTest, TablesOfOtherMakers) {
  const TableImage goods = TableImage("G073 C7, G33 C10").Row({"1", "Я"});
  const TableImage memo = TableImage("G073 C7, G33 C10, NOTE M10").Row({"1", "Я"});
  const struct {
    const char* what;
    std::string bytes;
    const char* fields;
  } cases[] = {
      {"version 30", TableImage(goods).Extended().Bytes(), "G073 C7, G33 C10\n"},
      {"memo", WithByte(memo.Bytes(), 0, 0x83), "G073 C7, G33 C10, NOTE M10\n"},
      {"no code page mark", WithByte(goods.Bytes(), 29, 0), "G073 C7, G33 C10\n"},
      {"no end mark", goods.Bytes().substr(0, goods.Bytes().size() - 1), "G073 C7, G33 C10\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    host.files["C:\\OUT\\DBRTOV.DBF"] = c.bytes;
    EXPECT_TRUE(Convert({Declaration("B")}));
    EXPECT_EQ(Table("DBRTOV"), std::string(c.fields) + R"(1: G073="1" G33="Я"
2: G073="0001234" G33="B"
)");
    EXPECT_EQ(host.files["C:\\OUT\\DBRTOV.DBF"].bytes()[0], c.bytes[0]);
  }
}

}  // namespace
}  // namespace customsconv
