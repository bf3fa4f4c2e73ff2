// Transit declarations: what their header changes in the source, and the rows of DBRTECHD, the
// technical information of column 44, that their first goods item gets.

#include "mapping/built_in/transit.h"

#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "document/value_expression.h"
#include "text/blanks.h"

namespace customsconv {
namespace {

constexpr std::string_view kRepresentative =
    "\\\\ESADoutPrincipal#ESADPrincipalRepresentative\\1\\";

// Gives the header field `name` the value when the type has it.
bool SetHeaderFieldIfKnown(RecordScope& record, std::string_view name, std::string_view value) {
  if (record.source.RootBasis().IndexOfName(name) < 0) return false;
  record.SetHeaderValue(name, value);
  return true;
}

// The values travel whether filled or not; the record is empty afterwards.
void MoveRepresentative(RecordScope& record) {
  TDocument& source = record.source;
  if (!source.SetCurrentPath(kRepresentative)) return;
  const TBasis& level = source.CurBasis();
  for (int i = 0; i < level.Count(); ++i) {
    if (level.Item(i).is_block) continue;
    const std::string value = source.GetFieldByNum(i);
    SetHeaderFieldIfKnown(
        record, JoinShort({"ESADoutDeclarant#ESADoutFilledPerson#", level.Item(i).name}), value);
    source.SetFieldByNum(i, "");
  }
}

// Moves every header field that begins with `from` to the field of the same
// name under `to`; a field without a counterpart stays.
void MoveHeaderFields(RecordScope& record, std::string_view from, std::string_view to) {
  const TBasis& header = record.source.RootBasis();
  for (int i = 0; i < header.Count(); ++i) {
    const TFieldInfo& field = header.Item(i);
    if (field.is_block || !StartsWithRu(field.name, from)) continue;
    const std::string value = record.source.GetFieldByNum(i);
    const ShortText name = JoinShort({to, std::string_view(field.name).substr(from.size())});
    if (SetHeaderFieldIfKnown(record, name, value)) record.source.SetFieldByNum(i, "");
  }
}

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
    const ShortText driver = ShortText::Cut(GetFieldValue(record.source, kDriverText, 0));
    record.SelectSourceRoot();
    WriteTechnicalRecord(record, "9", {}, driver);
  }
}

}  // namespace

void ReshapeTransitDeclaration(RecordScope& record) {
  const ShortText procedure = record.HeaderValue("CustomsProcedure");
  if (procedure.empty() || !Contains("ВМТ"_cp1251, procedure.view().substr(0, 1))) return;
  const ShortText direction = record.HeaderValue("TransitDirectionCode");
  record.SetHeaderValue("CustomsProcedure",
                        JoinShort({procedure.view().substr(0, 1), direction.view().substr(0, 1)}));
  MoveRepresentative(record);
  record.SelectSourceRoot();
  MoveHeaderFields(record, "ESADoutDeclarant#", "ESADoutFinancialAdjustingResponsiblePerson#");
  MoveHeaderFields(record, "ESADoutCarrier#", "ESADoutDeclarant#");
  record.run.transit_records_wait = true;
}

void ApplyTransitRecords(RecordScope& record) {
  if (!record.run.transit_records_wait || record.target_block != std::string_view("TOVAR")) return;
  record.run.transit_records_wait = false;
  WriteGuarantee(record);
  WriteOfficeAndVehicle(record);
  WriteDrivers(record);
}

}  // namespace customsconv
