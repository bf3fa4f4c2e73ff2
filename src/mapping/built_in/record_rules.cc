#include "mapping/built_in/record_rules.h"

#include "mapping/built_in/payments.h"
#include "mapping/built_in/presented_documents.h"
#include "mapping/built_in/transport_columns.h"
#include "mapping/built_in/value_declarations.h"

namespace customsconv {
namespace {

struct PathCode {
  std::string_view part;  // of the source path
  std::string_view code;
};

// Kind of packaging information; a later match overwrites.
constexpr PathCode kPackagingCodes[] = {
    {"PackingInformation", "0"},
    {"UnitPackInfo", "1"},
    {"CargoInfo", "2"},
    {"PalleteInformation", "3"},
};

void WritePackagingKind(RecordScope& record) {
  if (!record.PathHolds("GoodsPackaging#")) return;
  for (const PathCode& packaging : kPackagingCodes) {
    if (record.PathHolds(packaging.part)) record.Set("PKSIGN", packaging.code);
  }
}

// Number of the goods group that a record under it belongs to.
void WriteGoodsGroupNumber(RecordScope& record) {
  if (record.PathHolds("\\GoodsGroupDescription\\")) {
    record.Set(record.Prefixed("32G"), record.PathWord(4));
  }
}

// Mechanisms delivered in parts: the numbers of the delivery and of the unit.
void WriteMechanismUnit(RecordScope& record) {
  if (!record.PathHolds("MechanismUnit")) return;
  record.Set("G32", "1");
  record.Set("KMPFB", record.PathWord(2));
  record.Set("KMPK", record.PathWord(4));
}

// A record that stands beside the goods table names its goods item itself.
void WriteGoodsItemOfFlattened(RecordScope& record) {
  if (record.flattened) record.Set("G32", record.PathWord(2));
}

}  // namespace

void ApplyRecordRules(RecordScope& record) {
  WriteTransportColumns(record);
  WriteDeliveryTermsPosition(record);
  WritePackagingKind(record);
  WritePaymentDocument(record);
  WriteDocumentCodes(record);
  WriteGoodsGroupNumber(record);
  WriteMechanismUnit(record);
  WriteValueDeclarationPosition(record);
  WriteGoodsItemOfFlattened(record);
}

}  // namespace customsconv
