#ifndef CUSTOMSCONV_TESTS_SUPPORT_DOCUMENT_DUMP_H_
#define CUSTOMSCONV_TESTS_SUPPORT_DOCUMENT_DUMP_H_

#include <string>

#include "document/record.h"
#include "support/text.h"

namespace customsconv {

// What is stored in a record and below it on one line, as UTF-8, without what is empty:
// `G01="x" TOVAR{G33="y"}{G33="z"}`.
[[nodiscard]] inline std::string Dump(const TDocFieldList& record) {
  std::string text;
  for (int i = 0; i < record.Count(); ++i) {
    const TFieldInfo& field = record.Basis().Item(i);
    const RecordList* records = field.is_block ? record.Records(i) : nullptr;
    if (field.is_block ? records == nullptr : record.Text(i).empty()) continue;
    text += (text.empty() ? "" : " ") + Utf8(field.name);
    if (records == nullptr) text += "=\"" + Utf8(record.Text(i)) + "\"";
    for (int n = 1; records != nullptr && n <= records->Count(); ++n) {
      text += "{" + Dump(records->Record(n)) + "}";
    }
  }
  return text;
}

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_DOCUMENT_DUMP_H_
