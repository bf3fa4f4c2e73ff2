#include "xml/write/structured_value.h"

#include <algorithm>
#include <cstddef>

#include "base/lifetime.h"
#include "document/composite_value.h"
#include "text/xml_escape.h"

namespace customsconv {
namespace {

struct CompositePart {
  std::size_t number = 0;  // from 1; 0 for the text in front of the first mark
  std::string_view prefix;
  std::string_view value;
};

// Walks the parts. The byte behind a mark is a part number, whatever its value.
class PartReader {
 public:
  explicit PartReader(std::string_view composite) : rest_(composite) {}

  [[nodiscard]] bool Next(CompositePart& part) {
    if (done_) return false;
    part = CompositePart();
    if (!first_ && !rest_.empty()) {
      part.number = static_cast<unsigned char>(rest_.front());
      rest_.remove_prefix(1);
    }
    first_ = false;
    std::size_t end = rest_.find(kPartMark);
    std::size_t value = 0;
    if (const std::size_t mark = rest_.substr(0, end).find(kPartValueMark); mark != rest_.npos) {
      part.prefix = rest_.substr(0, mark);
      value = std::min(mark + 2, rest_.size());
      end = rest_.find(kPartMark, value);
    }
    done_ = end == rest_.npos;
    part.value = rest_.substr(value, done_ ? end : end - value);
    if (!done_) rest_.remove_prefix(end + 1);
    return true;
  }

 private:
  std::string_view rest_;
  bool first_ = true;
  bool done_ = false;
};

// "G31.NAME" of the field "G31" is the element NAME.
std::string_view TagOf(const TFieldInfo& field CUSTOMSCONV_LIFETIME_BOUND,
                       std::size_t part_number) {
  if (part_number == 0 || part_number > field.sub_fields.size()) return "Unknown";
  const std::string_view full_name = field.sub_fields[part_number - 1].full_name;
  return full_name.substr(std::min(field.name.size() + 1, full_name.size()));
}

void AppendPart(std::string& out, std::string_view tag, const CompositePart& part) {
  if (part.prefix.empty() && part.value.empty()) return;
  out.append("<").append(tag);
  if (!part.prefix.empty()) out.append(" Pref=\"").append(XmlEscape(part.prefix)).append("\"");
  out.append(">\r\n").append(XmlEscape(part.value)).append("\r\n</").append(tag).append(">");
}

}  // namespace

std::string StructuredValue(const TFieldInfo& field, std::string_view raw) {
  const bool multi_line = !field.sub_fields.empty() && field.sub_fields[0].ref_name == "MULTI";
  std::string out(multi_line ? "<Line>\r\n" : "");
  PartReader parts(raw);
  for (CompositePart part; parts.Next(part);) {
    if (multi_line && part.number == 1) out.append("</Line>\r\n<Line>\r\n");
    AppendPart(out, TagOf(field, part.number), part);
  }
  if (multi_line) out.append("\r\n</Line>");
  return out;
}

}  // namespace customsconv
