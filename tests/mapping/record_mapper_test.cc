#include "mapping/record_mapper.h"

#include <gtest/gtest.h>

#include "mapping_world.h"

namespace customsconv {
namespace {

constexpr const char* kCatalogue =
    "[ESADout.HEADER]\nXmlType=ESADout\nMainBlock=ESADoutGoods\n[ESADout.Fields]\n"
    "CustomsProcedure=C2\n"
    "Since=D | NAMESPACE=\"Since\"\n"
    "Flag=L | Признак\n"
    "Choice=L | Выбор [Нет/Да]\n"
    "Text=40X5\n"
    "Plain=C250\n"
    "Place=C20\n"
    "ESADoutGoodsLocation {\n  Place=C20\n}\n"
    "ESADoutGoods {\n"
    "  GoodsNumeric=C5\n"
    "  Code=C10\n"
    "  Since=D | NAMESPACE=\"Since\"\n"
    "  Description {\n    Part=C250\n    More=C250\n  }\n"
    "}\n"
    "ESADoutCustomsConditions#ProcessingGoods {\n"
    "  GoodsNumeric=C5\n  Code=C10\n"
    "  WasteProducts {\n    GoodsNumeric=C5\n    Code=C10\n  }\n"
    "  Heels {\n    GoodsNumeric=C5\n    Code=C10\n  }\n"
    "}\n"
    "[GoodsComponentList.HEADER]\nXmlType=x\n[GoodsComponentList.Fields]\nNumber=C5\n"
    "[OUT.HEADER]\nMainBlock=TOVAR\n[OUT.Fields]\n"
    "G011=C10\nG071=C23\nG072=C10\nG073=C10\nG19=C1\nT1=C250\nT2=C250\nG36=C100\nPASP=C60\n"
    "G30=C10\nG30A=C10\n"
    "TOVAR {\n"
    "  G32=C5\n  G33=C10\n  G31_1=C20\n  T1=C250\n"
    "  DOPINF {\n    NGR=C5\n    TYP_NGR=C5\n    G32=C5\n    TEXT1=C80\n  }\n"
    "  GU {\n    GU01=C1\n    GU02=C1\n    GU03=C10\n    TYPEINFO=C1\n    G32=C5\n    CODE=C10\n  "
    "}\n"
    "}\n"
    "FLAT {\n  G32=C5\n  G33=C10\n}\n";

std::string Rules(std::string_view lines) { return "[T]\nBlock{\n" + std::string(lines); }

// The header's own values that every header record gets.
constexpr const char* kNumber = "G071=\"10702020\" G072=\"11.06.15\" G073=\"0001234\" G19=\"0\"";

TEST(RecordMapper, StoresByTheTypeOfTheSourceField) {
  const struct {
    const char* field;
    const char* value;
    const char* stored;
  } cases[] = {
      {"Since", "2009-03-05", "05.03.2009"},
      {"Since", "05-03-2009", "05.03.2009"},
      {"Since", "5.3.09", "5.3.09"},
      {"Since", "March", "March"},
      {"Plain", "2009-03-05", "2009-03-05"},
      {"Flag", "да", "1"},
      {"Flag", "no", "0"},
      {"Flag", "", "0"},
      {"Choice", "дА", "1"},
      {"Choice", "Нет", "0"},
      {"Choice", "1", "0"},
      {"Plain", "", ""},
      {"Plain", "a\r\n  b", "a b"},
      {"Plain", "a  b", "a  b"},
      // Long text is read as one line, so nothing is left to clean.
      {"Text", "a\r\n  b  c", "a   b  c"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.field) + " " + c.value);
    MappingWorld world("ESADout", kCatalogue, Rules("T1 = " + std::string(c.field)));
    world.Source(c.field, c.value);
    const std::string stored =
        std::string(c.stored).empty() ? "" : std::string(" T1=\"") + c.stored + "\"";
    EXPECT_EQ(world.Map("", ""), kNumber + stored);
  }
}

TEST(RecordMapper, ResolvesExpressions) {
  const struct {
    const char* expression;
    const char* value;
  } cases[] = {
      {"Code", "C2"},                       // a field of the current record
      {"code", "C2"},                       // in any letter case
      {"Description", "one two"},           // the first field of a block's records
      {"Description\\More", "m1 m2"},       // a named one
      {"Description\\2\\More", "m2"},       // of one record
      {"\\\\ESADoutGoods\\1\\Code", "C1"},  // from the root
      {"\\\\Plain", "header"},
      {"Plain", ""},  // no field of the record
      {"Description\\None", ""},
      {"*DBRPASP_ReImp_Code", "C2"},  // markers in front
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.expression);
    MappingWorld world("ESADout", kCatalogue, Rules("T1 " + std::string(c.expression)));
    world.Source("Plain", "header");
    world.Source("ESADoutGoods\\1\\Code", "C1");
    world.Source("ESADoutGoods\\2\\Code", "C2");
    world.Source("ESADoutGoods\\2\\Description\\1\\Part", "one");
    world.Source("ESADoutGoods\\2\\Description\\2\\Part", "two");
    world.Source("ESADoutGoods\\2\\Description\\1\\More", "m1");
    world.Source("ESADoutGoods\\2\\Description\\2\\More", "m2");
    const std::string stored =
        std::string(c.value).empty() ? "" : std::string("T1=\"") + c.value + "\"";
    EXPECT_EQ(world.Map("ESADoutGoods\\2", "TOVAR"), "TOVAR{" + stored + "}");
  }
}

TEST(RecordMapper, GathersBracketFieldsAndReducesTheirDates) {
  MappingWorld world("ESADout", kCatalogue,
                     Rules("G36[1]=Plain\nG36[2]=Plain\nPASP[1]=Plain\nPASP[2]=Since\nNONE=Plain"));
  world.Source("Plain", "1234");
  world.Source("Since", "2009-03-05");
  EXPECT_EQ(world.Map("", ""),
            "G071=\"10702020\" G072=\"11.06.15\" G073=\"0001234\" G19=\"0\" G36=\"12341234\" "
            "PASP=\"1234/050309\"");
}

TEST(RecordMapper, WritesTheGoodsLocationFromTheFirstPlaceThatIsFilled) {
  const struct {
    const char* first;
    const char* second;
    const char* stored;
  } cases[] = {{"11", "12", "11"}, {"", "12", "12"}, {"0", "12", ""}, {"", "-5", ""}};
  for (const auto& c : cases) {
    MappingWorld world("ESADout", kCatalogue, Rules("G011=*Plain\nG30A=*Place"));
    world.Source("Place", c.first);
    world.Source("Plain", "never");
    world.Source("ESADoutGoodsLocation\\2\\Place", c.second);
    const std::string stored =
        std::string(c.stored).empty() ? "" : std::string(" G30A=\"") + c.stored + "\"";
    EXPECT_EQ(world.Map("", ""), kNumber + stored) << c.first << "/" << c.second;
  }
}

TEST(RecordMapper, CarriesALongDescriptionOnInAdditionalInformation) {
  MappingWorld world("ESADout", kCatalogue, Rules("G31_1=Description\\Part\nG33=Code"));
  world.Source("ESADoutGoods\\1\\Code", "C1");
  world.Source("ESADoutGoods\\1\\Description\\1\\Part", "AAAA BBBB CCCC DDDD EEEE");
  world.Source("ESADoutGoods\\1\\Description\\2\\Part", std::string(90, 'x'));
  EXPECT_EQ(world.Map("ESADoutGoods\\1", "TOVAR"),
            "TOVAR{G33=\"C1\" G31_1=\"AAAA BBBB CCCC DDDD\" "
            "DOPINF{NGR=\"31\" TYP_NGR=\"01\" G32=\"1\" TEXT1=\"EEEE\"}{NGR=\"31\" TYP_NGR=\"01\" "
            "G32=\"1\" TEXT1=\"" +
                std::string(80, 'x') +
                "\"}{NGR=\"31\" TYP_NGR=\"01\" G32=\"1\" "
                "TEXT1=\"xxxxxxxxxx\"}}");
}

TEST(RecordMapper, ProcessingProductsStandUnderTheirGoodsWithWasteAndHeels) {
  MappingWorld world("ESADout", kCatalogue, Rules("CODE=Code\nGU03=*GU03_2A\nCODE=*GU03_XYCode"));
  const std::string block = "ESADoutCustomsConditions#ProcessingGoods\\1\\";
  world.Source("CustomsProcedure", "ЭК");
  world.Source("ESADoutGoods\\1\\Code", "C");
  world.Source(block + "Code", "P");
  world.Source(block + "GoodsNumeric", "1");
  world.Source(block + "WasteProducts\\1\\Code", "W");
  world.Source(block + "Heels\\1\\GoodsNumeric", "7");
  // Two more records a source record: the marker's code is word 2, and each stays
  // current for the lines below it.
  EXPECT_EQ(world.Map("ESADoutCustomsConditions#ProcessingGoods\\1", "GU"),
            "TOVAR{GU{CODE=\"P\"}{GU01=\"9\" GU02=\"4\" GU03=\"2A\" G32=\"1\"}"
            "{GU01=\"9\" GU02=\"4\" GU03=\"XYCode\" G32=\"1\" CODE=\"P\"}"
            "{CODE=\"W\"}{GU01=\"9\" GU02=\"4\" GU03=\"2A\" TYPEINFO=\"2\"}"
            "{GU01=\"9\" GU02=\"4\" GU03=\"XYCode\" TYPEINFO=\"2\" CODE=\"W\"}"
            "{}{GU01=\"9\" GU02=\"4\" GU03=\"2A\" TYPEINFO=\"3\" G32=\"7\"}"
            "{GU01=\"9\" GU02=\"4\" GU03=\"XYCode\" TYPEINFO=\"3\" G32=\"7\"}}");
}

// A path keeps 255 bytes and a block's name in it 100, so this one's nested blocks
// seem to be the block itself.
TEST(RecordMapper, APathThatWasCutIsNotFollowed) {
  const std::string block = "ESADoutCustomsConditions" + std::string(76, 'x');
  MappingWorld world("S",
                     "[S.HEADER]\nXmlType=x\n[S.Fields]\n" + block +
                         " {\n  X=C1\n}\n[OUT.HEADER]\n[OUT.Fields]\nFLAT {\n  G32=C5\n}\n",
                     Rules(""));
  world.Source(block + "\\1\\X", "x");
  EXPECT_EQ(world.Map(block + std::string(153, 'y') + "\\1", "FLAT"), "FLAT{}");
}

TEST(RecordMapper, ABlockBesideTheGoodsTableNamesItsGoodsItem) {
  MappingWorld world("ESADout", kCatalogue, Rules("G33=Part"));
  world.Source("ESADoutGoods\\2\\Description\\1\\Part", "P");
  EXPECT_EQ(world.Map("ESADoutGoods\\2\\Description\\1", "TOVAR\\2\\FLAT"),
            "FLAT{G32=\"2\" G33=\"P\"}");
}

TEST(RecordMapper, AComponentListLeavesTheHeaderAsItIs) {
  MappingWorld world("GoodsComponentList", kCatalogue, Rules("T1=Number"));
  world.Source("Number", "5");
  world.target.SetField("T1", "kept");
  EXPECT_EQ(world.Map("", ""), "T1=\"kept\"");
}

}  // namespace
}  // namespace customsconv
