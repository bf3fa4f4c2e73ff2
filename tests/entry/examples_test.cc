#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>

#include "entry/library.h"
#include "platform/posix/posix_files.h"
#include "support/fake_host.h"
#include "support/table_image.h"
#include "support/temp_folder.h"
#include "validation/libxml_services.h"

namespace customsconv {
namespace {

namespace fs = std::filesystem;

const fs::path kExamples = fs::path(CUSTOMSCONV_SOURCE_DIR) / "examples";
const fs::path kExpected = fs::path(CUSTOMSCONV_SOURCE_DIR) / "tests" / "entry" / "expected";

// In the order of examples/README.md: the component list of the first file joins the first
// declaration of the set.
constexpr const char* kFiles[] = {"10702020_010615_0000100.xml",
                                  "10702020_110615_0001234.xml",
                                  "DT_10702020201506110001235.xml",
                                  "Копия 10702020_150615_0001236.xml",
                                  "X_10702020_180615_0001237.xml",
                                  "dts.xml",
                                  "inventory.xml",
                                  "kdt.xml",
                                  "card.xml",
                                  "transit.xml",
                                  "descriptions.xml"};

// The empty tables that armti/tables.txt describes, put together without the table engine.
std::map<std::string, TableImage> EmptyTables(const std::string& description) {
  std::map<std::string, TableImage> tables;
  std::istringstream lines(description);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string table, field;
    char type = ' ';
    int width = 0, decimals = 0;
    if (!(words >> table >> field >> type >> width) || table.front() == ';') continue;
    words >> decimals;
    tables[table].Field(field, type, width, decimals);
  }
  return tables;
}

// A copy of examples/ on the disk with an empty table set, on 3 July 2015.
class ExamplesTest : public testing::Test {
 protected:
  ExamplesTest() {
    fs::copy(kExamples, folder_.path(), fs::copy_options::recursive);
    clock_.Set({2015, 7, 3}, 12);
    for (const auto& [name, image] : EmptyTables(folder_.Read("armti/tables.txt"))) {
      folder_.Write("out/" + name + ".DBF", image.Bytes());
      tables_.push_back(name);
    }
  }

  void ConvertAll() {
    const auto path = [this](const std::string& name) { return ShortText::Cut(folder_.Win(name)); };
    for (const std::string file : kFiles) {
      EXPECT_TRUE(library_.Xml2ArmTi(path("program/"), path("rules/armti.txt"), path("xml/" + file),
                                     path("out/")))
          << file << ": " << Utf8(library_.quiet_failure());
    }
    EXPECT_EQ(dialogs_.messages, std::vector<std::string>());
    EXPECT_EQ(dialogs_.exceptions, std::vector<std::string>());
  }

  std::string Table(const std::string& name) {
    return TableDump(folder_.Read("out/" + name + ".DBF"));
  }
  static std::string Expected(const std::string& name) {
    return FileBytes(kExpected / (name + ".txt"));
  }

  TempFolder folder_;
  posix::PosixFiles files_;
  FakeClock clock_;
  ScriptedDialogs dialogs_;
  FakeProcesses processes_;
  Host host_{files_, clock_, dialogs_, processes_};
  LibXmlServices services_{files_};
  Library library_{host_, services_};
  std::vector<std::string> tables_;
};

TEST_F(ExamplesTest, EveryCellIsAsExpected) {
  ConvertAll();
  EXPECT_EQ(tables_.size(), 36U);
  for (const std::string& name : tables_) EXPECT_EQ(Table(name), Expected(name)) << name;
}

// The component list adds to the first declaration again and rewrites the rows that it loaded.
TEST_F(ExamplesTest, ASecondConversionAppendsAndLeavesEarlierRows) {
  ConvertAll();
  ConvertAll();
  for (const std::string& name : tables_) {
    SCOPED_TRACE(name);
    const std::string first = Expected(name);
    const std::string both = Table(name);
    EXPECT_EQ(both.substr(0, first.size()), first);
    EXPECT_EQ(std::count(both.begin(), both.end(), '\n') - 1,
              2 * (std::count(first.begin(), first.end(), '\n') - 1));
  }
}

}  // namespace
}  // namespace customsconv
