#ifndef CUSTOMSCONV_MAPPING_LINE_REPORT_H_
#define CUSTOMSCONV_MAPPING_LINE_REPORT_H_

#include <cstddef>
#include <string_view>

#include "mapping/mapping_line.h"
#include "mapping/record_scope.h"
#include "mapping/value_store.h"

namespace customsconv {

// Tells the run's observer, when there is one, what became of one line.
class LineReporter {
 public:
  LineReporter(const RecordScope& record, const MappingLine& line)
      : record_(record), line_(line), observer_(Wanted(record.run.observer)) {}

  void Skipped() const;
  // Nothing was written: the value is empty, or the expression names nothing.
  void Nothing(bool source_known) const;
  void GoodsLocation(std::string_view value, bool written) const;
  // `source_size` is the size that the value had before it was cut to 255 bytes.
  void Stored(std::string_view value, std::size_t source_size, StoredIn where) const;

 private:
  // Judges what the table field will keep of the value that the target record now holds
  // (of `value`, when there is no such field).
  void Held(std::string_view field, std::string_view value, std::size_t source_size) const;
  void Tell(LineReport report, std::string_view field) const;

  static MappingObserver* Wanted(MappingObserver* observer) {
    return observer != nullptr && observer->WantsLines() ? observer : nullptr;
  }

  const RecordScope& record_;
  const MappingLine& line_;
  MappingObserver* observer_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_LINE_REPORT_H_
