#include <gtest/gtest.h>

#include "mapping/built_in/header_rules.h"
#include "mapping_world.h"

namespace customsconv {
namespace {

constexpr const char* kTables = R"(
HEAD = DBRHEAD [G073]   : G073 C7, G011 C10, G071 C23, G072 C10, G19 C1, TM C23
  ROWS = DBRROWS [G073] : G073 C7, NPOZ C5, PKSIGN C1, G4401 C5, G4402 C5
)";

TEST(BuiltInRules, RegistrationDate) {
  const Date today = *DateOf({2026, 11, 22});
  const std::pair<const char*, const char*> cases[] = {
      {"050309", "05.03.09"}, {"05039", "05.03.09"},  {"05032009", "05.03.09"},
      {"0503", ""},           {"310209", ""},         {"010190", ""},
      {"020190", "02.01.90"}, {"261227", "26.12.27"}, {"271227", ""},
      {"0503x9", ""}};
  for (const auto& [digits, date] : cases) EXPECT_EQ(RegistrationDate(digits, today), date);
}

// The others stand in the converted examples.
TEST(BuiltInRules, RecordCodesByTheSourceBlock) {
  const struct {
    const char *kind, *block, *written;
  } cases[] = {
      {"KTSout", "DeliveryTerms", ""},
      {"ESADout", "GoodsPackaging#PackingInformation_UnitPackInfo", R"(PKSIGN="1")"},
      {"ESADout", "outPresentedDocument#PaymentGuaranteeDocument", R"(G4401="7" G4402="2")"},
      {"ESADout", "outPresentedDocument#ExciseDocument", R"(G4401="8")"},
      {"ESADout", "outPresentedDocument#EconomicAreaDocuments", R"(G4401="9" G4402="1")"},
      {"DTSout", "DTSAdditionalPayments#PaymentConditionDescription", R"(NPOZ="9B")"},
      {"ESADout", "CostConfirmationDocument", ""}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.block);
    const std::string block = c.block;
    MappingWorld world({.kind = c.kind, .source = block + " { X=C5 }", .tables = kTables});
    world.Fill(block + R"(\1\X=x)");
    EXPECT_EQ(world.Map(block + R"(\1)", "ROWS"), "ROWS{" + std::string(c.written) + "}");
  }
}

TEST(BuiltInRules, TransitMovesThePersonsOfTheSource) {
  // A name that the persons in front of it make longer than 100 bytes.
  const std::string long_name(60, 'x');
  MappingWorld world({.source = R"(CustomsProcedure=C2, TransitDirectionCode=C2
ESADoutDeclarant#Name=C20, ESADoutDeclarant#Flag=L, ESADoutDeclarant#ESADoutFilledPerson#Name=C20
ESADoutCarrier#Name=C20, ESADoutCarrier#Only=C20
ESADoutFinancialAdjustingResponsiblePerson#Name=C20
ESADoutFinancialAdjustingResponsiblePerson#Flag=C5
ESADoutPrincipal#ESADPrincipalRepresentative { Name=C20, Post=C20 }, ESADoutDeclarant#)" +
                                long_name + "=C5, ESADoutFinancialAdjustingResponsiblePerson#" +
                                long_name + "=C5",
                      .tables = kTables});
  world.Fill(R"(CustomsProcedure=ТТ, TransitDirectionCode=ИМ, ESADoutDeclarant#Name=Declarant
ESADoutDeclarant#ESADoutFilledPerson#Name=Former, ESADoutCarrier#Name=Carrier
ESADoutCarrier#Only=stays, ESADoutPrincipal#ESADPrincipalRepresentative\1\Name=Person
ESADoutPrincipal#ESADPrincipalRepresentative\1\Post=gone, ESADoutDeclarant#)" +
             long_name + "=long");
  world.Map("", "");
  EXPECT_EQ(world.Source(),
            R"(CustomsProcedure="ТИ" TransitDirectionCode="ИМ" ESADoutDeclarant#Name="Carrier" )"
            R"(ESADoutDeclarant#ESADoutFilledPerson#Name="Person" ESADoutCarrier#Only="stays" )"
            R"(ESADoutFinancialAdjustingResponsiblePerson#Name="Declarant" )"
            R"(ESADoutFinancialAdjustingResponsiblePerson#Flag="0" )"
            "ESADoutPrincipal#ESADPrincipalRepresentative{} "
            "ESADoutFinancialAdjustingResponsiblePerson#" +
                long_name + R"(="long")");
  EXPECT_TRUE(world.run().transit_records_wait);
}

// Office, vehicle and drivers stand at one goods item each; what is not filled has no record. The
// goods item's keys, G32 among them, come with the save.
TEST(BuiltInRules, TransitRecordsHangOnTheFirstGoodsItem) {
  MappingWorld world({.source = R"(CustomsProcedure=C2, VIN=C20, TransportMarkCode=C5
Guarantee#MeasureCode=C5
Guarantee#GuaranteeReference { OtherGuaranteeNumber=C10, LimitationNonEC#NotValid4Country=C5 }
ESADoutCarrier#ESADDriverInformation {
PersonPost=C10, PersonName=C10, IdentityCard#IdentityCardDate=C10 }
ESADoutGoods { Number=N5 })",
                      .tables = R"(
HEAD = DBRHEAD [G073]          : G073 C7
  TOVAR = DBRTOV [G073]        : G073 C7, G32 N5
    TECHD = DBRTECHD [G073+G32] : G073 C7, G32 N5, G4402 C2, G44020 C2, G444 C60
)",
                      .rules = "[S]\n=ESADout\n[DBRTOV]\nESADoutGoods{\nG32=Number\n"});
  world.Fill(
      R"(VIN=  X9L  , TransportMarkCode= , CustomsProcedure=В
Guarantee#GuaranteeReference\1\OtherGuaranteeNumber=123
Guarantee#GuaranteeReference\1\LimitationNonEC#NotValid4Country=RU
ESADoutCarrier#ESADDriverInformation\1\PersonPost=Driver
ESADoutCarrier#ESADDriverInformation\1\PersonName=Person
ESADoutCarrier#ESADDriverInformation\2\IdentityCard#IdentityCardDate=01.02.99
ESADoutGoods\1\Number=1, ESADoutGoods\2\Number=2)");
  world.MapSection();
  EXPECT_EQ(world.Saved("DBRTECHD"), R"(1: G073="0001234" G32="    1" G4402="7" G444="|123| |RU"
2: G073="0001234" G32="    1" G4402="8" G44020="6" G444="X9L"
3: G073="0001234" G32="    1" G4402="9" G444="Driver : Person"
4: G073="0001234" G32="    1" G4402="9" G444="ОТ 01.02.99"
)");
  EXPECT_FALSE(world.run().transit_records_wait);
}

TEST(BuiltInRules, AdjustmentsAreNumberedOverTheRun) {
  MappingWorld world({.kind = "KTDout", .tables = kTables});
  world.Map("", "");
  EXPECT_EQ(world.Map("", ""),
            "G073=\"0001234\" G011=\"КТ\" G071=\"КT000002\" G072=\"11.06.15\" G19=\"0\" "
            "TM=\"10702020\"");
}

}  // namespace
}  // namespace customsconv
