#ifndef CUSTOMSCONV_SERVICES_PROGRAM_PATHS_H_
#define CUSTOMSCONV_SERVICES_PROGRAM_PATHS_H_

#include <string>
#include <string_view>

#include "services/environment.h"

namespace customsconv {

// The program folder: the one given at the start-up, or that of the host executable when that
// is empty or ".\".
[[nodiscard]] std::string BasePath(const Environment& environment);

// A path of a setting made whole: "/" becomes "\", a path that begins with one "\" gets the drive
// of the program folder (and is whole where there is no drive), a path without a drive gets the
// program folder; doubled "\" behind the start are reduced to one. Network paths ("\\server\…")
// stay.
[[nodiscard]] std::string ExpandProgramPath(std::string_view path, const Environment& environment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_SERVICES_PROGRAM_PATHS_H_
