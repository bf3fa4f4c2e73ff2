#include "mapping/record_mapper.h"

#include <gtest/gtest.h>

#include "mapping/value_store.h"
#include "mapping_world.h"

namespace customsconv {
namespace {

constexpr const char* kSource = R"(Since=D | NAMESPACE="Since", Text=40X5, Plain=C250, Place=C20
Flag=L | Признак, Choice=L | Выбор [Нет/Да], ESADoutGoodsLocation { Place=C20 }
ESADoutGoods { Code=C10, Description { Part=C250, More=C250 } })";
constexpr const char* kTables = R"(
HEAD = DBRHEAD [G073]   : G071 C8, G072 C10, G073 C7, G19 C1, T1 C250, G30A C10
  TOVAR = DBRTOV [G073] : T1 C250
)";

MappingParts WithLines(const std::string& lines) {
  return {.source = kSource, .tables = kTables, .rules = "[T]\nBlock{\n" + lines};
}

// The header's own values that every header record gets.
const std::string kNumber = R"(G071="10702020" G072="11.06.15" G073="0001234" G19="0")";

std::string Stored(const std::string& field, const std::string& value) {
  return value.empty() ? "" : field + "=\"" + value + "\"";
}

TEST(RecordMapper, StoresByTheTypeOfTheSourceField) {
  const struct {
    const char *field, *value, *stored;
  } cases[] = {{"Since", "2009-03-05", "05.03.2009"},
               {"Since", "05-03-2009", "05.03.2009"},
               {"Since", "\r\n2009-03-05\r\n", "05.03.2009"},
               {"Since", "\t05-03-2009 ", "05.03.2009"},
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
    MappingWorld world(WithLines("T1 = " + std::string(c.field)));
    world.Source(c.field, c.value);
    EXPECT_EQ(world.Map("", ""), kNumber + Stored(" T1", c.stored));
  }
}

TEST(RecordMapper, ReducesDatesToSixDigits) {
  const std::pair<const char*, const char*> cases[] = {
      {"2009-03-05", "050309"},      {"05.03.2009", "050309"}, {"\r\n2009-03-05", "050309"},
      {" 05.03.2009\r\n", "050309"}, {"5.3.2009", "5..209"},   {" March ", " March "}};
  for (const auto& [value, digits] : cases) EXPECT_EQ(SixDigitDate(value, 2026), digits) << value;
}

TEST(RecordMapper, ResolvesExpressions) {
  const std::pair<const char*, const char*> cases[] = {
      {"code", "C2"},                      // a field of the current record, in any case
      {"Description", "one two"},          // the first field of a block's records
      {R"(Description\More)", "m1 m2"},    // a named one
      {R"(Description\2\More)", "m2"},     // of one record
      {R"(\\ESADoutGoods\1\Code)", "C1"},  // from the root
      {"Plain", ""},                       // no field of the record
      {"*DBRPASP_ReImp_Code", "C2"},       // markers in front
  };
  for (const auto& [expression, value] : cases) {
    MappingWorld world(WithLines("T1 " + std::string(expression)));
    world.Fill(R"(Plain=header, ESADoutGoods\1\Code=C1, ESADoutGoods\2\Code=C2
ESADoutGoods\2\Description\1\Part=one, ESADoutGoods\2\Description\2\Part=two
ESADoutGoods\2\Description\1\More=m1, ESADoutGoods\2\Description\2\More=m2)");
    EXPECT_EQ(world.Map(R"(ESADoutGoods\2)", "TOVAR"), "TOVAR{" + Stored("T1", value) + "}");
  }
}

TEST(RecordMapper, WritesTheGoodsLocationFromTheFirstPlaceThatIsFilled) {
  const struct {
    const char *first, *second, *stored;
  } cases[] = {{"11", "12", "11"}, {"", "12", "12"}, {"0", "12", ""}, {"", "-5", ""}};
  for (const auto& c : cases) {
    MappingWorld world(WithLines("G011=*Plain\nG30A=*Place"));
    world.Fill("Plain=never, Place=" + std::string(c.first));
    world.Source(R"(ESADoutGoodsLocation\2\Place)", c.second);
    EXPECT_EQ(world.Map("", ""), kNumber + Stored(" G30A", c.stored)) << c.first << "/" << c.second;
  }
}

// A table set whose goods table could not be opened has no goods block. What belongs under a
// goods item is then an error, and not a row of the head.
TEST(RecordMapper, PutsNothingBesideAMainBlockThatIsMissing) {
  for (const bool has_goods : {true, false}) {
    const std::string goods = has_goods ? "  TOVAR = DBRTOV : X C1\n" : "  TOVAR = NO\n";
    MappingWorld world({.source = kSource,
                        .tables = "HEAD = DBRHEAD : X C1\n  ROWS = DBRROWS : G32 C5\n" + goods});
    world.Source(R"(ESADoutGoods\1\Description\1\Part)", "p");
    const std::string error =
        ErrorOf([&] { (void)world.Map(R"(ESADoutGoods\1\Description\1)", R"(TOVAR\1\ROWS)"); });
    EXPECT_EQ(Utf8(error), has_goods ? kNoError : R"(Не могу создать блок  \TOVAR)");
    EXPECT_EQ(world.Target(), has_goods ? R"(ROWS{G32="1"})" : "");
  }
}

// A path keeps 255 bytes and a block's name in it 100, so this one's nested blocks
// seem to be the block itself.
TEST(RecordMapper, APathThatWasCutIsNotFollowed) {
  const std::string block = "ESADoutCustomsConditions" + std::string(76, 'x');
  MappingWorld world({.source = block + " { X=C1 }",
                      .tables = "HEAD = DBRHEAD : X C1\n  FLAT = DBRFLAT : G32 C5\n"});
  world.Source(block + R"(\1\X)", "x");
  EXPECT_EQ(world.Map(block + std::string(153, 'y') + R"(\1)", "FLAT"), "FLAT{}");
}

}  // namespace
}  // namespace customsconv
