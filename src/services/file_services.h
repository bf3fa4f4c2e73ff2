#ifndef CUSTOMSCONV_SERVICES_FILE_SERVICES_H_
#define CUSTOMSCONV_SERVICES_FILE_SERVICES_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/files.h"

// Small services around files that several folders ask for. The names themselves are taken
// apart in text/file_names.

namespace customsconv {

// Short form of an existing path, trimmed (see Files::ShortName); `path` itself where there is
// none, as when the real name of one of its folders holds characters outside code page 1251.
[[nodiscard]] std::string ShortPathName(const Files& files, std::string_view path);
// "<folder>\<prefix><8 digits>.<extension>" of a file that does not exist yet, the digits
// taken from the time of day.
[[nodiscard]] std::string UniqueTempFileName(const Files& files, const Clock& clock,
                                             std::string_view folder, std::string_view prefix,
                                             std::string_view extension);
// Whole text of a file, at most `limit` bytes when that is not 0. Throws FileError.
[[nodiscard]] std::string ReadFileText(const Files& files, std::string_view name,
                                       std::size_t limit);
// Creates or replaces the file. Throws FileError; the old file then stays whole.
void WriteFileText(Files& files, std::string_view text, std::string_view name);

}  // namespace customsconv

#endif  // CUSTOMSCONV_SERVICES_FILE_SERVICES_H_
