/* The library's face to its host programs.
 *
 * libcustomsconv exports exactly two functions. Both work on the caller's thread, one call
 * at a time in a process, and begin with a start-up that reads the program
 * folder's kord.ini and document catalogue.
 *
 *   customsconv_text program = {8, "C:\\PROG\\"}, rules = ..., xml = ..., tables = ...;
 *   if (!Xml2ArmTi(&program, &rules, &xml, &tables)) puts("not converted");
 *   if (!CheckXSD(&program, &schemas, &xml, &my_lines)) puts("not checked");
 *
 * Texts are code page 1251, at most 255 bytes behind a length byte, passed by
 * reference; they are copied before anything else happens and never written.
 *
 * Calling convention: on 32-bit x86 the first three arguments travel in EAX, EDX and ECX, the
 * fourth on the stack, from where the function removes it; the result is the low
 * byte of EAX. Elsewhere it is the platform's C convention.
 *
 * Errors that end a call and are not its result: kord.ini missing or unusable,
 * and for CheckXSD an XML file that cannot be read or holds a document that
 * cannot be built. They reach
 *   - a C++ host as an exception derived from std::exception, what() in UTF-8;
 *   - any other host through the function customsconv_raise, see below.
 */
#ifndef CUSTOMSCONV_H_
#define CUSTOMSCONV_H_

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

#if defined(__i386__)
#define CUSTOMSCONV_CALL __attribute__((stdcall, regparm(3)))
#else
#define CUSTOMSCONV_CALL
#endif

/* Visible to the library even in a host that hides its functions. */
#if defined(__GNUC__)
#define CUSTOMSCONV_OF_HOST __attribute__((visibility("default")))
#else
#define CUSTOMSCONV_OF_HOST
#endif

/* A text of `length` bytes. */
typedef struct customsconv_text {
  unsigned char length;
  char bytes[255];
} customsconv_text;

/* A list of lines that the caller owns. CheckXSD calls `append` once a line, with the list
 * itself and `size` bytes of code page 1251 text that live during the call; it never
 * removes anything. `append` must return normally. */
typedef struct customsconv_lines {
  void (*append)(struct customsconv_lines* list, const char* line, size_t size);
} customsconv_lines;

/* Converts the documents of `xml_file` into the dBase table set in `output_dir`, by the
 * mapping rules of `rules_file`. `program_dir` and `output_dir` end with a path
 * separator. 1 when the run went through, 0 when the catalogue could not be
 * loaded or an error ended the run. */
unsigned char CUSTOMSCONV_CALL Xml2ArmTi(const customsconv_text* program_dir,
                                         const customsconv_text* rules_file,
                                         const customsconv_text* xml_file,
                                         const customsconv_text* output_dir);

/* Checks every document of `xml_file` against its schema in the folder part of
 * `schema_path` (a file in that folder, or the folder with a closing separator). Appends a line
 * a failing document to `errors`: the document's short name, ":", the reason. 1 when every
 * document was looked at, 0 when the catalogue could not be loaded or a check
 * could not be made. */
unsigned char CUSTOMSCONV_CALL CheckXSD(const customsconv_text* program_dir,
                                        const customsconv_text* schema_path,
                                        const customsconv_text* xml_file,
                                        customsconv_lines* errors);

/* To be defined by a host that is not written in C++ (never by the library): raises the
 * error in the host's own way and does not return. `message` is code page 1251 text of
 * `size` bytes that stays valid until the next call. Everything of the library's is off the
 * stack by then but the exported function itself, so a host may leave it by a non-local
 * jump.
 * The library finds it as a weak symbol, so it must be among the dynamic symbols of the
 * program (not of another library that was loaded privately): a program that is linked with
 * the library exports it by itself, one that loads the library at run time is linked with
 * -rdynamic, a Free Pascal program names it under `exports`. */
CUSTOMSCONV_OF_HOST void customsconv_raise(const char* message, size_t size);

#ifdef __cplusplus
}
#endif

#endif /* CUSTOMSCONV_H_ */
