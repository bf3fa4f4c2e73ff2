#include <gtest/gtest.h>

#include "mapping/built_in/header_rules.h"
#include "mapping_world.h"

namespace customsconv {
namespace {

constexpr const char* kTarget =
    "[OUT.HEADER]\nMainBlock=TOVAR\n[OUT.Fields]\n"
    "G011=C10\nG071=C23\nG072=C10\nG073=C10\nG19=C1\nTM=C23\n"
    "ROWS {\nNPOZ=C5\nPKSIGN=C1\nG4401=C5\nG4402=C5\n}\n";

constexpr const char* kDeclaration =
    "[ESADout.HEADER]\nXmlType=x\nMainBlock=ESADoutGoods\n[ESADout.Fields]\n"
    "CustomsProcedure=C2\nTransitDirectionCode=C2\n"
    "ESADoutDeclarant#Name=C20\nESADoutDeclarant#Flag=L\n"
    "ESADoutDeclarant#ESADoutFilledPerson#Name=C20\n"
    "ESADoutCarrier#Name=C20\nESADoutCarrier#Only=C20\n"
    "ESADoutFinancialAdjustingResponsiblePerson#Name=C20\n"
    "ESADoutFinancialAdjustingResponsiblePerson#Flag=C5\n"
    "ESADoutPrincipal#ESADPrincipalRepresentative {\nName=C20\nPost=C20\n}\n";

// A source kind with one block of that name, for rules that look at the path only.
std::string KindWithBlock(const std::string& kind, const std::string& block) {
  return "[" + kind + ".HEADER]\nXmlType=x\n[" + kind + ".Fields]\n" + block + " {\n  X=C5\n}\n" +
         kTarget;
}

constexpr const char* kRules = "[T]\nBlock{\n";

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
      {"ESADout", "GoodsPackaging#PackingInformation_UnitPackInfo", "PKSIGN=\"1\""},
      {"ESADout", "outPresentedDocument#PaymentGuaranteeDocument", "G4401=\"7\" G4402=\"2\""},
      {"ESADout", "outPresentedDocument#ExciseDocument", "G4401=\"8\""},
      {"ESADout", "outPresentedDocument#EconomicAreaDocuments", "G4401=\"9\" G4402=\"1\""},
      {"DTSout", "DTSAdditionalPayments#PaymentConditionDescription", "NPOZ=\"9B\""},
      {"ESADout", "CostConfirmationDocument", ""}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.block);
    MappingWorld world(c.kind, KindWithBlock(c.kind, c.block), kRules);
    world.Source(std::string(c.block) + "\\1\\X", "x");
    EXPECT_EQ(world.Map(std::string(c.block) + "\\1", "ROWS"),
              "ROWS{" + std::string(c.written) + "}");
  }
}

TEST(BuiltInRules, TransitMovesThePersonsOfTheSource) {
  // A name that the persons in front of it make longer than 100 bytes.
  const std::string long_name(60, 'x');
  const std::string long_fields = "ESADoutDeclarant#" + long_name +
                                  "=C5\nESADoutFinancialAdjustingResponsiblePerson#" + long_name +
                                  "=C5\n";
  MappingWorld world("ESADout", kDeclaration + long_fields + kTarget, kRules);
  world.Source("CustomsProcedure", "ТТ");
  world.Source("TransitDirectionCode", "ИМ");
  world.Source("ESADoutDeclarant#Name", "Declarant");
  world.Source("ESADoutDeclarant#" + long_name, "long");
  world.Source("ESADoutDeclarant#ESADoutFilledPerson#Name", "Former");
  world.Source("ESADoutCarrier#Name", "Carrier");
  world.Source("ESADoutCarrier#Only", "stays");
  world.Source("ESADoutPrincipal#ESADPrincipalRepresentative\\1\\Name", "Person");
  world.Source("ESADoutPrincipal#ESADPrincipalRepresentative\\1\\Post", "gone");
  world.Map("", "");
  EXPECT_EQ(Dump(world.source.RootRecord()),
            "CustomsProcedure=\"ТИ\" TransitDirectionCode=\"ИМ\" ESADoutDeclarant#Name=\"Carrier\" "
            "ESADoutDeclarant#ESADoutFilledPerson#Name=\"Person\" ESADoutCarrier#Only=\"stays\" "
            "ESADoutFinancialAdjustingResponsiblePerson#Name=\"Declarant\" "
            "ESADoutFinancialAdjustingResponsiblePerson#Flag=\"0\" "
            "ESADoutPrincipal#ESADPrincipalRepresentative{} "
            "ESADoutFinancialAdjustingResponsiblePerson#" +
                long_name + "=\"long\"");
  EXPECT_TRUE(world.run.transit);
}

TEST(BuiltInRules, AdjustmentsAreNumberedOverTheRun) {
  MappingWorld world("KTDout", KindWithBlock("KTDout", "Block"), kRules);
  world.Map("", "");
  EXPECT_EQ(world.Map("", ""),
            "G011=\"КТ\" G071=\"КT000002\" G072=\"11.06.15\" G073=\"0001234\" G19=\"0\" "
            "TM=\"10702020\"");
}

}  // namespace
}  // namespace customsconv
