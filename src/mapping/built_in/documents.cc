// Documents that a declaration names: those presented with it (column 44) and those of its
// payments.

#include "mapping/built_in/documents.h"

namespace customsconv {
namespace {

struct DocumentCode {
  std::string_view part;  // of the source path
  std::string_view kind;
  std::string_view sub_kind;  // empty: not written
};

constexpr DocumentCode kDocumentCodes[] = {
    {"PaymentPrivilegeDocument", "7", "1"},
    {"PaymentGuaranteeDocument", "7", "2"},
    {"ExciseDocument", "8", ""},
    {"EconomicAreaDocuments", "9", "1"},
    {"WarehouseDocument", "9", ""},
    {"ProcessingDocument", "9", ""},
    {"ReimportDocument", "9", "6"},
};

struct StoreTransfer {
  std::string_view field;
  std::string_view sub_kind;
};

constexpr StoreTransfer kStoreTransfers[] = {
    {"StoreTransferDoc#TransferImportCode", "7"},
    {"StoreTransferDoc#TransferExportCode", "5"},
};

void WriteKinds(RecordScope& record) {
  for (const DocumentCode& document : kDocumentCodes) {
    if (!record.PathHolds(document.part)) continue;
    record.Set(record.Prefixed("4401"), document.kind);
    if (!document.sub_kind.empty()) record.Set(record.Prefixed("4402"), document.sub_kind);
  }
}

// The code stands beside the document blocks; emptying it keeps later records of the
// same block from writing it again.
void WriteStoreTransfer(RecordScope& record, const StoreTransfer& transfer) {
  const std::string_view path = record.source_path;
  const ShortText field = JoinShort({"\\\\", path.substr(0, path.rfind('#') + 1), transfer.field});
  const ShortText reference = ShortText::Cut(record.source.GetFieldEx(field));
  if (reference.empty()) return;
  {
    const SavedPosition saved(record.target);
    record.Append(JoinShort({"\\\\", record.target_block}));
    record.Set(record.Prefixed("4401"), "9");
    record.Set(record.Prefixed("4402"), transfer.sub_kind);
    record.Set(record.Prefixed("4493"), reference);
  }
  record.source.SetFieldEx(field, "");
}

}  // namespace

void WriteDocumentCodes(RecordScope& record) {
  if (!record.PathHolds("outPresentedDocument#")) return;
  WriteKinds(record);
  for (const StoreTransfer& transfer : kStoreTransfers) WriteStoreTransfer(record, transfer);
}

void WritePaymentDocument(RecordScope& record) {
  if (!record.source_path.view().starts_with("ESADoutPayments#")) return;
  TDocument& source = record.source;
  if (source.RecordCount("PaymentDocument") < 1) return;
  const SavedPosition saved(record.target);
  record.Append("\\\\SUMPP");
  record.Set("NUMPDOK",
             ShortText::Cut(source.GetFieldEx(".\\PaymentDocument\\1\\PrDocumentNumber")));
  record.Set("DATPDOK",
             ShortText::Cut(source.GetFieldEx(".\\PaymentDocument\\1\\PrDocumentDate")));
}

}  // namespace customsconv
