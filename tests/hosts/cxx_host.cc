// cxx_host EXAMPLES OUTPUT: a host in C++. Errors of the library are exceptions.
#include <fenv.h>

#include <cstdio>
#include <exception>

#include "host_output.h"

namespace {

void Convert(const char* examples, const char* program_folder, const char* output) {
  const customsconv_text program = Joined(examples, program_folder);
  const customsconv_text rules = Joined(examples, "rules/armti.txt");
  const customsconv_text xml = Joined(examples, "xml/10702020_110615_0001234.xml");
  const customsconv_text tables = Joined(output, "");
  try {
    std::printf("Xml2ArmTi: %s\n", Xml2ArmTi(&program, &rules, &xml, &tables) ? "TRUE" : "FALSE");
  } catch (const std::exception& error) {
    std::printf("error: %s\n", error.what());
  }
}

void Check(const char* examples, const char* xml_file) {
  const customsconv_text program = Joined(examples, "program/");
  const customsconv_text schemas = Joined(examples, "schemas/");
  const customsconv_text xml = Joined(examples, xml_file);
  customsconv_lines lines = {AppendByPrinting};
  std::printf("  a line of the host\n");
  std::printf("CheckXSD: %s\n", CheckXSD(&program, &schemas, &xml, &lines) ? "TRUE" : "FALSE");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  // A host that wants to be told of invalid operations gets none of ours and keeps its wish.
  feenableexcept(FE_INVALID | FE_DIVBYZERO);
  Convert(argv[1], "program/", argv[2]);
  Check(argv[1], "xml-invalid/fail-two-of-four.xml");
  Convert(argv[1], "rules/program/", argv[2]);  // there is no kord.ini
  Check(argv[1], "xml-invalid/pass-plain.xml");
  return fegetexcept() == (FE_INVALID | FE_DIVBYZERO) ? 0 : 3;
}
