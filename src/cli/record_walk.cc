#include "cli/record_walk.h"

#include <vector>

namespace customsconv::cli {
namespace {

struct Frame {
  const TDocFieldList* record;
  int position = -1;                 // of the block being visited
  const RecordList* list = nullptr;  // its records, null between blocks
  int number = 0;                    // of the record visited last
};

// Moves to the record's next block that holds records; false when there is none.
bool NextBlock(Frame& frame) {
  while (++frame.position < frame.record->Count()) {
    frame.list = frame.record->Records(frame.position);
    if (frame.list != nullptr && frame.list->Count() > 0) return true;
  }
  return false;
}

}  // namespace

void WalkRecords(const TDocFieldList& root, RecordSink& sink) {
  std::vector<Frame> open{{&root}};
  sink.BeginRecord(root, 1);
  while (!open.empty()) {
    Frame& frame = open.back();
    if (frame.list != nullptr && frame.number < frame.list->Count()) {
      const TDocFieldList& record = frame.list->Record(++frame.number);
      sink.BeginRecord(record, frame.number);
      open.push_back({&record});
      continue;
    }
    if (frame.list != nullptr) sink.EndBlock();
    frame.list = nullptr;
    frame.number = 0;
    if (NextBlock(frame)) {
      sink.BeginBlock(frame.record->Basis().Item(frame.position).name);
    } else {
      sink.EndRecord();
      open.pop_back();
    }
  }
}

}  // namespace customsconv::cli
