#ifndef CUSTOMSCONV_MAPPING_MAPPING_REPORT_H_
#define CUSTOMSCONV_MAPPING_MAPPING_REPORT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace customsconv {

enum class LineOutcome : std::uint8_t {
  kWritten,
  kEmpty,         // the source value is empty, nothing was written
  kNoSuchField,   // no table field takes the value
  kNoSuchSource,  // the expression names nothing in the source
  kCut,           // written, but the field is narrower than the value
  kKeyOfParent,   // not written: the save fills the field from the parent record
  kSkipped,       // the form of the line asks for nothing here
};

// What one mapping line did for one record.
struct LineReport {
  int rule_line = 0;  // index in the rules file, from 0
  std::string_view source_path{};
  std::string_view expression{};
  std::string_view value{};  // as it was written, or would have been
  std::string_view target_table{};
  std::string_view target_field{};
  LineOutcome outcome = LineOutcome::kWritten;
  std::size_t length = 0;  // of kCut: the value's length and the field's
  std::size_t width = 0;
};

// Values that lines of the rules did not bring into the table set, counted record by record.
struct MappingLosses {
  std::int32_t no_column = 0;     // the target names no field of the table
  std::int32_t cut = 0;           // at the 255 bytes that a value can have
  std::int32_t sub_sections = 0;  // that name a table or a block that is not there
};

// Watches the mapping for a person who wants to know what became of a value. It
// never changes what is mapped. Views are valid during the call only.
class MappingObserver {
 public:
  virtual ~MappingObserver() = default;
  // A source record is about to be mapped. May throw something that is no
  // std::exception to end the run.
  virtual void Record(std::string_view source_path) = 0;
  // Line is called only where it is wanted: its reports cost time.
  [[nodiscard]] virtual bool WantsLines() const = 0;
  virtual void Line(const LineReport& report) = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_MAPPING_REPORT_H_
