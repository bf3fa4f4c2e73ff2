// From an XML file on disk to filled documents, with the catalogue of examples/program, against
// xmllint reading the same file. The first argument is the file's size in megabytes,
// the second the number of documents in it; "peak" is the largest memory taken, in
// sizes of the file.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "common/configuration.h"
#include "declaration_generator.h"
#include "document/doc_type_list.h"
#include "peak_memory.h"
#include "platform/posix/posix_host.h"
#include "platform/quiet_dialogs.h"
#include "xml/xml_container.h"

namespace customsconv::bench {
namespace {

const std::string kProgram = std::string(CUSTOMSCONV_SOURCE_DIR) + "/examples/program/";

// A generated file, gone with the object.
class DeclarationFile {
 public:
  DeclarationFile(std::int64_t megabytes, int documents, Files& files)
      : path_((std::filesystem::temp_directory_path() / "customsconv-bench.xml").string()) {
    const std::string text =
        GenerateDeclarations(ShapeOfSize(static_cast<std::size_t>(megabytes) << 20, documents));
    size_ = text.size();
    files.Replace(path_, text);
  }
  ~DeclarationFile() { std::filesystem::remove(path_); }
  DeclarationFile(const DeclarationFile&) = delete;
  DeclarationFile& operator=(const DeclarationFile&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::size_t size() const { return size_; }

 private:
  std::string path_;
  std::size_t size_ = 0;
};

class World {
 public:
  [[nodiscard]] Files& files() { return host_.host().files; }

  // The number of documents.
  int Fill(const std::string& path) {
    TXMLContainer container(path, types_, environment_);
    int documents = 0;
    while (const auto document = container.Next()) {
      benchmark::DoNotOptimize(document->MainRecordCount());
      ++documents;
    }
    return documents;
  }

 private:
  QuietDialogs dialogs_;
  PosixHost host_{dialogs_};
  SharedConfigurations shared_{host_};
  KeptToday today_{host_.host().clock};
  TConfiguration config_{host_, kProgram + "kord.ini", CreateMode::kMustExist, CodePage::kWindows};
  Environment environment_{host_, kProgram, kProgram + "Data/", "", &config_, shared_, today_};
  TDocTypeList types_{"Kordwin.dcf", /*all_files=*/false, environment_};
};

void FillDocuments(benchmark::State& state) {
  World world;
  const int documents = static_cast<int>(state.range(1));
  const DeclarationFile file(state.range(0), documents, world.files());
  const PeakMemory peak;
  for (auto _ : state) {
    if (world.Fill(file.path()) != documents) state.SkipWithError("not all documents filled");
  }
  state.counters["peak"] = static_cast<double>(peak.Bytes()) / static_cast<double>(file.size());
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * file.size()));
}

double ChildrenCpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void XmllintNoout(benchmark::State& state) {
  World world;
  const DeclarationFile file(state.range(0), static_cast<int>(state.range(1)), world.files());
  const std::string command = "xmllint --noout " + file.path();
  const double before = ChildrenCpuSeconds();
  for (auto _ : state) {
    if (std::system(command.c_str()) != 0) state.SkipWithError("xmllint failed");
  }
  // The CPU column shows our own time, not that of the program.
  state.counters["cpu_ms"] = benchmark::Counter((ChildrenCpuSeconds() - before) * 1000,
                                                benchmark::Counter::kAvgIterations);
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * file.size()));
}

BENCHMARK(FillDocuments)
    ->ArgNames({"MB", "documents"})
    ->Args({1, 1})
    ->Args({10, 1})
    ->Args({50, 1})
    ->Args({200, 1})
    ->Args({10, 400})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(XmllintNoout)
    ->ArgNames({"MB", "documents"})
    ->Args({1, 1})
    ->Args({10, 1})
    ->Args({50, 1})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace customsconv::bench

BENCHMARK_MAIN();
