#include "common/configuration.h"

#include <gtest/gtest.h>

#include "common/settings.h"
#include "support/fake_host.h"
#include "support/text.h"

namespace customsconv {
namespace {

constexpr const char* kFile = "C:\\PROG\\kord.ini";

struct World {
  explicit World(std::string_view bytes) { host.files[kFile] = bytes; }
  TConfiguration Open() {
    return TConfiguration(host, kFile, CreateMode::kMustExist, CodePage::kWindows);
  }
  FakeHost host;
};

TEST(TConfiguration, ReadsFlagsInWords) {
  const struct {
    const char* value;
    bool with_false, with_true;
  } cases[] = {{" yes ", true, true}, {"да", true, true},   {"-1", true, true},
               {"TRUE", true, true},  {"y", true, true},    {"1", true, true},
               {"0", false, false},   {"no", false, false}, {"2", false, false},
               {"нет", false, false}, {"", false, true}};
  for (const auto& c : cases) {
    World world("[S]\nk=" + Win(c.value) + "\n");
    const TConfiguration config = world.Open();
    EXPECT_EQ(config.GetBool("S", "k", false), c.with_false) << c.value;
    EXPECT_EQ(config.GetBool("S", "k", true), c.with_true) << c.value;
  }
}

TEST(TConfiguration, ReadsWordsAndAppendsValues) {
  World world("[S]\nlist=,one; two,,three\n");
  TConfiguration config = world.Open();
  EXPECT_EQ(config.GetWord("S", "list", 2), " two");
  EXPECT_EQ(config.GetWord("S", "list", 3), "three");
  EXPECT_EQ(config.GetWord("S", "list", 4), "");
  config.AppendValue("S", "list", "four");
  config.AppendValue("S", "new", "one");
  EXPECT_EQ(world.host.files[kFile], "[S]\r\nlist=,one; two,,three,four\r\nnew=,one\r\n");
}

TEST(TConfiguration, KeepsLongValuesInPieces) {
  const std::string a(240, 'a'), b(240, 'b'), c(20, 'c');
  World world("[S]\r\nk=old\r\nk(4)=x\r\nk(5)=y\r\nk(6)=\r\nk(7)=z\r\n");
  TConfiguration config = world.Open();
  config.SetLongString("S", "k", a + b + c);
  EXPECT_EQ(world.host.files[kFile],
            "[S]\r\nk(6)=\r\nk(7)=z\r\nk(1)=" + a + "\r\nk(2)=" + b + "\r\nk(3)=" + c + "\r\n");
  EXPECT_EQ(world.host.files.Count(FileOp::kCommit), 1) << "nobody sees half of the pieces";
  EXPECT_EQ(config.GetLongString("S", "k", ""), a + b + c);

  config.SetLongString("S", "k", a);
  EXPECT_EQ(config.ReadSection("S"), (std::vector<std::string>{"k(6)", "k(7)", "k(1)"}));
  config.SetLongString("S", "k", "short");
  EXPECT_EQ(config.ReadSection("S"), (std::vector<std::string>{"k(6)", "k(7)", "k"}));
  EXPECT_EQ(config.GetLongString("S", "k", ""), "short");
  EXPECT_EQ(config.GetLongString("S", "none", "default"), "default");
}

TEST(TConfiguration, ALongValueWithAControlCharacterChangesNothing) {
  World world("[S]\r\nk=old\r\n");
  TConfiguration config = world.Open();
  const std::string piece = std::string(10, 'b') + '\t';
  EXPECT_EQ(ErrorOf([&] { config.SetLongString("S", "k", std::string(240, 'a') + piece); }),
            Win("TVeltIni: Недопустимое значение S_k(2)=") + piece);
  EXPECT_EQ(config.GetLongString("S", "k", ""), "old");
  EXPECT_EQ(world.host.files.changes(), 0);
}

TEST(SharedConfigurations, HandsOutOneObjectUntilTheFileChanges) {
  World world("[S]\r\nk=1\r\n");
  SharedConfigurations shared(world.host);
  TConfiguration& first = shared.Get(kFile, CodePage::kWindows);
  EXPECT_EQ(&shared.Get("c:\\prog\\KORD.INI", CodePage::kWindows), &first);
  world.host.files[kFile] = "[S]\r\nk=2\r\n";
  EXPECT_EQ(shared.Get(kFile, CodePage::kWindows).GetString("S", "k", ""), "2");
  world.host.files.Remove(kFile);
  EXPECT_EQ(ErrorOf([&] { shared.Get(kFile, CodePage::kWindows); }),
            Win("Не могу открыть ini-файл \"C:\\PROG\\kord.ini\""));
  EXPECT_EQ(ErrorOf([&] { shared.Get("C:\\none.ini", CodePage::kDos); }),
            Win("Не могу открыть ini-файл \"C:\\none.ini\""));
}

TEST(Settings, DefaultsOfAnEmptyConfiguration) {
  World world("");
  const TConfiguration config = world.Open();
  using namespace settings;
  EXPECT_TRUE(CollapsePatternBlanks(config) && CheckXsd(config) && NewYearNumber(config) &&
              RegNumsYear2Digit(config) && ResetPrinterIndex(config) && !SqlLastNum(config));
  EXPECT_TRUE(Country31(config, false) && !Country31(config, true));
  EXPECT_EQ(CustomHouseCode(config) + RegNumStructure(config) + LastNumsFile(config),
            "00000000%CODE/%DATE/%GNUM");
  EXPECT_EQ(UpCaseDocs(nullptr), "Kord,DS1,DS2,KTS,KTD,OPN,KUT,NGA,");
  EXPECT_EQ(ArchiveId(config), "1");
  EXPECT_EQ(ArcNum(config) + MinOrdNumber(config), 2);
}

TEST(Settings, StandUnderTheirSectionsAndKeys) {
  World world(
      "[ed]\nNDSp=0\nCheckXSD=no\n[KORD.ARMTI]\nCustomHouseCode=10\nMinOrdNumber=5\n"
      "RegNumStructure=%N\nNewYearNumber=0\nCountry31=0\n[System]\nRegNumsYear2Digit=0\n"
      "LastNumsFile=n.ini\n[Print]\nResetPrinterIndex=0\n[Kord]\nSQLLastNum=1\n[Tmr]\nArcNum=7\n"
      "Id=8\n[Common]\nUpCaseDocs=A\n");
  const TConfiguration config = world.Open();
  using namespace settings;
  EXPECT_FALSE(CollapsePatternBlanks(config) || CheckXsd(config) || NewYearNumber(config) ||
               RegNumsYear2Digit(config) || ResetPrinterIndex(config) || Country31(config, false));
  EXPECT_TRUE(SqlLastNum(config));
  EXPECT_EQ(CustomHouseCode(config) + RegNumStructure(config) + LastNumsFile(config) +
                ArchiveId(config) + UpCaseDocs(&config),
            "10%Nn.ini8A");
  EXPECT_EQ(ArcNum(config) + MinOrdNumber(config), 12);
}

}  // namespace
}  // namespace customsconv
