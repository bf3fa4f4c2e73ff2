#include "mapping/built_in/value_declarations.h"

#include "base/letter_case.h"

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

}  // namespace

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

}  // namespace customsconv
