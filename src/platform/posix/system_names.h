#ifndef CUSTOMSCONV_PLATFORM_POSIX_SYSTEM_NAMES_H_
#define CUSTOMSCONV_PLATFORM_POSIX_SYSTEM_NAMES_H_

#include <optional>
#include <string>
#include <string_view>

namespace customsconv::posix {

// The system's name (UTF-8, "/" between folders) of what `path` (code page 1251,
// "\" or "/") leads to. A part that does not exist as written is matched to an
// existing name without regard to letter case, of several the first in byte
// order; from the first part that matches nothing on, names stay as given.
// Costs one look at the disk when the path exists as written, else one a part
// and a scan of each folder where the case differs.
[[nodiscard]] std::string SystemName(std::string_view path);

// The same without a look at the disk.
[[nodiscard]] std::string SystemNameAsWritten(std::string_view path);

// A system's name in code page 1251, with "/" between folders as it stands. Empty
// when the name is no UTF-8 or holds a character that the code page lacks.
[[nodiscard]] std::optional<std::string> NameFromSystem(std::string_view name);

// The folder of a system's name; "." where there is none.
[[nodiscard]] std::string FolderOf(const std::string& name);

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_SYSTEM_NAMES_H_
