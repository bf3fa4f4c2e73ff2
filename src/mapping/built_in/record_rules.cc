// The rules that depend on the source block, in their order, and the smallest of them: the
// positions of customs value declarations.

#include "mapping/built_in/record_rules.h"

#include "base/letter_case.h"
#include "mapping/built_in/documents.h"
#include "mapping/built_in/goods.h"
#include "mapping/built_in/transport.h"

namespace customsconv {
namespace {

struct Position {
  std::string_view part;  // of the source path
  std::string_view number;
};

// A later match overwrites.
constexpr Position kPositions[] = {
    {"Column7CDescription", "7C"},
    {"DTSSellingLimitation#limitationDescription", "8B"},
    {"DTSAdditionalPayments#PaymentDescription", "9A"},
    {"DTSAdditionalPayments#PaymentConditionDescription", "9B"},
    {"ReasonApplyMethod#ReasonDescription", "7"},
    {"Method6Calculation", "12"},
    {"CostConfirmationDocument", "8"},
};

// Delivery terms come first, the other blocks later among the record rules.
void WriteDeliveryTermsPosition(RecordScope& record) {
  if (record.PathHolds("DeliveryTerms") && StartsWithRu(record.kind, "DTSout")) {
    record.Set("NPOZ", "3");
  }
}

void WriteValueDeclarationPosition(RecordScope& record) {
  if (!Contains(record.kind, "DTS")) return;
  for (const Position& position : kPositions) {
    if (record.PathHolds(position.part)) record.Set("NPOZ", position.number);
  }
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
