#include "mapping/built_in/transit_records.h"

#include "base/cp1251_literal.h"
#include "document/value_expression.h"
#include "text/blanks.h"

namespace customsconv {
namespace {

constexpr std::string_view kTechnicalBlock = "\\\\TOVAR\\1\\TECHD";

constexpr std::string_view kGuaranteePaths[] = {
    "Guarantee#GuaranteeReference\\1\\OtherGuaranteeNumber",
    "Guarantee#MeasureCode",
    "Guarantee#GuaranteeReference\\1\\LimitationNonEC#NotValid4Country",
};

// The place in the list is the sub-code of the record.
constexpr std::string_view kOfficePaths[] = {
    "ESADoutConsigment#DeliveryCustomsOffice#Code",
    "ESADoutConsigment#DeliveryCustomsOffice#OfficeName",
    "ESADoutConsigment#PPBorderCustoms_Code",
    "ESADoutConsigment#PPBorderCustoms_OfficeName",
    "MovementCode",
    "VIN",
    "TransportRegNumber",
    "TransportKindCode",
    "TransportMarkCode",
};

constexpr std::string_view kDriverBlock = "\\\\ESADoutCarrier#ESADDriverInformation";
// "\\" separates groups, a group without any filled field is left out with its text.
constexpr std::string_view kDriverText =
    R"(PersonPost+":"\PersonName\IdentityCard#IdentityCardName\IdentityCard#IdentityCardSeries)"
    R"(\IdentityCard#IdentityCardNumber\"ОТ"+IdentityCard#IdentityCardDate)"
    R"(\IdentityCard#OrganizationName)"_cp1251;

// Adds a row of DBRTECHD under the first goods record. Its keys, the number of the goods item G32
// among them, are those of the goods record: the save copies them, no rule writes them.
void WriteTechnicalRecord(RecordScope& record, std::string_view code, std::string_view sub_code,
                          std::string_view text) {
  record.Append(kTechnicalBlock);
  record.Set("G4402", code);
  if (!sub_code.empty()) record.Set("G44020", sub_code);
  record.Set("G444", text);
  record.SelectTargetRoot();
}

void WriteGuarantee(RecordScope& record) {
  ShortText guarantee;
  for (const std::string_view path : kGuaranteePaths) {
    guarantee += "|";
    guarantee += IfEmpty(record.SourceValue({path}), " ");
  }
  if (WordCount(guarantee, CharSet(" |")) > 0) WriteTechnicalRecord(record, "7", {}, guarantee);
}

void WriteOfficeAndVehicle(RecordScope& record) {
  int place = 0;
  for (const std::string_view path : kOfficePaths) {
    ++place;
    const ShortText value = record.SourceValue({path});
    const std::string_view text = TrimBlanks(value);
    if (!text.empty()) WriteTechnicalRecord(record, "8", std::to_string(place), text);
  }
}

void WriteDrivers(RecordScope& record) {
  const int drivers = record.source.RecordCount(kDriverBlock);
  for (int m = 1; m <= drivers; ++m) {
    record.source.SetCurrentPath(JoinShort({kDriverBlock, "\\", std::to_string(m)}));
    const ShortText driver = GetFieldValue(record.source, kDriverText, 0);
    record.SelectSourceRoot();
    WriteTechnicalRecord(record, "9", {}, driver);
  }
}

}  // namespace

void ApplyTransitRecords(RecordScope& record) {
  if (!record.run.transit || record.target_block != std::string_view("TOVAR")) return;
  record.run.transit = false;
  WriteGuarantee(record);
  WriteOfficeAndVehicle(record);
  WriteDrivers(record);
}

}  // namespace customsconv
