// A table file of any bytes: opened, every record read and searched, rows appended and
// deleted, flushed and opened again.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dbf/dbf_file.h"
#include "support/fake_host.h"

namespace customsconv {
namespace {

constexpr std::string_view kTable = "C:\\OUT\\T.DBF";
constexpr FileMode kMode = kModeReadWrite | kShareDenyNone;
// Records of one byte make millions of rows; the first ones tell the story.
constexpr std::int64_t kRowsRead = 200;

void ReadAll(TFileDbfFile& table) {
  std::vector<std::string> lines;
  for (std::int64_t row = 1; row <= std::min(table.RecordCount(), kRowsRead); ++row) {
    if (table.GoTo(row) != DbfStatus::kOk) __builtin_trap();
    lines.clear();
    table.GetRecordText(lines);
    if (lines.size() != table.fields().size()) __builtin_trap();
  }
  if (table.fields().empty()) return;
  const std::string name(table.FieldAt(0).TrimmedName());
  (void)table.GetLongFieldByName(name);
  if (table.RecordCount() <= kRowsRead) (void)table.FindFirst(name + "*", "1");
}

// Adds a row of awkward values and one without any, and deletes the first.
void Change(TFileDbfFile& table, std::string_view bytes) {
  const std::int64_t before = table.RecordCount();
  table.BlankRecord();
  for (int i = 0; i < static_cast<int>(table.fields().size()); ++i) {
    const auto start = std::min<std::size_t>(static_cast<std::size_t>(i) * 7, bytes.size());
    table.SetLongField(i, bytes.substr(start, 300), i % 3 == 2);
  }
  if (!table.Append()) __builtin_trap();
  table.BlankRecord();
  if (!table.Append() || table.Post() != DbfStatus::kOk) __builtin_trap();
  if (table.DeleteRecord(1) != DbfStatus::kOk) __builtin_trap();
  if (table.RecordCount() != before + 1) __builtin_trap();
}

}  // namespace
}  // namespace customsconv

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace customsconv;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  FakeHost host;
  host.files[kTable] = bytes;
  TDbfCache cache(host);
  TFileDbfFile table(cache);
  if (table.Open(kTable, kMode, OnError::kReturn) != DbfStatus::kOk) return 0;
  ReadAll(table);
  Change(table, bytes);
  const std::int64_t rows = table.RecordCount();
  cache.Flush();
  cache.DropCachedFile(kTable);
  if (table.Open(kTable, kMode, OnError::kReturn) != DbfStatus::kOk) __builtin_trap();
  if (table.RecordCount() != rows) __builtin_trap();
  ReadAll(table);
  TDescrs fields = table.fields();
  (void)table.CreateTable(fields, "C:\\OUT\\COPY");
  return 0;
}
