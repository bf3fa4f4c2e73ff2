/* c_host EXAMPLES OUTPUT: a host in C. Errors of the library leave the call by a
 * jump, as a language with exceptions of its own would leave it. */
#include <setjmp.h>

#include "host_output.h"

static jmp_buf caller;

void customsconv_raise(const char* message, size_t size) {
  PrintLine("error: ", message, size);
  longjmp(caller, 1);
}

static void Convert(const char* examples, const char* program_folder, const char* output) {
  const customsconv_text program = Joined(examples, program_folder);
  const customsconv_text rules = Joined(examples, "rules/armti.txt");
  const customsconv_text xml = Joined(examples, "xml/10702020_110615_0001234.xml");
  const customsconv_text tables = Joined(output, "");
  if (setjmp(caller) == 0) {
    printf("Xml2ArmTi: %s\n", Xml2ArmTi(&program, &rules, &xml, &tables) ? "TRUE" : "FALSE");
  }
}

static void Check(const char* examples, const char* xml_file) {
  const customsconv_text program = Joined(examples, "program/");
  const customsconv_text schemas = Joined(examples, "schemas/");
  const customsconv_text xml = Joined(examples, xml_file);
  customsconv_lines lines = {AppendByPrinting};
  printf("  a line of the host\n");
  if (setjmp(caller) == 0) {
    printf("CheckXSD: %s\n", CheckXSD(&program, &schemas, &xml, &lines) ? "TRUE" : "FALSE");
  }
}

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  Convert(argv[1], "program/", argv[2]);
  Check(argv[1], "xml-invalid/fail-two-of-four.xml");
  Convert(argv[1], "rules/program/", argv[2]); /* there is no kord.ini */
  Check(argv[1], "xml-invalid/pass-plain.xml");
  return 0;
}
