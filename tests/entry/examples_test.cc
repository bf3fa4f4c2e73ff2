#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <vector>

#include "entry/library.h"
#include "platform/posix/posix_files.h"
#include "support/fake_host.h"
#include "support/table_image.h"
#include "support/temp_folder.h"
#include "validation/libxml_services.h"

namespace customsconv {
namespace {

namespace fs = std::filesystem;

const fs::path kSources = CUSTOMSCONV_SOURCE_DIR;

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

// A copy of examples/ on the disk with an empty table set, on 3 July 2015.
class ExamplesTest : public testing::Test {
 protected:
  ExamplesTest() {
    fs::copy(kSources / "examples", folder_.path(), fs::copy_options::recursive);
    clock_.Set({2015, 7, 3}, 12);
    std::map<std::string, TableImage> tables;  // put together without the table engine
    std::istringstream lines(folder_.Read("armti/tables.txt"));
    for (std::string line; std::getline(lines, line);) {
      std::istringstream words(line);
      std::string table, field;
      char type = ' ';
      int width = 0, decimals = 0;
      if (!(words >> table >> field >> type >> width) || table.front() == ';') continue;
      words >> decimals;
      tables[table].Field(field, type, width, decimals);
    }
    for (const auto& [name, image] : tables) folder_.Write("out/" + name + ".DBF", image.Bytes());
  }

  TempFolder folder_;
  posix::PosixFiles files_;
  FakeClock clock_;
  ScriptedDialogs dialogs_;
  FakeProcesses processes_;
  Host host_{files_, clock_, dialogs_, processes_};
  LibXmlServices services_{files_};
  Library library_{host_, services_};
};

TEST_F(ExamplesTest, EveryCellIsAsExpected) {
  const auto path = [this](const std::string& name) { return ShortText::Cut(folder_.Win(name)); };
  for (const std::string file : kFiles) {
    EXPECT_TRUE(library_.Xml2ArmTi(path("program/"), path("rules/armti.txt"), path("xml/" + file),
                                   path("out/")))
        << file << ": " << Utf8(library_.quiet_failure());
  }
  EXPECT_EQ(dialogs_.messages, std::vector<std::string>());
  EXPECT_EQ(dialogs_.exceptions, std::vector<std::string>());
  const std::vector<fs::path> tables(fs::directory_iterator(folder_ / "out"), {});
  EXPECT_EQ(tables.size(), 36U);
  for (const fs::path& table : tables) {
    const fs::path expected = kSources / "tests/entry/expected" / table.stem();
    EXPECT_EQ(TableDump(FileBytes(table)), FileBytes(expected.string() + ".txt")) << table;
  }
}

}  // namespace
}  // namespace customsconv
