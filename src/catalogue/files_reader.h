#ifndef CUSTOMSCONV_CATALOGUE_FILES_READER_H_
#define CUSTOMSCONV_CATALOGUE_FILES_READER_H_

#include <string>
#include <string_view>
#include <vector>

#include "catalogue/basis.h"
#include "dbf/dbf_cache.h"
#include "platform/dialogs.h"
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

// Rebuilds the levels of a table set from the headers of the tables in `folder` (with closing
// separator), by the lines in top.file_list. A block whose table cannot be opened is left out
// with all below it. Shows one warning that lists the tables which cannot be opened.
void LoadTableLevels(TDbfBasis& top, std::string_view folder, TDbfCache& cache, Dialogs& dialogs);

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_FILES_READER_H_
