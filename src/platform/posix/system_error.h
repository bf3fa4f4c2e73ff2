#ifndef CUSTOMSCONV_PLATFORM_POSIX_SYSTEM_ERROR_H_
#define CUSTOMSCONV_PLATFORM_POSIX_SYSTEM_ERROR_H_

#include <string>
#include <string_view>

#include "base/error.h"

namespace customsconv::posix {

// What an error number means to the person at the machine, code page 1251.
[[nodiscard]] std::string CauseOf(int error);

// The error to throw for a failed call. What cannot be opened because it is not
// there becomes kMissing.
[[nodiscard]] FileError SystemFileError(FileError::Kind kind, std::string_view path, int error);

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_SYSTEM_ERROR_H_
