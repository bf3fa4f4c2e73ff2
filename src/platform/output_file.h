#ifndef CUSTOMSCONV_PLATFORM_OUTPUT_FILE_H_
#define CUSTOMSCONV_PLATFORM_OUTPUT_FILE_H_

#include <string>
#include <string_view>

#include "platform/files.h"

namespace customsconv {

// New content of a file, of any size, on its way beside its target: written piece by piece, or by
// a library that opens files itself.
//
//   const std::unique_ptr<OutputFile> file = files.StartOutput("OUT\\rows.csv");
//   for (const std::string& row : rows) file->Write(row);
//   file->Commit();  // until then the old file stands there
class OutputFile : public PendingFile {
 public:
  // Adds to the end. Throws FileError (kWrite); also what was gathered before may be what fails.
  virtual void Write(std::string_view bytes) = 0;
  // The temporary file in UTF-8, as the system and its libraries know it. Whoever writes to it by
  // this name writes nothing through Write.
  [[nodiscard]] virtual std::string SystemName() const = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_PLATFORM_OUTPUT_FILE_H_
