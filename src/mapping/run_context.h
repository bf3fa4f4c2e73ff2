#ifndef CUSTOMSCONV_MAPPING_RUN_CONTEXT_H_
#define CUSTOMSCONV_MAPPING_RUN_CONTEXT_H_

#include <cstdint>

#include "base/short_text.h"
#include "mapping/mapping_report.h"
#include "mapping/rules_file.h"
#include "services/environment.h"
#include "tables/dbf_document.h"

namespace customsconv {

// State of one conversion run, shared by the driver and the mapping. The driver
// sets source and target anew for each document.
struct RunContext {
  Environment& environment;
  const RulesFile& rules;
  TDocument* source = nullptr;     // the document read from XML
  TDbfDocument* target = nullptr;  // the table-set document being written
  // Normally customs code, "/", DDMMYY, "/", number: 23 characters.
  ShortText registration_number{};
  // A transit header was met; its guarantee and carrier records wait for the
  // next goods record.
  bool transit = false;
  // KTDout documents numbered so far.
  std::int32_t document_counter = 0;
  MappingObserver* observer = nullptr;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_RUN_CONTEXT_H_
