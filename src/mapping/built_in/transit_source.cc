#include "mapping/built_in/transit_source.h"

#include "base/cp1251_literal.h"
#include "base/letter_case.h"

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
  record.run.transit = true;
}

}  // namespace customsconv
