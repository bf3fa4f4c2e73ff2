#ifndef CUSTOMSCONV_CATALOGUE_FILES_READER_H_
#define CUSTOMSCONV_CATALOGUE_FILES_READER_H_

#include <string>
#include <string_view>
#include <vector>

#include "streams/read_stream.h"

namespace customsconv {

// The lines of a Files section, from the line behind its section line on, without empty
// lines and comments.
[[nodiscard]] std::vector<std::string> ReadFilesSection(TReadStream& stream);

// One line of a Files section: "  BLOCK = TABLE [KEYS|LINKS]", in upper case.
struct FilesLine {
  int level = 0;  // two blanks of indentation each
  std::string block_name;
  std::string table_file;
  std::string key_fields;
  std::string link_fields;
};
[[nodiscard]] FilesLine ParseFilesLine(std::string_view line);

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_FILES_READER_H_
