#include "cli/table_description.h"

#include <algorithm>

#include "base/letter_case.h"
#include "cli/arguments.h"
#include "text/numbers.h"
#include "text/words.h"

namespace customsconv::cli {
namespace {

constexpr std::size_t kMaxName = 10;
constexpr std::size_t kMaxRecord = 65535;

// What a type letter allows.
struct TypeRule {
  char type;
  int min_width;
  int max_width;
};
constexpr TypeRule kTypes[] = {
    {column_type::kCharacter, 1, 65000}, {column_type::kNumber, 1, 32}, {column_type::kDate, 8, 8},
    {column_type::kLogical, 1, 1},       {column_type::kMemo, 10, 10},
};

class DescriptionReader {
 public:
  explicit DescriptionReader(std::string_view file_name) : file_name_(file_name) {}

  void Line(std::string_view text) {
    ++line_;
    const std::vector<std::string_view> words = Words(text, CharSet(" \t"));
    if (words.empty() || words.front().front() == ';' || words.front().front() == '#') return;
    if (words.size() < 4 || words.size() > 5) {
      Fail("wanted: TABLE FIELD TYPE WIDTH [DECIMALS]");
    }
    AddField(Table(UpperCaseRu(words[0])), Field(words));
  }

  std::vector<DescribedTable> Take() { return std::move(tables_); }

 private:
  [[noreturn]] void Fail(const std::string& cause) const {
    throw UsageError(std::string(file_name_) + ", line " + std::to_string(line_) + ": " + cause);
  }

  DescribedTable& Table(std::string name) {
    if (name.find('.') == std::string::npos) name += ".DBF";
    if (name.find_first_of("\\/:") != std::string::npos) Fail("a table name holds no folder");
    const auto found =
        std::find_if(tables_.begin(), tables_.end(),
                     [&](const DescribedTable& table) { return table.name == name; });
    if (found != tables_.end()) return *found;
    tables_.push_back({name, {}});
    return tables_.back();
  }

  FieldDescriptor Field(const std::vector<std::string_view>& words) const {
    FieldDescriptor field;
    field.name = UpperCaseRu(words[1]);
    if (field.name.size() > kMaxName) Fail("a field name has at most 10 letters");
    const std::string type = UpperCaseRu(words[2]);
    const auto rule = std::find_if(std::begin(kTypes), std::end(kTypes), [&](const TypeRule& r) {
      return type == std::string_view(&r.type, 1);
    });
    if (rule == std::end(kTypes)) Fail("the type is one of C, N, D, L, M");
    field.type = rule->type;
    const int width = IntOr(words[3], -1);
    if (width < rule->min_width || width > rule->max_width) {
      Fail("the width of a " + type + " field lies from " + std::to_string(rule->min_width) +
           " to " + std::to_string(rule->max_width));
    }
    field.length = static_cast<std::uint16_t>(width);
    const int decimals = words.size() == 5 ? IntOr(words[4], -1) : 0;
    const int most_decimals = field.type == column_type::kNumber && width > 2 ? width - 2 : 0;
    if (decimals < 0 || decimals > most_decimals) {
      Fail("the decimals lie from 0 to " + std::to_string(most_decimals));
    }
    field.decimals = static_cast<std::uint8_t>(decimals);
    return field;
  }

  void AddField(DescribedTable& table, FieldDescriptor&& field) const {
    std::size_t record = 1U + field.length;
    for (const FieldDescriptor& other : table.fields) {
      if (other.name == field.name) Fail("the table has this field already");
      record += other.length;
    }
    if (record > kMaxRecord) Fail("the record would be longer than 65535 bytes");
    table.fields.push_back(std::move(field));
  }

  std::string_view file_name_;
  int line_ = 0;
  std::vector<DescribedTable> tables_;
};

}  // namespace

std::vector<DescribedTable> ReadTableDescription(std::string_view text,
                                                 std::string_view file_name) {
  DescriptionReader reader(file_name);
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    reader.Line(line);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return reader.Take();
}

}  // namespace customsconv::cli
