#ifndef CUSTOMSCONV_PLATFORM_POSIX_POSIX_STREAM_H_
#define CUSTOMSCONV_PLATFORM_POSIX_POSIX_STREAM_H_

#include <memory>
#include <string>

#include "platform/files.h"

namespace customsconv::posix {

// Opens `system_name`; errors name `path`. Throws FileError as Files::Open does.
[[nodiscard]] std::unique_ptr<FileStream> OpenStream(const std::string& system_name,
                                                     std::string_view path, FileMode mode);

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_POSIX_STREAM_H_
