// A file of declarations from disk to code page 1251 text. The argument is the file's size in
// megabytes.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "base/unicode.h"
#include "declaration_file.h"
#include "example_program.h"

namespace customsconv::bench {
namespace {

void ReadAndDecodeUtf8(benchmark::State& state) {
  ExampleProgram program;
  const DeclarationFile file(state.range(0), 1, program.files());
  for (auto _ : state) {
    std::string text = program.files().Read(file.path());
    if (!WinFromUtf8InPlace(text)) state.SkipWithError("not decoded");
    benchmark::DoNotOptimize(text);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * file.size()));
}

BENCHMARK(ReadAndDecodeUtf8)->ArgName("MB")->Arg(10)->Arg(50)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace customsconv::bench

BENCHMARK_MAIN();
