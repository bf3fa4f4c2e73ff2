#include "mapping/built_in/closing_header.h"

#include "base/cp1251_literal.h"
#include "text/blanks.h"
#include "text/numbers.h"

namespace customsconv {
namespace {

constexpr std::size_t kCounterDigits = 6;

void NumberAdjustment(RecordScope& record) {
  ++record.run.document_counter;
  record.Set("G011", "КТ"_cp1251);
  record.Set("TM", record.target.GetField("G071"));
  // A Cyrillic К and a Latin T: what the workstation looks for.
  record.Set("G071", JoinShort({"КT"_cp1251, PadLeft(std::to_string(record.run.document_counter),
                                                     '0', kCounterDigits)}));
}

}  // namespace

void ApplyClosingHeaderRules(RecordScope& record) {
  record.Set("G19", StrToBoolRu(record.target.GetField("G19")) ? "1" : "0");
  if (record.kind == "KTDout") NumberAdjustment(record);
}

}  // namespace customsconv
