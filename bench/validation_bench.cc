// The schema check alone, over the text that a document is exported to, and from a file to
// checked documents. The first argument is the file's size in megabytes, the second the number of
// documents in it; "compilations" counts the schemas compiled for one file.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "declaration_file.h"
#include "example_program.h"
#include "validation/libxml_services.h"
#include "validation/schema_check.h"
#include "xml/read/xml_container.h"
#include "xml/write/document_writer.h"

namespace customsconv::bench {
namespace {

void CheckOne(const std::string& text, SchemaCheck& check, ExampleProgram& program,
              benchmark::State& state) {
  const SchemaVerdict verdict = check.ValidateXml(text, program.environment());
  if (verdict.outcome != SchemaVerdict::Outcome::kChecked || !verdict.error_text.empty()) {
    state.SkipWithError("not valid");
  }
}

// The schema is compiled each time, as a validator that is started for a file does.
void CheckText(benchmark::State& state) {
  ExampleProgram program;
  const DeclarationFile file(state.range(0), 1, program.files());
  TXMLContainer container(file.path(), program.types(), program.environment());
  DocumentWriter writer;
  const std::string text = writer.Text(*container.Next());
  for (auto _ : state) {
    LibXmlServices services(program.files());
    SchemaCheck check(services);
    CheckOne(text, check, program, state);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void CheckFile(benchmark::State& state) {
  ExampleProgram program;
  const DeclarationFile file(state.range(0), static_cast<int>(state.range(1)), program.files());
  int compilations = 0;
  for (auto _ : state) {
    LibXmlServices services(program.files());
    SchemaCheck check(services);
    TXMLContainer container(file.path(), program.types(), program.environment());
    DocumentWriter writer;
    while (const auto document = container.Next()) {
      CheckOne(writer.Text(*document), check, program, state);
    }
    compilations = services.compilations();
  }
  state.counters["compilations"] = compilations;
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * file.size()));
}

BENCHMARK(CheckText)->ArgName("MB")->Arg(10)->Arg(50)->Unit(benchmark::kMillisecond);
BENCHMARK(CheckFile)
    ->ArgNames({"MB", "documents"})
    ->Args({10, 1})
    ->Args({10, 400})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace customsconv::bench

BENCHMARK_MAIN();
