// generate_declarations FILE MEGABYTES DOCUMENTS [GOODS]: writes the declarations that the
// benchmarks read. With GOODS, the number of goods items in a document, the size is not looked at.
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

#include "declaration_generator.h"

int main(int argc, char** argv) {
  using customsconv::bench::DeclarationShape;
  if (argc < 4) {
    std::cerr << "usage: generate_declarations FILE MEGABYTES DOCUMENTS [GOODS]\n";
    return 2;
  }
  const double megabytes = std::atof(argv[2]);
  DeclarationShape shape = customsconv::bench::ShapeOfSize(
      static_cast<std::size_t>(megabytes * (1 << 20)), std::atoi(argv[3]));
  if (argc > 4) shape.goods_per_document = std::atoi(argv[4]);
  std::ofstream file(argv[1], std::ios::binary);
  file << customsconv::bench::GenerateDeclarations(shape);
  file.close();
  if (!file) {
    std::cerr << "cannot write " << argv[1] << '\n';
    return 1;
  }
  return 0;
}
