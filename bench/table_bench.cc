// The table engine against shapelib on 30 fields of mixed types: appending rows, reading
// every field; and a flush against one write of the same bytes. The argument is the
// number of rows.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <shapefil.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "base/unicode.h"
#include "dbf/dbf_file.h"
#include "platform/posix/posix_host.h"
#include "platform/quiet_dialogs.h"

namespace customsconv::bench {
namespace {

constexpr int kFields = 30;
constexpr FileMode kMode = kModeReadWrite | kShareDenyNone;

struct Column {
  FieldDescriptor field;
  std::string value;
  double number;
};

Column MakeColumn(int number) {
  constexpr struct {
    char type;
    std::uint16_t length;
    std::uint8_t decimals;
    const char* value;
    double number;
  } kKinds[] = {{'N', 6, 0, "12345", 12345},
                {'C', 20, 0, "Сахар белый", 0},
                {'N', 15, 2, "1234.5", 1234.5},
                {'D', 8, 0, "17.03.2026", 0},
                {'C', 8, 0, "A1234567", 0}};
  const auto& kind = kKinds[static_cast<std::size_t>(number) % std::size(kKinds)];
  Column column;
  column.field.name = "F" + std::to_string(number);
  column.field.type = kind.type;
  column.field.length = kind.length;
  column.field.decimals = kind.decimals;
  column.value = WinFromUtf8(kind.value).value();
  column.number = kind.number;
  return column;
}

const std::vector<Column>& Columns() {
  static const std::vector<Column> kColumns = [] {
    std::vector<Column> columns;
    for (int i = 0; i < kFields; ++i) columns.push_back(MakeColumn(i));
    return columns;
  }();
  return kColumns;
}

class Folder {
 public:
  Folder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tablesXXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    path_ = pattern;
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  [[nodiscard]] std::string Table(const char* name) const { return path_ + "/" + name + ".DBF"; }
  [[nodiscard]] Host& host() { return host_; }

 private:
  std::string path_;
  QuietDialogs dialogs_;
  PosixHost host_{dialogs_};
};

void Create(TFileDbfFile& table, const std::string& name) {
  TDescrs fields;
  for (const Column& column : Columns()) fields.push_back(column.field);
  if (table.CreateTable(fields, name) != DbfStatus::kOk) std::abort();
}

void AppendRows(TFileDbfFile& table, std::int64_t rows) {
  const std::vector<Column>& columns = Columns();
  for (std::int64_t row = 0; row < rows; ++row) {
    table.BlankRecord();
    for (const Column& column : columns) table.SetFieldByName(column.field.name, column.value);
    table.Append();
  }
}

std::size_t ReadRows(TFileDbfFile& table) {
  std::size_t bytes = 0;
  for (std::int64_t row = 1; row <= table.RecordCount(); ++row) {
    table.GoTo(row);
    for (int i = 0; i < kFields; ++i) bytes += table.GetField(i).size();
  }
  return bytes;
}

DBFHandle CreateShapelib(const std::string& name) {
  DBFHandle table = DBFCreate(name.c_str());
  for (const Column& column : Columns()) {
    DBFAddNativeFieldType(table, column.field.name.c_str(), column.field.type, column.field.length,
                          column.field.decimals);
  }
  return table;
}

void AppendShapelib(DBFHandle table, int rows) {
  const std::vector<Column>& columns = Columns();
  for (int row = 0; row < rows; ++row) {
    for (int i = 0; i < kFields; ++i) {
      const Column& column = columns[static_cast<std::size_t>(i)];
      if (column.field.type == 'N') {
        DBFWriteDoubleAttribute(table, row, i, column.number);
      } else if (column.field.type == 'D') {
        DBFWriteStringAttribute(table, row, i, "20260317");
      } else {
        DBFWriteStringAttribute(table, row, i, column.value.c_str());
      }
    }
  }
}

void CountRows(benchmark::State& state) {
  state.counters["rows/s"] = benchmark::Counter(static_cast<double>(state.range(0)),
                                                benchmark::Counter::kIsIterationInvariantRate);
}

void Append(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    Folder folder;
    TDbfCache cache(folder.host());
    TFileDbfFile table(cache);
    Create(table, folder.Table("T"));
    state.ResumeTiming();
    AppendRows(table, state.range(0));
    state.PauseTiming();
    cache.DropCachedFile(folder.Table("T"));
    state.ResumeTiming();
  }
  CountRows(state);
}

// The same until the rows are safe on disk.
void AppendAndFlush(benchmark::State& state) {
  for (auto _ : state) {
    Folder folder;
    TDbfCache cache(folder.host());
    TFileDbfFile table(cache);
    Create(table, folder.Table("T"));
    AppendRows(table, state.range(0));
    cache.Flush();
  }
  CountRows(state);
}

void AppendWithShapelib(benchmark::State& state) {
  for (auto _ : state) {
    Folder folder;
    DBFHandle table = CreateShapelib(folder.Table("S"));
    AppendShapelib(table, static_cast<int>(state.range(0)));
    DBFClose(table);
  }
  CountRows(state);
}

// With the code page, from the image in the cache.
void ReadFields(benchmark::State& state) {
  Folder folder;
  TDbfCache cache(folder.host());
  TFileDbfFile table(cache);
  Create(table, folder.Table("T"));
  AppendRows(table, state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(ReadRows(table));
  cache.DropCachedFile(folder.Table("T"));
  CountRows(state);
}

// Opening included; from 10,000,000 bytes on without an image.
void ReadFieldsFromFile(benchmark::State& state) {
  Folder folder;
  {
    TDbfCache cache(folder.host());
    TFileDbfFile table(cache);
    Create(table, folder.Table("T"));
    AppendRows(table, state.range(0));
  }
  for (auto _ : state) {
    TDbfCache cache(folder.host());
    TFileDbfFile table(cache);
    table.Open(folder.Table("T"), kMode, OnError::kThrow);
    benchmark::DoNotOptimize(ReadRows(table));
  }
  CountRows(state);
}

void ReadFieldsWithShapelib(benchmark::State& state) {
  Folder folder;
  DBFHandle table = CreateShapelib(folder.Table("S"));
  AppendShapelib(table, static_cast<int>(state.range(0)));
  DBFClose(table);
  for (auto _ : state) {
    table = DBFOpen(folder.Table("S").c_str(), "rb");
    std::size_t bytes = 0;
    for (int row = 0; row < DBFGetRecordCount(table); ++row) {
      for (int i = 0; i < kFields; ++i) {
        bytes += std::strlen(DBFReadStringAttribute(table, row, i));
      }
    }
    benchmark::DoNotOptimize(bytes);
    DBFClose(table);
  }
  CountRows(state);
}

void Flush(benchmark::State& state) {
  Folder folder;
  TDbfCache cache(folder.host());
  TFileDbfFile table(cache);
  Create(table, folder.Table("T"));
  AppendRows(table, state.range(0));
  for (auto _ : state) {
    table.GoTo(1);
    table.Post();
    cache.Flush();
  }
}

void OneWrite(benchmark::State& state) {
  Folder folder;
  {
    TDbfCache cache(folder.host());
    TFileDbfFile table(cache);
    Create(table, folder.Table("T"));
    AppendRows(table, state.range(0));
  }
  std::ifstream file(folder.Table("T"), std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  for (auto _ : state) {
    const int to = ::open(folder.Table("W").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (::write(to, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
    ::fsync(to);
    ::close(to);
  }
}

void OpenCached(benchmark::State& state) {
  Folder folder;
  TDbfCache cache(folder.host());
  TFileDbfFile table(cache);
  Create(table, folder.Table("T"));
  const std::string name = folder.Table("T");
  for (auto _ : state) table.Open(name, kMode, OnError::kThrow);
}

#define ROWS ->Arg(20'000)->Arg(60'000)->Arg(200'000)->Unit(benchmark::kMillisecond)->UseRealTime()
BENCHMARK(Append) ROWS;
BENCHMARK(AppendAndFlush) ROWS;
BENCHMARK(AppendWithShapelib) ROWS;
BENCHMARK(ReadFields) ROWS;
BENCHMARK(ReadFieldsFromFile) ROWS;
BENCHMARK(ReadFieldsWithShapelib) ROWS;
BENCHMARK(Flush) ROWS;
BENCHMARK(OneWrite) ROWS;
BENCHMARK(OpenCached);
#undef ROWS

}  // namespace
}  // namespace customsconv::bench

BENCHMARK_MAIN();
