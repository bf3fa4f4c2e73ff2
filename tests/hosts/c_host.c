/* c_host EXAMPLES OUTPUT: a sample host, compiled as C and, in cxx_host.cc, as C++. */
#include <iconv.h>
#include <setjmp.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "customsconv.h"

/* A short text of the two parts; they must fit into it. */
static customsconv_text Joined(const char* head, const char* tail) {
  customsconv_text text;
  const size_t head_size = strlen(head);
  const size_t tail_size = strlen(tail);
  if (head_size + tail_size > sizeof text.bytes) abort();
  text.length = (unsigned char)(head_size + tail_size);
  memcpy(text.bytes, head, head_size);
  memcpy(text.bytes + head_size, tail, tail_size);
  return text;
}

/* Prints code page 1251 text as a line of UTF-8. */
static void PrintLine(const char* prefix, const char* text, size_t size) {
  char utf8[4096];
  char* in = (char*)text;
  char* out = utf8;
  size_t room = sizeof utf8 - 1;
  const iconv_t conversion = iconv_open("UTF-8", "CP1251");
  iconv(conversion, &in, &size, &out, &room);
  iconv_close(conversion);
  *out = '\0';
  printf("%s%s\n", prefix, utf8);
}

/* A host's list: its lines go straight to the output. */
static void AppendByPrinting(customsconv_lines* list, const char* line, size_t size) {
  (void)list;
  PrintLine("  ", line, size);
}

static void Convert(const char* examples, const char* program_folder, const char* output) {
  const customsconv_text program = Joined(examples, program_folder);
  const customsconv_text rules = Joined(examples, "rules/armti.txt");
  const customsconv_text xml = Joined(examples, "xml/10702020_110615_0001234.xml");
  const customsconv_text tables = Joined(output, "");
  printf("Xml2ArmTi: %s\n", Xml2ArmTi(&program, &rules, &xml, &tables) ? "TRUE" : "FALSE");
}

static void Check(const char* examples, const char* xml_file) {
  const customsconv_text program = Joined(examples, "program/");
  const customsconv_text schemas = Joined(examples, "schemas/");
  const customsconv_text xml = Joined(examples, xml_file);
  customsconv_lines lines = {AppendByPrinting};
  printf("  a line of the host\n");
  printf("CheckXSD: %s\n", CheckXSD(&program, &schemas, &xml, &lines) ? "TRUE" : "FALSE");
}

/* Converts where there is no kord.ini and prints the error: each language has its own kind. */
static void ConvertInVain(const char* examples, const char* output);

static int Run(int argc, char** argv) {
  if (argc != 3) return 2;
  Convert(argv[1], "program/", argv[2]);
  Check(argv[1], "xml-invalid/fail-two-of-four.xml");
  ConvertInVain(argv[1], argv[2]);
  Check(argv[1], "xml-invalid/pass-plain.xml");
  return 0;
}

/* Errors leave the call by a jump, as a language with exceptions of its own would leave it. */
#ifndef __cplusplus
static jmp_buf caller;

void customsconv_raise(const char* message, size_t size) {
  PrintLine("error: ", message, size);
  longjmp(caller, 1);
}

static void ConvertInVain(const char* examples, const char* output) {
  if (setjmp(caller) == 0) Convert(examples, "rules/program/", output);
}

int main(int argc, char** argv) { return Run(argc, argv); }
#endif
