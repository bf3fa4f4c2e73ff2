// Loading the catalogue against reading its bytes, and building a type's levels. The argument
// is the size of the file in megabytes.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "catalogue/doc_type_list.h"
#include "config/configuration.h"
#include "platform/posix/posix_host.h"
#include "platform/quiet_dialogs.h"

namespace customsconv::bench {
namespace {

constexpr int kFieldsOfAType = 400;

enum class Shape {
  kFields,   // types as they are in use: few HEADER lines, hundreds of fields
  kHeaders,  // nothing but HEADER sections: the most that the first pass can have to do
};

std::string TypeText(const std::string& code, Shape shape) {
  std::string text = "[" + code + ".HEADER]\r\nFullName=Document " + code +
                     "\r\nXmlType=1\r\nMainBlock=Goods\r\nBlocksOnMainPage=1\r\nPrefix=<" + code +
                     ">\r\n\r\n";
  if (shape == Shape::kHeaders) return text;
  text += "[" + code + ".Fields]\r\n";
  for (int i = 0; i < kFieldsOfAType; ++i) {
    const std::string number = std::to_string(i);
    if (i == kFieldsOfAType / 2) text += "Goods {\r\n";
    text += "Field" + number + " = C20 | Caption of field " + number +
            " NAMESPACE=\"doc:Shipment#cat:Element" + number + "\"\r\n";
  }
  return text + "}\r\n";
}

// A program folder on disk whose catalogue has about the given size.
class Folder {
 public:
  Folder(std::int64_t megabytes, Shape shape) {
    std::string pattern = (std::filesystem::temp_directory_path() / "catalogueXXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    path_ = pattern + "/";
    std::string text;
    while (text.size() < static_cast<std::size_t>(megabytes) << 20) {
      text += TypeText("T" + std::to_string(types_++), shape);
    }
    host_.host().files.Replace(file(), text);
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  [[nodiscard]] std::string file() const { return path_ + "Kordwin.dcf"; }
  [[nodiscard]] int types() const { return types_; }
  [[nodiscard]] Environment& environment() { return environment_; }

 private:
  QuietDialogs dialogs_;
  PosixHost host_{dialogs_};
  SharedConfigurations shared_{host_};
  KeptToday today_{host_.host().clock};
  std::string path_;
  int types_ = 0;
  Environment environment_{host_, "", "", "", nullptr, shared_, today_};
};

void SetBytes(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * (state.range(0) << 20));
}

void ReadBytes(benchmark::State& state) {
  Folder folder(state.range(0), Shape::kFields);
  for (auto _ : state) {
    benchmark::DoNotOptimize(folder.environment().host.files.Read(folder.file()));
  }
  SetBytes(state);
}

void LoadCatalogue(benchmark::State& state, Shape shape) {
  Folder folder(state.range(0), shape);
  for (auto _ : state) {
    const TDocTypeList types(folder.file(), false, folder.environment());
    if (types.Count() != folder.types()) state.SkipWithError("not all types read");
  }
  SetBytes(state);
}

// The last type of the file, with its 400 fields.
void BuildLevels(benchmark::State& state) {
  Folder folder(state.range(0), Shape::kFields);
  const std::string code = "T" + std::to_string(folder.types() - 1);
  for (auto _ : state) {
    state.PauseTiming();
    const TDocTypeList types(folder.file(), false, folder.environment());
    state.ResumeTiming();
    benchmark::DoNotOptimize(types.GetDocInfo(code).GetBasis(folder.environment()).Count());
  }
  state.SetItemsProcessed(state.iterations() * kFieldsOfAType);
}

BENCHMARK(ReadBytes)->Arg(1)->Arg(5)->Arg(25)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LoadCatalogue, Fields, Shape::kFields)
    ->Arg(1)
    ->Arg(5)
    ->Arg(25)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LoadCatalogue, Headers, Shape::kHeaders)
    ->Arg(1)
    ->Arg(5)
    ->Arg(25)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BuildLevels)->Arg(1)->Arg(5)->Arg(25)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace customsconv::bench

BENCHMARK_MAIN();
