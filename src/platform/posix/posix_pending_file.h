#ifndef CUSTOMSCONV_PLATFORM_POSIX_POSIX_PENDING_FILE_H_
#define CUSTOMSCONV_PLATFORM_POSIX_POSIX_PENDING_FILE_H_

#include <memory>
#include <string>

#include "platform/files.h"

namespace customsconv::posix {

// Writes `content` to a temporary file beside `system_name`, on the disk's way at once; Place
// renames it. The new file gets the permissions of the one it replaces; where a link
// stands, the file that it leads to is replaced. Errors name `path`. A process that dies leaves
// at most a file "~cc….tmp" behind.
[[nodiscard]] std::unique_ptr<PendingFile> StageFile(const std::string& system_name,
                                                     std::string_view path, FilePieces content);

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_POSIX_PENDING_FILE_H_
