#ifndef CUSTOMSCONV_MAPPING_RECORD_MAPPER_H_
#define CUSTOMSCONV_MAPPING_RECORD_MAPPER_H_

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "mapping/mapping_line.h"
#include "mapping/mapping_run.h"
#include "mapping/record_scope.h"

namespace customsconv {

// Maps single source records into new target records for one section of the
// rules: the built-in rules at their places, the mapping lines between them. Each
// sub-section's lines are split once.
class RecordMapper {
 public:
  // What it remembers of the documents' levels ends with them.
  explicit RecordMapper(const DocumentPair& documents) : documents_(documents) {}

  // `source_path` from the source's root (ESADoutGoods\3), empty for the root
  // itself; `target_block` from the target's root, empty for the header record; `header` is
  // the line of the section or sub-section. Leaves both documents on their roots.
  // Errors of the documents pass through.
  void MapBlockRecord(std::string_view source_path, std::string_view target_block, int header);

 private:
  // Maps the records of a block inside the source record into the same target block.
  void MapNestedRecords(const RecordScope& record, std::string_view block);
  void ApplyLines(RecordScope& record);
  void ApplyLine(RecordScope& record, MappingLine& line);

  DocumentPair documents_;
  std::unordered_map<int, std::vector<MappingLine>> lines_;  // by header line
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_RECORD_MAPPER_H_
