#ifndef CUSTOMSCONV_SERVICES_FILE_NAMES_H_
#define CUSTOMSCONV_SERVICES_FILE_NAMES_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/files.h"

namespace customsconv {

// "\" and "/" both separate folders wherever a folder or file name is taken.
[[nodiscard]] constexpr bool IsPathSeparator(char c) { return c == '\\' || c == '/'; }

// With a closing "\", unless a separator is there already; an empty path stays empty.
[[nodiscard]] std::string WithTrailingBackslash(std::string_view path);
// An extension is what stands behind the last "." of the file name; it is given
// without its "." (one that is given all the same does no harm).
// "." and the extension are added when the file name has none.
[[nodiscard]] std::string ForceExtension(std::string_view name, std::string_view extension);
// Replaces the extension or adds one.
[[nodiscard]] std::string ChangeExtension(std::string_view name, std::string_view extension);
// The file name without folder; with its extension.
[[nodiscard]] std::string_view FileNameOf(std::string_view path);
// The file name without folder and without its last extension.
[[nodiscard]] std::string_view ExtractFileBaseName(std::string_view path);
// Folder without the closing separator, except that a root keeps it ("C:\", "\"); empty
// when the path names no folder.
[[nodiscard]] std::string ExtractFileFolder(std::string_view path);
// Everything up to and including the last separator or drive colon; empty when
// there is neither.
[[nodiscard]] std::string_view FolderPart(std::string_view path);
// Short (8.3) form of an existing path, trimmed; empty when there is none.
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

#endif  // CUSTOMSCONV_SERVICES_FILE_NAMES_H_
