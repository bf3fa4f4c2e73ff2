#include "entry/conversion_driver.h"

#include <gtest/gtest.h>

#include <map>

#include "conversion_world.h"

namespace customsconv {
namespace {

constexpr const char* kEmptyGoods = "G073 C7, G32 N5, G33 C10\n";

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
               "<DTSout a=\"1\"><Proc>1</Proc></DTSout>", "<DTSout a=\"1\"><Proc>2</Proc></DTSout>",
               "<Letter a=\"1\"><Text>t</Text></Letter>"}));
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
  host.files["C:\\RULES\\armti.txt"] =
      "[DBRHEAD]\r\n=ESADout\r\n[DBRTOV]\r\nGoods{\r\nG33=Code\r\n[NOTAB]\r\nx{\r\n[DBRTOV]";
  ASSERT_TRUE(Convert({Declaration("A")}));
  EXPECT_EQ(host.dialogs.log[0], "message: Не описана таблица NOTAB в документе TD5");
  EXPECT_EQ(host.dialogs.log[1], "exception: List index out of bounds (8)");
  EXPECT_EQ(Table("DBRTOV.DBF"), std::string(kEmptyGoods) + "1: G073=\"0001234\" G33=\"A\"\n");
}

TEST_F(ConversionDriverTest, TroubleWithFilesIsAQuietNoAndTheTablesStay) {
  const auto refused = [&](const char* what) {
    EXPECT_FALSE(Convert({Declaration("A")})) << what;
    EXPECT_NE(library.quiet_failure().find(what), std::string::npos) << library.quiet_failure();
    EXPECT_EQ(Table("DBRTOV.DBF"), kEmptyGoods) << what;
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
  const std::string head = Table("DBRHEAD.DBF");
  host.files.FailPath("C:\\OUT\\DBRHEAD.DBF", FileOp::kReserve, FileError::Kind::kWrite);
  host.files.FailPath("C:\\OUT\\DBRTOV.DBF", FileOp::kOtherChange, FileError::Kind::kWrite);
  EXPECT_TRUE(Convert({Declaration("A")}));
  ASSERT_EQ(host.dialogs.exceptions.size(), 2U);
  EXPECT_NE(host.dialogs.exceptions[0].find("DBRHEAD.DBF"), std::string::npos);
  EXPECT_NE(host.dialogs.exceptions[1].find("DBRTOV.DBF"), std::string::npos);
  EXPECT_EQ(Table("DBRHEAD.DBF"), head);
  EXPECT_EQ(Table("DBRTOV.DBF"), kEmptyGoods);
  EXPECT_FALSE(host.files.Has("C:\\OUT\\veltlock.$$$"));
  host.files.StopFailing();
  ASSERT_TRUE(Convert({Declaration("B")}, "10702020_120615_0005678"));
  EXPECT_EQ(Table("DBRTOV.DBF"), std::string(kEmptyGoods) +
                                     "1: G073=\"0001234\" G33=\"A\"\n"
                                     "2: G073=\"0005678\" G33=\"B\"\n");
}

// Every file operation of a run in turn is the one at which the machine stops.
TEST_F(ConversionDriverTest, AKilledRunLeavesEveryTableWithItsEarlierRows) {
  ASSERT_TRUE(Convert({Declaration("A")}));
  std::map<std::string, std::string> before;
  for (const char* name : {"DBRHEAD.DBF", "DBRTOV.DBF", "DBRCMP.DBF"}) before[name] = Table(name);
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

}  // namespace
}  // namespace customsconv
