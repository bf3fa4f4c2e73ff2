#ifndef CUSTOMSCONV_CLI_RECORD_WALK_H_
#define CUSTOMSCONV_CLI_RECORD_WALK_H_

#include <string_view>

#include "document/record.h"

namespace customsconv::cli {

// Takes a document's records in the order in which they are shown.
class RecordSink {
 public:
  virtual ~RecordSink() = default;
  // `number` counts from 1 within its block; the top record is number 1, too.
  virtual void BeginRecord(const TDocFieldList& record, int number) = 0;
  virtual void EndRecord() = 0;
  // Only blocks that hold records.
  virtual void BeginBlock(std::string_view name) = 0;
  virtual void EndBlock() = 0;
};

// Visits the record and all below it, without recursion.
void WalkRecords(const TDocFieldList& root, RecordSink& sink);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_RECORD_WALK_H_
