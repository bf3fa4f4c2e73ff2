#ifndef CUSTOMSCONV_TEXT_FILE_NAMES_H_
#define CUSTOMSCONV_TEXT_FILE_NAMES_H_

#include <string>
#include <string_view>

#include "base/lifetime.h"

namespace customsconv {

// Names of files taken apart and put together; the file system is not asked:
//
//   ExtractFileBaseName("C:\\IN\\decl.xml")              "decl"
//   ForceExtension("DBRHEAD", "DBF")                     "DBRHEAD.DBF"
//   WithTrailingBackslash(ExtractFileFolder(rules))      the folder of the rules file
//
// "\" and "/" both separate folders wherever a folder or file name is taken.
[[nodiscard]] constexpr bool IsPathSeparator(char c) { return c == '\\' || c == '/'; }

// "C:" at the start of a path: ":" behind a Latin letter; empty when there is none. Any other
// ":" is a letter of the name ("smb-share:server=nums").
[[nodiscard]] std::string_view DriveOf(std::string_view path CUSTOMSCONV_LIFETIME_BOUND);

// With a closing "\", unless a separator is there already; an empty path stays empty.
[[nodiscard]] std::string WithTrailingBackslash(std::string_view path);
// An extension is what stands behind the last "." of the file name; it is given with or
// without its ".". It is added when the file name has none.
[[nodiscard]] std::string ForceExtension(std::string_view name, std::string_view extension);
// Replaces the extension or adds one.
[[nodiscard]] std::string ChangeExtension(std::string_view name, std::string_view extension);
// The file name without folder; with its extension.
[[nodiscard]] std::string_view FileNameOf(std::string_view path CUSTOMSCONV_LIFETIME_BOUND);
// The file name without folder and without its last extension.
[[nodiscard]] std::string_view ExtractFileBaseName(
    std::string_view path CUSTOMSCONV_LIFETIME_BOUND);
// Folder without the closing separator, except that a root keeps it ("C:\", "\"); empty
// when the path names no folder.
[[nodiscard]] std::string ExtractFileFolder(std::string_view path);
// Everything up to and including the last separator, or the drive; empty when there is
// neither.
[[nodiscard]] std::string_view FolderPart(std::string_view path CUSTOMSCONV_LIFETIME_BOUND);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_FILE_NAMES_H_
