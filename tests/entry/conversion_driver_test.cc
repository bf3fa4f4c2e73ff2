#include "entry/conversion_driver.h"

#include <gtest/gtest.h>

#include "entry/library.h"
#include "support/catalogue_builder.h"
#include "support/program_world.h"
#include "validation/libxml_services.h"

namespace customsconv {
namespace {

class ConversionDriverTest : public ProgramWorld, public testing::Test {
 protected:
  bool Convert(std::string_view file = kFile) {
    return library.Xml2ArmTi("C:\\PROG\\", "C:\\RULES\\armti.txt", ShortText::Cut(file),
                             "C:\\OUT\\");
  }
  std::string Rows(std::string_view table) {
    const std::string dump = Table(table);
    return dump.substr(dump.find('\n') + 1);
  }

  LibXmlServices services{host.files};
  Library library{host, services};
};

TEST_F(ConversionDriverTest, AnErrorInTheMappingIsShownAndTheRestSaved) {
  host.files["C:\\RULES\\armti.txt"] =
      "[DBRHEAD]\n=ESADout\n[DBRTOV]\nGoods{\nG33=Code\n[NOTAB]\nx{\n[DBRTOV]";
  ASSERT_TRUE(Convert());
  EXPECT_EQ(host.dialogs.log[0], "message: Не описана таблица NOTAB в документе DT5");
  EXPECT_EQ(host.dialogs.log[1], "exception: List index out of bounds (8)");
  EXPECT_EQ(Rows("DBRTOV.DBF"), "1: G073=\"0001234\" G33=\"01\"\n");
}

TEST_F(ConversionDriverTest, TroubleWithFilesIsAQuietNoAndTheTablesStay) {
  const auto refused = [&](const char* what) {
    EXPECT_FALSE(Convert()) << what;
    EXPECT_NE(library.quiet_failure().find(what), std::string::npos) << library.quiet_failure();
    EXPECT_EQ(Rows("DBRTOV.DBF"), "") << what;
    EXPECT_FALSE(host.files.Has(kLock));
    host.files.StopFailing();
  };
  host.files.FailPath("C:\\RULES\\armti.txt", FileOp::kRead, FileError::Kind::kRead);
  refused("armti.txt");
  host.files.FailPath(kLock, FileOp::kCreateNew, FileError::Kind::kCreate);
  refused("veltlock.$$$");
  host.files.Remove("C:\\OUT\\DBRHEAD.DBF");
  refused("C:\\OUT\\DBRHEAD.DBF");
  host.files.SetReadOnly("C:\\OUT\\");
  refused("~ccsave.lck");
}

// The rows stay in memory and reach the disk with the next save that finds room.
TEST_F(ConversionDriverTest, AFullDiskIsShownAndTheOldTablesStayWhole) {
  host.files.FailPath("C:\\OUT\\DBRHEAD.DBF", FileOp::kReserve, FileError::Kind::kWrite);
  host.files.FailPath("C:\\OUT\\DBRTOV.DBF", FileOp::kOtherChange, FileError::Kind::kWrite);
  EXPECT_TRUE(Convert());
  ASSERT_EQ(host.dialogs.exceptions.size(), 2U);
  EXPECT_NE(host.dialogs.exceptions[0].find("DBRHEAD.DBF"), std::string::npos);
  EXPECT_NE(host.dialogs.exceptions[1].find("DBRTOV.DBF"), std::string::npos);
  EXPECT_EQ(Rows("DBRHEAD.DBF") + Rows("DBRTOV.DBF"), "");
  EXPECT_FALSE(host.files.Has(kLock));
  host.files.StopFailing();
  Xml("10702020_120615_0005678", "<Goods><Code>B</Code></Goods>");
  ASSERT_TRUE(Convert("C:\\IN\\10702020_120615_0005678.xml"));
  EXPECT_EQ(Rows("DBRTOV.DBF"), "1: G073=\"0001234\" G33=\"01\"\n2: G073=\"0005678\" G33=\"B\"\n");
}

TEST_F(ConversionDriverTest, TablesThatLackFields) {
  host.files["C:\\OUT\\DBRHEAD.DBF"] = TableImage("OTHER C8, G011 C1").Bytes();
  host.files["C:\\OUT\\DBRTOV.DBF"] = TableImage("G33 N3, G32 C1").Bytes();
  EXPECT_TRUE(Convert());
  EXPECT_EQ(Rows("DBRHEAD.DBF") + Rows("DBRTOV.DBF"), "1: G011=\"И\"\n1: G33=\"101\"\n");
}

// Rows are added in the layout that the table has; what its maker put elsewhere stays.
TEST_F(ConversionDriverTest, TablesOfOtherMakers) {
  TableImage goods = TableImage("G073 C7, G33 C2, NOTE M10").Row({"1", "Я"});
  const std::string plain = goods.Bytes();
  for (const std::string& bytes :
       {WithByte(plain, 0, 0x83), WithByte(plain, 29, 0), goods.Extended().Bytes()}) {
    host.files["C:\\OUT\\DBRTOV.DBF"] = bytes;
    EXPECT_TRUE(Convert());
    EXPECT_EQ(Rows("DBRTOV.DBF"), "1: G073=\"1\" G33=\"Я\"\n2: G073=\"0001234\" G33=\"01\"\n");
    EXPECT_EQ(host.files["C:\\OUT\\DBRTOV.DBF"].bytes()[0], bytes[0]);
  }
}

}  // namespace
}  // namespace customsconv
