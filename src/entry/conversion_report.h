#ifndef CUSTOMSCONV_ENTRY_CONVERSION_REPORT_H_
#define CUSTOMSCONV_ENTRY_CONVERSION_REPORT_H_

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "mapping/mapping_report.h"

namespace customsconv {

enum class SkipReason : std::uint8_t {
  kNotFirstDeclaration,  // a run converts one goods declaration
  kKindNotConverted,
  kNoSection,       // no section of the rules serves the kind
  kNotFirstOfKind,  // SBRHEAD and KBRHEAD take the first of a kind
  kNoTableSet,      // the catalogue has no type with the section's table
};

struct DocumentReport {
  std::string_view kind{};   // code of the source document's type
  int occurrence = 0;        // in the file, from 1
  int section = -1;          // index of the section's line in the rules
  std::string_view table{};  // head table of the section
  // Rows added, by table file.
  std::map<std::string, int> rows_added{};
};

// Watches a conversion for whoever runs it; changes nothing. Views are valid
// during the call only. May throw something that is no std::exception to end the run.
class ConversionObserver : public MappingObserver {
 public:
  virtual void RegistrationNumber(std::string_view number) = 0;
  virtual void Skipped(const DocumentReport& document, SkipReason reason) = 0;
  virtual void Converted(const DocumentReport& document) = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_ENTRY_CONVERSION_REPORT_H_
