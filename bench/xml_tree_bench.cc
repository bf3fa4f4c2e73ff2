// The XML tree against pugixml: parsing a declaration from memory, and one walk
// over all nodes. The argument is the size of the text in megabytes; "peak" is the largest
// memory taken, in sizes of the text.
#include <benchmark/benchmark.h>

#include <map>
#include <pugixml.hpp>
#include <string>

#include "declaration_generator.h"
#include "peak_memory.h"
#include "xml/tree/xml_parser.h"

namespace customsconv::bench {
namespace {

// Generated once a size, outside the timing.
const std::string& DeclarationOf(std::int64_t megabytes) {
  static std::map<std::int64_t, std::string> texts;
  std::string& text = texts[megabytes];
  if (text.empty()) {
    text = GenerateDeclarations(ShapeOfSize(static_cast<std::size_t>(megabytes) << 20, 1));
  }
  return text;
}

// Bytes of all values and attributes, so that a walk cannot be left out.
std::size_t ValueBytes(const TXMLNode& root) {
  std::size_t bytes = 0;
  const TXMLNode* node = &root;
  while (node != nullptr) {
    bytes += node->value.size();
    for (const TXMLNode& attribute : node->attributes) bytes += attribute.value.size();
    if (!node->children.empty()) {
      node = &*node->children.begin();
      continue;
    }
    while (node != nullptr && node->next == nullptr) node = node->parent;
    if (node != nullptr) node = node->next;
  }
  return bytes;
}

class ByteCounter : public pugi::xml_tree_walker {
 public:
  bool for_each(pugi::xml_node& node) override {
    bytes += std::char_traits<char>::length(node.value());
    for (const pugi::xml_attribute attribute : node.attributes()) {
      bytes += std::char_traits<char>::length(attribute.value());
    }
    return true;
  }
  std::size_t bytes = 0;
};

void SetCounters(benchmark::State& state, const std::string& text, const PeakMemory& peak) {
  state.counters["peak"] = static_cast<double>(peak.Bytes()) / static_cast<double>(text.size());
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void XmlTreeParseAndWalk(benchmark::State& state) {
  const std::string& text = DeclarationOf(state.range(0));
  const PeakMemory peak;
  for (auto _ : state) {
    const XmlTree tree(text);
    benchmark::DoNotOptimize(ValueBytes(tree.root()));
  }
  SetCounters(state, text, peak);
}

void PugixmlParseAndWalk(benchmark::State& state) {
  const std::string& text = DeclarationOf(state.range(0));
  const PeakMemory peak;
  for (auto _ : state) {
    pugi::xml_document document;
    if (!document.load_buffer(text.data(), text.size())) state.SkipWithError("not parsed");
    ByteCounter counter;
    document.traverse(counter);
    benchmark::DoNotOptimize(counter.bytes);
  }
  SetCounters(state, text, peak);
}

BENCHMARK(XmlTreeParseAndWalk)->Arg(1)->Arg(10)->Arg(50)->Unit(benchmark::kMillisecond);
BENCHMARK(PugixmlParseAndWalk)->Arg(1)->Arg(10)->Arg(50)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace customsconv::bench

BENCHMARK_MAIN();
