#include <gtest/gtest.h>

#include "mapping/built_in/header_rules.h"
#include "mapping_world.h"

namespace customsconv {
namespace {

constexpr const char* kTarget =
    "[OUT.HEADER]\nMainBlock=TOVAR\n[OUT.Fields]\n"
    "G011=C10\nG071=C23\nG072=C10\nG073=C10\nG19=C1\nTM=C23\n"
    "TRANS {\n  NGR=C5\n  VIDTRANS=C5\n  NTRANS=C20\n  G212=C5\n}\n"
    "SUMPP {\n  NUMPDOK=C10\n  DATPDOK=C10\n}\n"
    "ROWS {\n  NGR=C5\n  VIDTRANS=C5\n  G212=C5\n  NPOZ=C5\n  PKSIGN=C1\n  G4401=C5\n  G4402=C5\n"
    "  G4493=C20\n  G32=C5\n  G32G=C5\n  KMPFB=C5\n  KMPK=C5\n}\n"
    "TOVAR {\n  G32=C5\n"
    "  TECHD {\n    G4402=C5\n    G44020=C5\n    G444=C250\n  }\n"
    "  GRINF {\n    NGR=C5\n    TYP_NGR=C5\n    G32=C5\n    G32G=C5\n    TEXT1=C80\n  }\n"
    "  GRSER {\n    G32=C5\n    G32G=C5\n    NUMREC=C5\n    G31_15_SN=C50\n  }\n"
    "  GR {\n    G32G=C5\n    NAME=C20\n  }\n"
    "}\n";

constexpr const char* kDeclaration =
    "[ESADout.HEADER]\nXmlType=x\nMainBlock=ESADoutGoods\n[ESADout.Fields]\n"
    "CustomsProcedure=C2\nTransitDirectionCode=C2\n"
    "ESADoutConsigment#ESADoutBorderTransport#TransportModeCode=C2\n"
    "ESADoutConsigment#ESADoutBorderTransport#TransportNationalityCode=C2\n"
    "ESADoutConsigment#ESADoutDepartureArrivalTransport#TransportModeCode=C2\n"
    "ESADoutConsigment#DeliveryCustomsOffice#Code=C8\n"
    "VIN=C20\n"
    "Guarantee#MeasureCode=C5\n"
    "ESADoutDeclarant#Name=C20\nESADoutDeclarant#Flag=L\n"
    "ESADoutDeclarant#ESADoutFilledPerson#Name=C20\n"
    "ESADoutCarrier#Name=C20\nESADoutCarrier#Only=C20\n"
    "ESADoutFinancialAdjustingResponsiblePerson#Name=C20\n"
    "ESADoutFinancialAdjustingResponsiblePerson#Flag=C5\n"
    "ESADoutPrincipal#ESADPrincipalRepresentative {\n  Name=C20\n  Post=C20\n}\n"
    "ESADoutCarrier#ESADDriverInformation {\n  PersonPost=C20\n  PersonName=C20\n"
    "  IdentityCard#IdentityCardDate=C10\n}\n"
    "ESADoutGoodsLocation {\n  Transport#TransporIdentifier=C100\n  Transport#TransporKind=C2\n}\n"
    "Guarantee#GuaranteeReference {\n  OtherGuaranteeNumber=C20\n  "
    "LimitationNonEC#NotValid4Country=C5\n}\n"
    "ESADoutPayments#Row {\n  Sum=C10\n"
    "  PaymentDocument {\n    PrDocumentNumber=C10\n    PrDocumentDate=C10\n  }\n}\n"
    "ESADoutGoods {\n"
    "  Code=C10\n"
    "  outPresentedDocument#StoreTransferDoc#TransferImportCode=C20\n"
    "  outPresentedDocument#StoreTransferDoc#TransferExportCode=C20\n"
    "  outPresentedDocument#WarehouseDocument {\n    Number=C5\n  }\n"
    "  GoodsGroupDescription {\n"
    "    GoodsDescription {\n      Text=C250\n    }\n"
    "    GoodsGroupInformation {\n      SerialNumber=C250\n      Name=C20\n    }\n"
    "  }\n"
    "}\n";

// A source kind with one block of that name, for rules that look at the path only.
std::string KindWithBlock(const std::string& kind, const std::string& block) {
  return "[" + kind + ".HEADER]\nXmlType=x\n[" + kind + ".Fields]\n" +
         "ESADoutConsigment#ESADoutBorderTransport#TransportModeCode=C2\n" + block +
         " {\n  X=C5\n  MechUnit {\n    X=C5\n  }\n}\n" + kTarget;
}

constexpr const char* kRules = "[T]\nBlock{\n";

TEST(BuiltInRules, RegistrationDate) {
  const Date today = *DateOf({2026, 11, 22});
  const struct {
    const char* digits;
    const char* date;
  } cases[] = {{"050309", "05.03.09"}, {"05039", "05.03.09"},  {"05032009", "05.03.09"},
               {"0503", ""},           {"310209", ""},         {"010190", ""},
               {"020190", "02.01.90"}, {"261227", "26.12.27"}, {"271227", ""},
               {"0503x9", ""}};
  for (const auto& c : cases) EXPECT_EQ(RegistrationDate(c.digits, today), c.date) << c.digits;
}

TEST(BuiltInRules, RecordCodesByTheSourceBlock) {
  const struct {
    const char* kind;
    const char* block;
    const char* written;
  } cases[] = {
      {"ESADout", "XoutConsigment#BorderTransport#TransportMeans", "NGR=\"21\" VIDTRANS=\"31\""},
      {"ESADout", "XoutConsigment#LoadingPlace#LoadingPlaceOther", "NGR=\"27\""},
      {"ESADout", "ESADoutConsigment#BorderCustomsOffice", "NGR=\"29\""},
      {"DTSout", "DeliveryTerms", "NPOZ=\"3\""},
      {"KTSout", "DeliveryTerms", ""},
      {"ESADout", "GoodsPackaging#PackingInformation", "PKSIGN=\"0\""},
      {"ESADout", "GoodsPackaging#PackingInformation_UnitPackInfo", "PKSIGN=\"1\""},
      {"ESADout", "GoodsPackaging#PalleteInformation", "PKSIGN=\"3\""},
      {"ESADout", "outPresentedDocument#PaymentPrivilegeDocument", "G4401=\"7\" G4402=\"1\""},
      {"ESADout", "outPresentedDocument#PaymentGuaranteeDocument", "G4401=\"7\" G4402=\"2\""},
      {"ESADout", "outPresentedDocument#ExciseDocument", "G4401=\"8\""},
      {"ESADout", "outPresentedDocument#EconomicAreaDocuments", "G4401=\"9\" G4402=\"1\""},
      {"ESADout", "outPresentedDocument#ReimportDocument", "G4401=\"9\" G4402=\"6\""},
      {"ESADout", "MechanismUnit", "G32=\"1\" KMPFB=\"1\""},
      {"DTSout", "Column7CDescription", "NPOZ=\"7C\""},
      {"DTSout", "DTSAdditionalPayments#PaymentConditionDescription", "NPOZ=\"9B\""},
      {"DTSout", "CostConfirmationDocument", "NPOZ=\"8\""},
      {"ESADout", "CostConfirmationDocument", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.block);
    MappingWorld world(c.kind, KindWithBlock(c.kind, c.block), kRules);
    world.Source("ESADoutConsigment#ESADoutBorderTransport#TransportModeCode", "31");
    world.Source(std::string(c.block) + "\\1\\X", "x");
    EXPECT_EQ(world.Map(std::string(c.block) + "\\1", "ROWS"),
              "ROWS{" + std::string(c.written) + "}");
  }
}

class DeclarationRules : public testing::Test {
 protected:
  // The block `name` of the target as text, from its "{" on.
  std::string Block(std::string_view name) {
    const std::string all = Dump(world.target.RootRecord());
    const std::size_t at = all.find(std::string(name) + "{");
    return at == std::string::npos ? "" : all.substr(at + name.size());
  }

  // A name that the persons in front of it make longer than 100 bytes.
  const std::string long_name = std::string(60, 'x');
  MappingWorld world{"ESADout",
                     kDeclaration + ("ESADoutDeclarant#" + long_name) +
                         "=C5\nESADoutFinancialAdjustingResponsiblePerson#" + long_name + "=C5\n" +
                         kTarget,
                     kRules};
};

TEST_F(DeclarationRules, HeaderGetsItsTransportRecordsInOrder) {
  world.Source("ESADoutConsigment#ESADoutBorderTransport#TransportModeCode", "31");
  world.Source("ESADoutConsigment#ESADoutDepartureArrivalTransport#TransportModeCode", "20");
  world.Source("ESADoutGoodsLocation\\1\\Transport#TransporIdentifier", "A1;B2, C3");
  world.Source("ESADoutGoodsLocation\\1\\Transport#TransporKind", "30");
  EXPECT_EQ(world.Map("", ""),
            "G071=\"10702020\" G072=\"11.06.15\" G073=\"0001234\" G19=\"0\" "
            "TRANS{NGR=\"25\" VIDTRANS=\"31\"}{NGR=\"26\" VIDTRANS=\"20\"}"
            "{NGR=\"30\" VIDTRANS=\"30\" NTRANS=\"A1\"}{NGR=\"30\" VIDTRANS=\"30\" NTRANS=\"B2\"}"
            "{NGR=\"30\" VIDTRANS=\"30\" NTRANS=\" C3\"}");
}

TEST_F(DeclarationRules, TransitMovesThePersonsOfTheSource) {
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

TEST_F(DeclarationRules, TransitRecordsComeWithTheFirstGoodsRecordOnce) {
  world.run.transit = true;
  world.Source("Guarantee#GuaranteeReference\\1\\OtherGuaranteeNumber", "123");
  world.Source("Guarantee#GuaranteeReference\\1\\LimitationNonEC#NotValid4Country", "RU");
  world.Source("ESADoutConsigment#DeliveryCustomsOffice#Code", " 10702020 ");
  world.Source("VIN", "V1");
  world.Source("ESADoutCarrier#ESADDriverInformation\\1\\PersonPost", "Водитель");
  world.Source("ESADoutCarrier#ESADDriverInformation\\1\\PersonName", "Иванов");
  world.Source("ESADoutGoods\\2\\Code", "C");
  world.Map("ESADoutGoods\\1", "TOVAR");
  world.Map("ESADoutGoods\\2", "TOVAR");
  // Each group of the driver text that falls away leaves its blank.
  EXPECT_EQ(
      Block("TOVAR"),
      "{TECHD{G4402=\"7\" G444=\"|123| |RU\"}{G4402=\"8\" G44020=\"1\" G444=\"10702020\"}"
      "{G4402=\"8\" G44020=\"6\" G444=\"V1\"}{G4402=\"9\" G444=\"Водитель : Иванов     \"}}{}");
  EXPECT_FALSE(world.run.transit);
}

TEST_F(DeclarationRules, StoreTransferCodesAreTakenOnce) {
  const std::string block = "ESADoutGoods\\1\\outPresentedDocument#";
  world.Source(block + "WarehouseDocument\\2\\Number", "5");
  world.Source(block + "StoreTransferDoc#TransferImportCode", "IMP");
  world.Source(block + "StoreTransferDoc#TransferExportCode", "EXP");
  world.Map(block + "WarehouseDocument\\1", "ROWS");
  world.Map(block + "WarehouseDocument\\2", "ROWS");
  EXPECT_EQ(Block("ROWS"),
            "{G4401=\"9\"}{G4401=\"9\" G4402=\"7\" G4493=\"IMP\"}"
            "{G4401=\"9\" G4402=\"5\" G4493=\"EXP\"}{G4401=\"9\"}");
}

TEST_F(DeclarationRules, PaymentDocumentOfAPayment) {
  world.Source("ESADoutPayments#Row\\1\\Sum", "5");
  world.Source("ESADoutPayments#Row\\2\\PaymentDocument\\1\\PrDocumentNumber", "77");
  world.Map("ESADoutPayments#Row\\1", "ROWS");
  world.Map("ESADoutPayments#Row\\2", "ROWS");
  EXPECT_EQ(Block("SUMPP"), "{NUMPDOK=\"77\"} ROWS{}{}");
}

TEST_F(DeclarationRules, GoodsGroupsBecomeInformationSerialNumbersOrRecords) {
  const std::string group = "ESADoutGoods\\1\\GoodsGroupDescription\\2";
  world.Source(group + "\\GoodsDescription\\1\\Text", std::string(100, 'x'));
  world.Source(group + "\\GoodsGroupInformation\\2\\SerialNumber", "A1, B2;C3");
  world.Source(group + "\\GoodsGroupInformation\\1\\Name", "n");
  world.Map("ESADoutGoods\\1", "TOVAR");
  world.Map(group, "TOVAR\\1\\GRINF");
  world.Map(group, "TOVAR\\1\\GRSER");
  world.Map(group, "TOVAR\\1\\GR");
  EXPECT_EQ(
      Block("TOVAR"),
      "{GRINF{NGR=\"31\" TYP_NGR=\"G1\" G32=\"1\" G32G=\"2\" TEXT1=\"" + std::string(80, 'x') +
          "\"}{NGR=\"31\" TYP_NGR=\"G1\" G32=\"1\" G32G=\"2\" TEXT1=\"" + std::string(20, 'x') +
          "\"} GRSER{G32=\"1\" G32G=\"2\" NUMREC=\"2\" G31_15_SN=\"A1\"}"
          "{G32=\"1\" G32G=\"2\" NUMREC=\"2\" G31_15_SN=\"B2\"}"
          "{G32=\"1\" G32G=\"2\" NUMREC=\"2\" G31_15_SN=\"C3\"} GR{G32G=\"2\"}{G32G=\"2\"}}");
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
