// From an XML file on disk to filled documents, with the catalogue of examples/program. The
// first argument is the file's size in megabytes, the second the number of documents in it;
// "peak" is the largest memory taken, in sizes of the file.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "declaration_file.h"
#include "example_program.h"
#include "peak_memory.h"
#include "xml/read/xml_container.h"

namespace customsconv::bench {
namespace {

// The number of documents.
int Fill(const std::string& path, ExampleProgram& program) {
  TXMLContainer container(path, program.types(), program.environment());
  int documents = 0;
  while (const auto document = container.Next()) {
    benchmark::DoNotOptimize(document->MainRecordCount());
    ++documents;
  }
  return container.UnknownIdsFound() ? 0 : documents;
}

void FillDocuments(benchmark::State& state) {
  ExampleProgram program;
  const int documents = static_cast<int>(state.range(1));
  const DeclarationFile file(state.range(0), documents, program.files());
  const PeakMemory peak;
  for (auto _ : state) {
    if (Fill(file.path(), program) != documents) state.SkipWithError("not all documents filled");
  }
  state.counters["peak"] = static_cast<double>(peak.Bytes()) / static_cast<double>(file.size());
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * file.size()));
}

BENCHMARK(FillDocuments)
    ->ArgNames({"MB", "documents"})
    ->Args({1, 1})
    ->Args({10, 1})
    ->Args({50, 1})
    ->Args({100, 1})
    ->Args({200, 1})
    ->Args({10, 400})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace customsconv::bench

BENCHMARK_MAIN();
