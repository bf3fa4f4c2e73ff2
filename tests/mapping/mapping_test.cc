#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <sstream>

#include "dbf/dbf_cache.h"
#include "mapping/built_in/header_rules.h"
#include "mapping/mapping_line.h"
#include "mapping/record_mapper.h"
#include "mapping/section_mapper.h"
#include "mapping/value_store.h"
#include "support/catalogue_builder.h"
#include "support/document_dump.h"
#include "tables/dbf_document.h"

namespace customsconv {
namespace {

TEST(RulesFile, LinesEndAtCrLfCrOrLf) {
  const RulesFile rules("a\r\nb\rc\n\nd");
  ASSERT_EQ(rules.Count(), 5);
  EXPECT_EQ(rules.Line(2), "c");
  EXPECT_EQ(rules.Line(3), "");
  EXPECT_EQ(rules.Line(4), "d");
  EXPECT_EQ(ErrorOf([&] { (void)rules.ShortLine(5); }), "List index out of bounds (5)");
}

TEST(RulesFile, FindsTheFirstSectionWhoseKindsLineHoldsTheKind) {
  const RulesFile rules(
      "[SUB]\nBlock{\n[SBRHEAD]\n=DTSout_CU\n[DBRHEAD x]\n=esadout,KTDout\n[OTHER]\n"
      "=ESADout\n[LAST]");
  const std::pair<const char*, int> cases[] = {
      {"ESADout", 4}, {"DTSout", 2}, {"KTDout", 4}, {"Inventory", -1}, {"Block", -1}};
  for (const auto& [kind, line] : cases) {
    EXPECT_EQ(rules.FindSection(kind).value_or(-1), line) << kind;
  }
  EXPECT_EQ(rules.TableName(4), "DBRHEAD");
  EXPECT_EQ(rules.NextHeader(4), 6);
  EXPECT_EQ(rules.NextHeader(8), rules.Count());
}

TEST(MappingLines, SplitAtBlanksExclamationMarksAndEqualSigns) {
  const RulesFile rules(
      "[T]\nBlock{\nG33=Code\nG34 Name rest\n!G35!! = Sum\nG36\n;G37=Skipped\n\n   \n" +
      std::string(250, ' ') + "G38 = Cut\n[NEXT]\nG39=No");
  std::string seen;
  for (const MappingLine& line : MappingLinesOf(rules, 0)) {
    seen += std::to_string(line.index) + ":" + std::string(line.field) + "<" +
            std::string(line.expression) + " ";
  }
  // The last line is cut at 255 bytes, which leaves "G38 =".
  EXPECT_EQ(seen, "2:G33<Code 3:G34<Name 4:G35<Sum 5:G36< 9:G38< ");
}

// What a MappingWorld is made of. Texts are UTF-8 with "\n" between lines.
struct MappingParts {
  const char* kind = "ESADout";
  std::string source{};  // the fields of the kind; its main block is ESADoutGoods
  std::string tables{};  // as CatalogueWorld::TableSet takes them
  std::string rules = "[T]\nBlock{\n";
};

// A source document, a target document with the main block TOVAR, and rules between them.
class MappingWorld {
 public:
  explicit MappingWorld(const MappingParts& parts)
      : world_(TypeText(parts.kind, "XmlType=x\nMainBlock=ESADoutGoods", parts.source)),
        rules_(Win(parts.rules), "C:\\RULES\\armti.txt") {
    world_.TableSet("OUT", parts.tables);
    types_ = std::make_unique<TDocTypeList>("Kordwin.dcf", false, world_);
    source_ = CreateDocument(parts.kind, *types_, world_);
    target_ = CreateDbfDocument("OUT", "C:\\OUT\\", *types_, cache_, world_);
    source_->OpenBlock("");
    target_->OpenBlock("");
    run_.registration_number = "10702020/110615/0001234";
    records_.emplace(Documents());
  }

  // Sets values of the source, "Goods\2\Code=x" a line, and opens the records on the way.
  void Fill(const std::string& values) {
    std::istringstream lines(values);
    for (std::string line; std::getline(lines, line);) {
      const std::size_t equals = line.find('=');
      Source(line.substr(0, equals), line.substr(equals + 1));
    }
  }
  void Source(std::string_view path, std::string_view value) {
    for (std::size_t end = path.find('\\'); end != std::string_view::npos;
         end = path.find('\\', end + 1)) {
      const std::string block = "\\\\" + std::string(path.substr(0, end));
      end = path.find('\\', end + 1);
      const int number = std::stoi(std::string(path.substr(block.size() - 1, end)));
      while (source_->RecordCount(block) < number) source_->OpenBlock(block);
    }
    source_->SetCurrentPath("\\\\");
    source_->SetFieldEx("\\\\" + std::string(path), Win(value));
  }

  // Maps one record, or the first section; the result is the whole target.
  std::string Map(std::string_view path, std::string_view block) {
    records_->MapBlockRecord(path, block, /*header=*/0);
    return Target();
  }
  std::string MapSection() {
    MapTableSection(Documents(), /*start_line=*/0);
    return Target();
  }

  [[nodiscard]] std::string Source() const { return Dump(source_->RootRecord()); }
  [[nodiscard]] std::string Target() const { return Dump(target_->RootRecord()); }
  // The rows that a table has once the target is saved.
  std::string Saved(const std::string& table) {
    target_->Save("C:\\OUT\\");
    return world_.Rows(table);
  }
  // The messages, one behind the other.
  [[nodiscard]] std::string Shown() const {
    std::string shown;
    for (const std::string& message : world_.host.dialogs.messages) shown += Utf8(message);
    return shown;
  }

 private:
  DocumentPair Documents() { return {run_, *source_, *target_}; }

  CatalogueWorld world_;
  TDbfCache cache_{world_.host};
  RulesFile rules_;
  std::unique_ptr<TDocTypeList> types_;
  std::unique_ptr<TDocument> source_;
  std::unique_ptr<TDbfDocument> target_;
  MappingRun run_{world_, rules_};
  std::optional<RecordMapper> records_;
};

constexpr const char* kSource = R"(Since=D | NAMESPACE="Since"
Text=40X5
Plain=C250
Place=C20
Flag=L | Признак
Choice=L | Выбор [Нет/Да]
ESADoutGoodsLocation { Place=C20 }
ESADoutGoods { Code=C10
Description { Part=C250
More=C250 } })";
constexpr const char* kTables = R"(
HEAD = DBRHEAD [G073]   : G071 C8, G072 C10, G073 C7, G011 C5, G19 C1, T1 C250, G30A C9
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

// Long text is read as one line, so nothing is left to clean.
TEST(RecordMapper, StoresByTheTypeOfTheSourceField) {
  for (const auto& [filled, stored] :
       Cases({"Since=2009-03-05 -> 05.03.2009", "Since=05-03-2009 -> 05.03.2009",
              "Since=\r\n2009-03-05\r\n -> 05.03.2009", "Since=\t05-03-2009  -> 05.03.2009",
              "Since=March -> March", "Plain=2009-03-05 -> 2009-03-05", "Flag=да -> 1",
              "Flag= -> 0", "Choice=дА -> 1", "Choice=Нет -> 0", "Choice=1 -> 0", "Plain= -> ",
              "Plain=a\r\n  b -> a b", "Plain=a  b -> a  b", "Text=a\r\n  b  c -> a   b  c"})) {
    const std::string field = filled.substr(0, filled.find('='));
    MappingWorld world(WithLines("T1 = " + field));
    world.Source(field, filled.substr(field.size() + 1));
    EXPECT_EQ(world.Map("", ""), kNumber + Stored(" T1", stored)) << filled;
  }
}

TEST(RecordMapper, ReducesDatesToSixDigits) {
  for (const auto& [value, digits] :
       Cases({"2009-03-05 -> 050309", "05.03.2009 -> 050309", "\r\n2009-03-05 -> 050309",
              " 05.03.2009\r\n -> 050309", "5.3.2009 -> 5..209", " March  ->  March "})) {
    EXPECT_EQ(SixDigitDate(value, 2026), digits) << value;
  }
}

// Fields of the current record in any case; of a block's records the first field or a named one.
TEST(RecordMapper, ResolvesExpressions) {
  for (const auto& [expression, value] :
       Cases({"code -> C2", "Description -> one two", "Description\\More -> m1 m2",
              "Description\\2\\More -> m2", "\\\\ESADoutGoods\\1\\Code -> C1", "Plain -> ",
              "*DBRPASP_ReImp_Code -> C2"})) {
    MappingWorld world(WithLines("T1 " + expression));
    world.Fill(R"(Plain=header
ESADoutGoods\1\Code=C1
ESADoutGoods\2\Code=C2
ESADoutGoods\2\Description\1\Part=one
ESADoutGoods\2\Description\2\Part=two
ESADoutGoods\2\Description\1\More=m1
ESADoutGoods\2\Description\2\More=m2)");
    EXPECT_EQ(world.Map(R"(ESADoutGoods\2)", "TOVAR"), "TOVAR{" + Stored("T1", value) + "}");
  }
}

TEST(RecordMapper, WritesTheGoodsLocationFromTheFirstPlaceThatIsFilled) {
  for (const auto& [places, stored] : Cases({"11 12 -> 11", " 12 -> 12", "0 12 -> ", " -5 -> "})) {
    const std::size_t blank = places.find(' ');
    MappingWorld world(WithLines("G011=*Plain\nG30A=*Place"));
    world.Fill("Plain=never\nPlace=" + places.substr(0, blank));
    world.Source(R"(ESADoutGoodsLocation\2\Place)", places.substr(blank + 1));
    EXPECT_EQ(world.Map("", ""), kNumber + Stored(" G30A", stored)) << places;
  }
}

// Without its goods table a set has no goods block: what belongs under it is no row of the head.
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

// A path keeps 255 bytes: the nested blocks of this one seem to be the block itself.
TEST(RecordMapper, APathThatWasCutIsNotFollowed) {
  const std::string block = "ESADoutCustomsConditions" + std::string(76, 'x');
  MappingWorld world({.source = block + " { X=C1 }",
                      .tables = "HEAD = DBRHEAD : X C1\n  FLAT = DBRFLAT : G32 C5\n"});
  world.Source(block + R"(\1\X)", "x");
  EXPECT_EQ(world.Map(block + std::string(153, 'y') + R"(\1)", "FLAT"), "FLAT{}");
}

// Two blocks of the header and one under the goods, each with one field, into one table.
MappingParts Parts(const std::string& rules) {
  return {.kind = Contains(rules, "=DTSout_CU") ? "DTSout_CU" : "ESADout",
          .source = "Proc=C9\nA { X=C9 }\nMechUnitPart { X=C9 }\nESADoutGoods { Docs { X=C9 } }",
          .tables = R"(
HEAD = DBRHEAD   : G011 C9
  ROWS = DBRROWS : T C9
  TOVAR = DBRTOV : X C1
    DOCS = DBRDOCS : T C9
    KMPK = DBRKMPK : X C1
)",
          .rules = rules};
}

TEST(SectionMapper, TakesTheRecordsOfTheBlocksThatItsLinesName) {
  const std::string in_rows = "[S]\n=ESADout\n[dbrrows.x]\n";
  const std::string file = " файла C:\\RULES\\armti.txt";
  const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
      {"one block", in_rows + "A{ and more\nT=X", R"(ROWS{T="a1"}{T="a2"})", ""},
      {"under the goods", "[S]\n=ESADout\n[DBRDOCS]\nDocs{\nT=X", R"(TOVAR{DOCS{T="d"}})", ""},
      {"no block", in_rows + "Nothing{\n", "", "Не найден блок Nothing" + file},
      {"no brace", in_rows + "A\n", "", "Не задан тип блока в строке 2" + file},
      {"no table", "[S]\n=ESADout\n[NOTAB]\nA{", "", "Не описана таблица NOTAB в документе OUT"},
      {"declared blocks", in_rows + "*{\n;a name A {\nT=X\n;Docs?{\n;A;{\n[DBRROWS]\nA",
       R"(ROWS{T="a1"}{T="a2"}{T="a1"}{T="a2"})", "Не задан тип блока в строке 8" + file},
      {"the parts of a mechanism", in_rows + "MechUnitPart*{\n;A{\nT=X", R"(ROWS{T="m"})", ""},
      // Its name with the star is told as missing before the block is taken.
      {"declared parts", in_rows + "*{\n;MechUnitPart*{\n;A{\nT=X",
       R"(ROWS{T="m"}{T="a1"}{T="a2"})", "Не найден блок MechUnitPart*" + file},
      {"no declaring line", in_rows + "*{\nT=X", "", ""},
      {"the next section is another's", "[S]\n=ESADout\nG011=Proc\n[S2]\n=ESADout\nG011=No",
       R"(G011="IM")", ""},
      {"a value declaration may lack a block", "[S]\n=DTSout_CU\n[DBRROWS]\nNothing{", "", ""}};
  for (const auto& [what, rules, target, shown] : cases) {
    SCOPED_TRACE(what);
    MappingWorld world(Parts(rules));
    world.Fill(R"(Proc=IM
A\1\X=a1
A\2\X=a2
MechUnitPart\1\X=m
ESADoutGoods\2\Docs\1\X=d)");
    EXPECT_EQ(world.MapSection(), target);
    EXPECT_EQ(world.Shown(), shown);
  }
}

constexpr const char* kRuleTables = R"(
HEAD = DBRHEAD [G073]   : G073 C7, G011 C10, G071 C23, G072 C10, G19 C1, TM C23
  ROWS = DBRROWS [G073] : G073 C7, NPOZ C5, PKSIGN C1, G4401 C5, G4402 C5
)";

TEST(BuiltInRules, RegistrationDate) {
  for (const auto& [digits, date] :
       Cases({"050309 -> 05.03.09", "05039 -> 05.03.09", "05032009 -> 05.03.09", "0503 -> ",
              "310209 -> ", "010190 -> ", "020190 -> 02.01.90", "261227 -> 26.12.27", "271227 -> ",
              "0503x9 -> "})) {
    EXPECT_EQ(RegistrationDate(digits, *DateOf({2026, 11, 22})), date) << digits;
  }
}

// The others stand in the converted examples.
TEST(BuiltInRules, RecordCodesByTheSourceBlock) {
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"KTSout", "DeliveryTerms", ""},
      {"ESADout", "GoodsPackaging#PackingInformation_UnitPackInfo", R"(PKSIGN="1")"},
      {"ESADout", "outPresentedDocument#PaymentGuaranteeDocument", R"(G4401="7" G4402="2")"},
      {"ESADout", "outPresentedDocument#ExciseDocument", R"(G4401="8")"},
      {"ESADout", "outPresentedDocument#EconomicAreaDocuments", R"(G4401="9" G4402="1")"},
      {"DTSout", "DTSAdditionalPayments#PaymentConditionDescription", R"(NPOZ="9B")"},
      {"ESADout", "CostConfirmationDocument", ""}};
  for (const auto& [kind, block, written] : cases) {
    MappingWorld world({.kind = kind, .source = block + " { X=C5 }", .tables = kRuleTables});
    world.Fill(block + R"(\1\X=x)");
    EXPECT_EQ(world.Map(block + R"(\1)", "ROWS"), "ROWS{" + written + "}") << block;
  }
}

// The other persons move in the converted examples. The long names have more than 100 bytes.
TEST(BuiltInRules, TransitMovesPersonsAsFarAsTheyHaveAPlace) {
  const std::string declarant = "ESADoutDeclarant#" + std::string(85, 'x');
  const std::string responsible =
      "ESADoutFinancialAdjustingResponsiblePerson#" + std::string(85, 'x');
  MappingWorld world({.source = R"(CustomsProcedure=C2
TransitDirectionCode=C2
ESADoutDeclarant#Name=C20
ESADoutCarrier#Name=C20
ESADoutCarrier#Only=C20
ESADoutPrincipal#ESADPrincipalRepresentative { Post=C20 }
)" + declarant + "=C5\n" + responsible +
                                "=C5",
                      .tables = kRuleTables});
  world.Fill(R"(CustomsProcedure=ТТ
TransitDirectionCode=ИМ
ESADoutCarrier#Name=Carrier
ESADoutCarrier#Only=stays
ESADoutPrincipal#ESADPrincipalRepresentative\1\Post=gone
)" + declarant +
             "=long");
  world.Map("", "");
  EXPECT_EQ(world.Source(),
            R"(CustomsProcedure="ТИ" TransitDirectionCode="ИМ" ESADoutDeclarant#Name="Carrier" )"
            R"(ESADoutCarrier#Only="stays" ESADoutPrincipal#ESADPrincipalRepresentative{} )" +
                responsible + R"(="long")");
}

// What is not filled has no record. The goods item's keys, G32 among them, come with the save.
TEST(BuiltInRules, TransitRecordsHangOnTheFirstGoodsItem) {
  MappingWorld world({.source = R"(CustomsProcedure=C2
VIN=C20
TransportMarkCode=C5
Guarantee#MeasureCode=C5
Guarantee#GuaranteeReference { OtherGuaranteeNumber=C10
LimitationNonEC#NotValid4Country=C5 }
ESADoutCarrier#ESADDriverInformation { PersonPost=C10
PersonName=C10 }
ESADoutGoods { Number=N5 })",
                      .tables = R"(
HEAD = DBRHEAD [G073]          : G073 C7
  TOVAR = DBRTOV [G073]        : G073 C7, G32 N5
    TECHD = DBRTECHD [G073+G32] : G073 C7, G32 N5, G4402 C2, G44020 C2, G444 C60
)",
                      .rules = "[S]\n=ESADout\n[DBRTOV]\nESADoutGoods{\nG32=Number\n"});
  world.Fill(
      R"(VIN=  X9L  
TransportMarkCode= 
CustomsProcedure=В
Guarantee#GuaranteeReference\1\OtherGuaranteeNumber=123
Guarantee#GuaranteeReference\1\LimitationNonEC#NotValid4Country=RU
ESADoutCarrier#ESADDriverInformation\1\PersonPost=Driver
ESADoutCarrier#ESADDriverInformation\1\PersonName=Person
ESADoutGoods\1\Number=1
ESADoutGoods\2\Number=2)");
  world.MapSection();
  EXPECT_EQ(world.Saved("DBRTECHD"), R"(1: G073="0001234" G32="    1" G4402="7" G444="|123| |RU"
2: G073="0001234" G32="    1" G4402="8" G44020="6" G444="X9L"
3: G073="0001234" G32="    1" G4402="9" G444="Driver : Person"
)");
}

TEST(BuiltInRules, AdjustmentsAreNumberedOverTheRun) {
  MappingWorld world({.kind = "KTDout", .tables = kRuleTables});
  world.Map("", "");
  EXPECT_EQ(world.Map("", ""),
            "G073=\"0001234\" G011=\"КТ\" G071=\"КT000002\" G072=\"11.06.15\" G19=\"0\" "
            "TM=\"10702020\"");
}

}  // namespace
}  // namespace customsconv
