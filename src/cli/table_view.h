#ifndef CUSTOMSCONV_CLI_TABLE_VIEW_H_
#define CUSTOMSCONV_CLI_TABLE_VIEW_H_

#include <cstdint>
#include <limits>
#include <string_view>

#include "cli/json_writer.h"
#include "cli/output.h"
#include "dbf/dbf_file.h"

namespace customsconv::cli {

// Records of a table that are shown, from 1.
struct RowRange {
  std::int64_t first = 1;
  std::int64_t last = std::numeric_limits<std::int64_t>::max();
};

// `name` is the table's file as the command line names it, UTF-8.

// One line with name and row count, then a line a field.
void ListTable(const TFileDbfFile& table, std::string_view name, Output& output);
// Rows in columns as wide as their values; deleted records are marked with "*".
void ShowAligned(TFileDbfFile& table, RowRange rows, Output& output);
// What is filled of each record ("NAME=value | NAME=value"), on lines of at most 100
// characters where values allow it, below the name; deleted records are marked with "*".
void ShowFilled(TFileDbfFile& table, std::string_view name, RowRange rows, Output& output);
// Comma-separated, with a line of field names; deleted records are left out. Dates are
// yyyy-mm-dd, here and in JSON.
void ShowCsv(TFileDbfFile& table, RowRange rows, Output& output);
// An object with name, row count and fields.
void ListJson(const TFileDbfFile& table, std::string_view name, JsonWriter& json);
// The same with the records.
void ShowJson(TFileDbfFile& table, std::string_view name, RowRange rows, JsonWriter& json);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_TABLE_VIEW_H_
