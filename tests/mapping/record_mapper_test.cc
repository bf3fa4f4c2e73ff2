#include "mapping/record_mapper.h"

#include <gtest/gtest.h>

#include "mapping_world.h"

namespace customsconv {
namespace {

constexpr const char* kCatalogue =
    "[ESADout.HEADER]\nXmlType=ESADout\nMainBlock=ESADoutGoods\n[ESADout.Fields]\n"
    "Since=D | NAMESPACE=\"Since\"\nFlag=L | Признак\nChoice=L | Выбор [Нет/Да]\n"
    "Text=40X5\nPlain=C250\nPlace=C20\n"
    "ESADoutGoodsLocation {\nPlace=C20\n}\n"
    "ESADoutGoods {\nCode=C10\nDescription {\nPart=C250\nMore=C250\n}\n}\n"
    "[OUT.HEADER]\nMainBlock=TOVAR\n[OUT.Fields]\n"
    "G011=C10\nG071=C23\nG072=C10\nG073=C10\nG19=C1\nT1=C250\nG30A=C10\n"
    "TOVAR {\nT1=C250\n}\n";

std::string Rules(std::string_view lines) { return "[T]\nBlock{\n" + std::string(lines); }

// The header's own values that every header record gets.
const std::string kNumber = "G071=\"10702020\" G072=\"11.06.15\" G073=\"0001234\" G19=\"0\"";

std::string Stored(const std::string& field, const std::string& value) {
  return value.empty() ? "" : field + "=\"" + value + "\"";
}

TEST(RecordMapper, StoresByTheTypeOfTheSourceField) {
  const struct {
    const char *field, *value, *stored;
  } cases[] = {{"Since", "2009-03-05", "05.03.2009"},
               {"Since", "05-03-2009", "05.03.2009"},
               {"Since", "March", "March"},
               {"Plain", "2009-03-05", "2009-03-05"},
               {"Flag", "да", "1"},
               {"Flag", "", "0"},
               {"Choice", "дА", "1"},
               {"Choice", "Нет", "0"},
               {"Choice", "1", "0"},
               {"Plain", "", ""},
               {"Plain", "a\r\n  b", "a b"},
               {"Plain", "a  b", "a  b"},
               // Long text is read as one line, so nothing is left to clean.
               {"Text", "a\r\n  b  c", "a   b  c"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.field) + " " + c.value);
    MappingWorld world("ESADout", kCatalogue, Rules("T1 = " + std::string(c.field)));
    world.Source(c.field, c.value);
    EXPECT_EQ(world.Map("", ""), kNumber + Stored(" T1", c.stored));
  }
}

TEST(RecordMapper, ResolvesExpressions) {
  const std::pair<const char*, const char*> cases[] = {
      {"code", "C2"},                       // a field of the current record, in any case
      {"Description", "one two"},           // the first field of a block's records
      {"Description\\More", "m1 m2"},       // a named one
      {"Description\\2\\More", "m2"},       // of one record
      {"\\\\ESADoutGoods\\1\\Code", "C1"},  // from the root
      {"Plain", ""},                        // no field of the record
      {"*DBRPASP_ReImp_Code", "C2"},        // markers in front
  };
  for (const auto& [expression, value] : cases) {
    MappingWorld world("ESADout", kCatalogue, Rules("T1 " + std::string(expression)));
    world.Source("Plain", "header");
    world.Source("ESADoutGoods\\1\\Code", "C1");
    world.Source("ESADoutGoods\\2\\Code", "C2");
    world.Source("ESADoutGoods\\2\\Description\\1\\Part", "one");
    world.Source("ESADoutGoods\\2\\Description\\2\\Part", "two");
    world.Source("ESADoutGoods\\2\\Description\\1\\More", "m1");
    world.Source("ESADoutGoods\\2\\Description\\2\\More", "m2");
    EXPECT_EQ(world.Map("ESADoutGoods\\2", "TOVAR"), "TOVAR{" + Stored("T1", value) + "}");
  }
}

TEST(RecordMapper, WritesTheGoodsLocationFromTheFirstPlaceThatIsFilled) {
  const struct {
    const char *first, *second, *stored;
  } cases[] = {{"11", "12", "11"}, {"", "12", "12"}, {"0", "12", ""}, {"", "-5", ""}};
  for (const auto& c : cases) {
    MappingWorld world("ESADout", kCatalogue, Rules("G011=*Plain\nG30A=*Place"));
    world.Source("Place", c.first);
    world.Source("Plain", "never");
    world.Source("ESADoutGoodsLocation\\2\\Place", c.second);
    EXPECT_EQ(world.Map("", ""), kNumber + Stored(" G30A", c.stored)) << c.first << "/" << c.second;
  }
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

}  // namespace
}  // namespace customsconv
