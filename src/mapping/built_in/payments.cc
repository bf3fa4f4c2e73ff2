#include "mapping/built_in/payments.h"

namespace customsconv {

void WritePaymentDocument(RecordScope& record) {
  if (!record.source_path.view().starts_with("ESADoutPayments#")) return;
  TDocument& source = record.source;
  if (source.RecordCount("PaymentDocument") < 1) return;
  const SavedPosition saved(record.target);
  record.Append("\\\\SUMPP");
  record.Set("NUMPDOK", source.GetFieldEx(".\\PaymentDocument\\1\\PrDocumentNumber"));
  record.Set("DATPDOK", source.GetFieldEx(".\\PaymentDocument\\1\\PrDocumentDate"));
}

}  // namespace customsconv
