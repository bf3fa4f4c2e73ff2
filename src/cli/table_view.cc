#include "cli/table_view.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/characters.h"
#include "base/unicode.h"
#include "cli/texts.h"
#include "text/blanks.h"
#include "text/words.h"

namespace customsconv::cli {
namespace {

constexpr std::size_t kLineWidth = 100;
constexpr std::size_t kNumberWidth = 6;
constexpr std::string_view kBar = " | ";

// Calls `row` for each record of the range with its number.
template <typename Row>
void ForEachRow(TFileDbfFile& table, RowRange rows, const Row& row) {
  const std::int64_t last = std::min(rows.last, table.RecordCount());
  for (std::int64_t number = std::max<std::int64_t>(rows.first, 1); number <= last; ++number) {
    if (table.GoTo(number) == DbfStatus::kOk) row(number);
  }
}

int FieldCount(const TFileDbfFile& table) { return static_cast<int>(table.fields().size()); }

// The field's own text, whatever its length.
std::string Value(const TFileDbfFile& table, int field) {
  const bool is_long = table.FieldAt(field).length > ShortText::kMaxSize;
  return is_long ? table.GetLongField(field) : table.GetField(field).str();
}

// For programs: a date with its century, as the table holds it.
std::string ExactValue(const TFileDbfFile& table, int field) {
  const std::string_view stored = table.StoredField(field);
  const bool is_date = table.FieldAt(field).type == column_type::kDate && stored.size() == 8;
  if (!is_date || !AllDigits(stored)) return Value(table, field);
  return Join({stored.substr(0, 4), "-", stored.substr(4, 2), "-", stored.substr(6)});
}

std::string FieldLine(const FieldDescriptor& field) {
  std::string line = "  " + PadRightBlanks(field.TrimmedName(), 11) + " ";
  line += field.type;
  line += " " + std::to_string(field.length);
  if (field.decimals > 0) line += "." + std::to_string(field.decimals);
  return Utf8FromWin(line) + "\n";
}

std::string CsvValue(const std::string& value) {
  if (value.find_first_of(",\"\r\n") == std::string::npos) return Utf8FromWin(value);
  std::string quoted = "\"";
  for (const char c : value) quoted.append(c == '"' ? 2 : 1, c);
  return Utf8FromWin(quoted + "\"");
}

std::vector<std::size_t> ColumnWidths(TFileDbfFile& table, RowRange rows) {
  std::vector<std::size_t> widths;
  for (const FieldDescriptor& field : table.fields()) widths.push_back(field.TrimmedName().size());
  ForEachRow(table, rows, [&](std::int64_t) {
    for (int i = 0; i < FieldCount(table); ++i) {
      std::size_t& width = widths[static_cast<std::size_t>(i)];
      width = std::max(width, Value(table, i).size());
    }
  });
  return widths;
}

// A cell of a column, numbers at the right.
std::string Cell(std::string_view value, std::size_t width, bool at_right) {
  const std::string blanks(width - std::min(width, value.size()), ' ');
  return at_right ? blanks + std::string(value) : std::string(value) + blanks;
}

std::vector<std::string> FilledFields(const TFileDbfFile& table) {
  std::vector<std::string> parts;
  for (int i = 0; i < FieldCount(table); ++i) {
    const std::string value = Value(table, i);
    if (value.empty()) continue;
    parts.push_back(std::string(table.FieldAt(i).TrimmedName()) + "=" + value);
  }
  return parts;
}

// The parts behind the head of the line, as many on a line as go on it, further lines indented.
void PrintParts(std::string line, const std::vector<std::string>& parts, Output& output) {
  const std::size_t indent = line.size();
  for (const std::string& part : parts) {
    if (line.size() > indent && line.size() + kBar.size() + part.size() > kLineWidth) {
      output.Result(Utf8FromWin(line) + "\n");
      line.assign(indent, ' ');
    }
    if (line.size() > indent) line += kBar;
    line += part;
  }
  output.Result(Utf8FromWin(line) + "\n");
}

void WriteField(const FieldDescriptor& field, JsonWriter& json) {
  json.BeginObject();
  json.Key("name").WinText(field.TrimmedName());
  json.Key("type").WinText(std::string_view(&field.type, 1));
  json.Key("length").Number(field.length);
  json.Key("decimals").Number(field.decimals);
  json.EndObject();
}

void WriteHead(const TFileDbfFile& table, std::string_view name, JsonWriter& json) {
  json.Key("file").Text(name);
  json.Key("rows").Number(table.RecordCount());
  json.Key("fields").BeginArray();
  for (const FieldDescriptor& field : table.fields()) WriteField(field, json);
  json.EndArray();
}

}  // namespace

void ListTable(const TFileDbfFile& table, std::string_view name, Output& output) {
  output.Result(Say(texts::kTableRows, {name, std::to_string(table.RecordCount())}) + "\n");
  for (const FieldDescriptor& field : table.fields()) output.Result(FieldLine(field));
}

void ShowAligned(TFileDbfFile& table, RowRange rows, Output& output) {
  const std::vector<std::size_t> widths = ColumnWidths(table, rows);
  const std::size_t number_width = std::to_string(table.RecordCount()).size();
  const auto print = [&](const std::string& number, const auto& text_of) {
    std::string line = Cell(number, number_width + 1, true);
    for (int i = 0; i < FieldCount(table); ++i) {
      const bool at_right = table.FieldAt(i).type == column_type::kNumber;
      line += kBar;
      line += Cell(text_of(i), widths[static_cast<std::size_t>(i)], at_right);
    }
    output.Result(Utf8FromWin(TrimRight(line)) + "\n");
  };
  print("#", [&](int i) { return std::string(table.FieldAt(i).TrimmedName()); });
  ForEachRow(table, rows, [&](std::int64_t number) {
    print((table.IsDeleted() ? "*" : "") + std::to_string(number),
          [&](int i) { return Value(table, i); });
  });
}

void ShowFilled(TFileDbfFile& table, std::string_view name, RowRange rows, Output& output) {
  output.Result(Say(texts::kTableRows, {name, std::to_string(table.RecordCount())}) + "\n");
  ForEachRow(table, rows, [&](std::int64_t number) {
    const std::string mark = (table.IsDeleted() ? "*" : "") + std::to_string(number);
    PrintParts(Cell(mark, kNumberWidth, true) + "  ", FilledFields(table), output);
  });
}

void ShowCsv(TFileDbfFile& table, RowRange rows, Output& output) {
  const auto print = [&](const auto& text_of) {
    std::string line;
    for (int i = 0; i < FieldCount(table); ++i) {
      if (i > 0) line += ',';
      line += CsvValue(text_of(i));
    }
    output.Result(line + "\n");
  };
  print([&](int i) { return std::string(table.FieldAt(i).TrimmedName()); });
  ForEachRow(table, rows, [&](std::int64_t) {
    if (!table.IsDeleted()) print([&](int i) { return ExactValue(table, i); });
  });
}

void ListJson(const TFileDbfFile& table, std::string_view name, JsonWriter& json) {
  json.BeginObject();
  WriteHead(table, name, json);
  json.EndObject();
}

void ShowJson(TFileDbfFile& table, std::string_view name, RowRange rows, JsonWriter& json) {
  json.BeginObject();
  WriteHead(table, name, json);
  json.Key("records").BeginArray();
  ForEachRow(table, rows, [&](std::int64_t number) {
    json.BeginObject();
    json.Key("number").Number(number);
    json.Key("deleted").Bool(table.IsDeleted());
    json.Key("values").BeginArray();
    for (int i = 0; i < FieldCount(table); ++i) json.WinText(ExactValue(table, i));
    json.EndArray();
    json.EndObject();
  });
  json.EndArray();
  json.EndObject();
}

}  // namespace customsconv::cli
