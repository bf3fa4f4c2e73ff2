#ifndef CUSTOMSCONV_BENCH_DECLARATION_GENERATOR_H_
#define CUSTOMSCONV_BENCH_DECLARATION_GENERATOR_H_

#include <cstddef>
#include <string>

namespace customsconv::bench {

// What a generated file holds. A goods item takes about 9 kB.
struct DeclarationShape {
  int documents = 1;
  int goods_per_document = 30;
};

// The shape with that many documents whose file comes closest to `bytes`.
[[nodiscard]] DeclarationShape ShapeOfSize(std::size_t bytes, int documents);

// Goods declarations in UTF-8 with the element names of the public formats and
// invented values; the same shape gives the same bytes. Several documents stand in envelopes.
[[nodiscard]] std::string GenerateDeclarations(const DeclarationShape& shape);

}  // namespace customsconv::bench

#endif  // CUSTOMSCONV_BENCH_DECLARATION_GENERATOR_H_
