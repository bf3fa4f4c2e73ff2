/* What the sample hosts of this folder print, so that one check serves all. */
#ifndef CUSTOMSCONV_TESTS_HOSTS_HOST_OUTPUT_H_
#define CUSTOMSCONV_TESTS_HOSTS_HOST_OUTPUT_H_

#include <iconv.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "customsconv.h"

/* A short text of the two parts; they must fit into it. */
static inline customsconv_text Joined(const char* head, const char* tail) {
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
static inline void PrintLine(const char* prefix, const char* text, size_t size) {
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
static inline void AppendByPrinting(customsconv_lines* list, const char* line, size_t size) {
  (void)list;
  PrintLine("  ", line, size);
}

#endif /* CUSTOMSCONV_TESTS_HOSTS_HOST_OUTPUT_H_ */
