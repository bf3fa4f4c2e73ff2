#ifndef CUSTOMSCONV_PLATFORM_FULL_PATH_H_
#define CUSTOMSCONV_PLATFORM_FULL_PATH_H_

#include <string>
#include <string_view>

namespace customsconv {

// Begins with a separator or a drive: on a system without drives the current folder
// says nothing about it.
[[nodiscard]] bool IsRooted(std::string_view path);

// `path` made absolute as text, with "\" between folders, without "." and ".."
// and doubled separators; a closing separator stays. Names with a drive ("C:\A")
// or a server ("\\S\A") are absolute already; a name with one leading separator
// gets the drive of `current_folder`, if that has one.
[[nodiscard]] std::string FullPath(std::string_view path, std::string_view current_folder);

}  // namespace customsconv

#endif  // CUSTOMSCONV_PLATFORM_FULL_PATH_H_
