#ifndef CUSTOMSCONV_PLATFORM_POSIX_POSIX_FILE_SERIES_H_
#define CUSTOMSCONV_PLATFORM_POSIX_POSIX_FILE_SERIES_H_

#include <memory>
#include <optional>
#include <string>

#include "platform/files.h"
#include "platform/posix/posix_pending_file.h"

namespace customsconv::posix {

// Keeps the copy that was in place before the last as a temporary file and makes the next one
// of it by writing what was added. Nothing but what this series placed is ever kept, and a copy
// that somebody has had open since it was in place is left alone.
class PosixFileSeries : public FileSeries {
 public:
  explicit PosixFileSeries(std::string_view path) : path_(path) {}

  [[nodiscard]] std::unique_ptr<PendingFile> Stage(std::string_view content,
                                                   SameBytes same) override;

 private:
  class Next;
  struct Version {
    std::size_t size = 0;
    FileStamp stamp = kNoStamp;
  };
  // The copy before the last; the file goes with the object.
  struct Copy {
    Copy(FileDescriptor opened, std::string file_name, Version old_version, SameBytes unchanged);
    ~Copy();
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;

    FileDescriptor file;
    std::string name;
    Version version;
    SameBytes same;  // as in the copy in place
  };

  [[nodiscard]] std::unique_ptr<PosixPendingFile> Grown(std::string_view content, SameBytes same);
  void Place(PosixPendingFile& file, std::size_t size, SameBytes same);
  void KeepReplaced(const std::string& name, SameBytes same);

  std::string path_;
  std::string target_;  // of the last placing
  std::optional<Version> placed_;
  std::unique_ptr<Copy> copy_;
};

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_POSIX_FILE_SERIES_H_
