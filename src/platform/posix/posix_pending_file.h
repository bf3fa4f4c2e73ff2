#ifndef CUSTOMSCONV_PLATFORM_POSIX_POSIX_PENDING_FILE_H_
#define CUSTOMSCONV_PLATFORM_POSIX_POSIX_PENDING_FILE_H_

#include <cstddef>
#include <memory>
#include <string>

#include "base/lifetime.h"
#include "platform/files.h"
#include "platform/posix/file_descriptor.h"

namespace customsconv::posix {

// A temporary file beside the one that it will replace, with the permissions of that one;
// where a link stands, the file that it leads to is replaced. Errors name the path
// that was given. A process that dies leaves at most a file "~cc….tmp" behind.
class PosixPendingFile : public PendingFile {
 public:
  // Makes the temporary file of `system_name`. Throws FileError (kCreate) where something stands
  // that may not be replaced.
  static std::unique_ptr<PosixPendingFile> Create(const std::string& system_name,
                                                  std::string_view path);
  ~PosixPendingFile() override;
  PosixPendingFile(const PosixPendingFile&) = delete;
  PosixPendingFile& operator=(const PosixPendingFile&) = delete;

  // Throws FileError (kWrite).
  void WriteAt(std::size_t offset, std::string_view bytes);
  // The disk begins to write while the program goes on.
  void StartWriting();

  void Harden() override;
  void Place() override;
  bool Settle() override;
  // The temporary file; empty once it is in place.
  [[nodiscard]] const std::string& temporary() const CUSTOMSCONV_LIFETIME_BOUND {
    return temporary_;
  }

 private:
  PosixPendingFile(FileDescriptor file, std::string temporary, std::string target,
                   std::string_view path);
  // Permissions and owner of the file that is replaced.
  void TakeAfter(const struct stat& old);

  FileDescriptor file_;
  std::string temporary_;
  std::string target_;
  std::string path_;
};

// Writes `content` beside `system_name`, on the disk's way at once.
[[nodiscard]] std::unique_ptr<PosixPendingFile> StageFile(const std::string& system_name,
                                                          std::string_view path,
                                                          FilePieces content);

// Removes the temporary files that processes left in `folder` when they died: those that are
// ten minutes old and that nobody holds.
void RemoveAbandonedFiles(const std::string& folder);

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_POSIX_PENDING_FILE_H_
