#ifndef CUSTOMSCONV_MAPPING_MAPPING_RUN_H_
#define CUSTOMSCONV_MAPPING_MAPPING_RUN_H_

#include <cstdint>

#include "base/short_text.h"
#include "mapping/mapping_report.h"
#include "mapping/rules_file.h"
#include "services/environment.h"
#include "tables/dbf_document.h"

namespace customsconv {

// What the documents of one run have in common. All that is referred to must outlive it.
struct MappingRun {
  Environment& environment;
  const RulesFile& rules;
  MappingObserver* observer = nullptr;  // null: nobody watches
  // Normally customs code, "/", DDMMYY, "/", number: 23 characters.
  ShortText registration_number{};
  // Declaration adjustments (KTDout) numbered so far.
  std::int32_t adjustments = 0;
  MappingLosses losses{};
  // A transit header was mapped, and its transit records are still to be written: by the next
  // goods record, in a later document of the run when its own has none.
  bool transit_records_wait = false;
};

// One document of a run, from XML, on its way into the table set that takes it.
struct DocumentPair {
  MappingRun& run;
  TDocument& source;
  TDbfDocument& target;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_MAPPING_RUN_H_
